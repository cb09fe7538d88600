#include "transforms/transform_chooser_texts.h"

#include <fmt/core.h>

#include <charconv>
#include <vector>

#include "platform/field.h"
#include "support/text_operations.h"

namespace tarnwick {

namespace {

constexpr const char* kBullet = R"(\par \pard{\pntext\f3\'B7\tab}{\*\pn\pnlvlblt\pnf3\pnindent0{\pntxtb\'B7}})";

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& line : lines) text += line + "\r\n";
  return text;
}

// The side's bullet: its geographic system, and its projection where it has one.
std::string SideLine(int side, bool projected) {
  const std::string n = std::to_string(side);
  std::string line = std::string(kBullet) + R"(\fi-360\li720\sl240\slmult1\b Layer)" + n +
                     R"(zzz\b0  is in \cf1 GCS_WGS_1984zzz)" + n + R"( \cf0)";
  if (projected) line += R"( [\i Projection = UTMZone12zzz)" + n + R"(\i0 ])";
  return line;
}

// The accuracy text as a number in its shortest form; the text itself when it is none.
std::string AccuracyText(const std::string& text) {
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return text;
  return platform::ValueToText(platform::Value{value});
}

std::string Degrees(double value) { return fmt::format("{:.3f}", value); }

constexpr const char* kNoInfoHeader =
    R"({\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fnil\fcharset0 Arial;}{\f1\fnil\fcharset0 MS Sans Serif;}})";
constexpr const char* kDetailsHeader =
    R"({\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fnil\fcharset0 Arial;}{\f1\fnil\fcharset0 MS Sans Serif;}{\f2\fnil\fcharset2 Symbol;}})";
constexpr const char* kRed = R"({\colortbl ;\red255\green0\blue0;})";
constexpr const char* kHeading =
    R"(\viewkind4\uc1\pard\sa200\sl276\slmult1\qc\lang9\b\fs20 Geotransformation Details\b0 )";
constexpr const char* kEnd = R"(\par })";
constexpr const char* kDetailBullet = R"(\par \pard{\pntext\f2\'B7\tab}{\*\pn\pnlvlblt\pnf2\pnindent0{\pntxtb\'B7}})";

}  // namespace

std::string BuildChooserExplanation(const ChooserExplanationItems& items) {
  std::string text = Joined({
      R"({\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fnil\fcharset0 Arial;}{\f1\fnil\fcharset0 Courier;}{\f2\fnil\fcharset0 MS Sans Serif;}{\f3\fnil\fcharset2 Symbol;}})",
      R"({\colortbl ;\red0\green77\blue187;\red255\green0\blue0;})",
      R"(\viewkind4\uc1\pard\sa200\sl276\slmult1\lang9\fs16 Your datasets are in different Geographic Coordinate Systems and therefore you are recommended to specify a geographic transformation to avoid error in the analysis.)",
      SideLine(1, items.projection1.has_value()),
      SideLine(2, items.projection2.has_value()),
      R"(\par \pard\sl276\slmult1\f0\fs16 )",
      R"txt(\par \pard\sa200\sl276\slmult1\f0\fs16 The list below shows the known geographic transformations that can convert between \b GCS_WGS_1984zzz1\b0  and \b GCS_WGS_1984zzz2\b0, sorted in order of probable appropriateness.  Please select the one you wish to use, or "Cancel" to exit.  You may also choose to continue on without applying a geographic transformation, but this is not recommended.)txt",
      R"(\par If you wish to apply a composite transformation, you must return to the Map Document and specify it in the data frame properties.)",
      R"(\par \pard\sa200\sl276\slmult1\f0\fs16\b Note: \b0  This tool will examine all geographic transformations you have specified for your data frame.  If it finds any that will transform between your two geographic coordinate systems, then it will automatically use that transformation and not show you this dialog.  Therefore you can save a step if you specify all necessary transformations in your data frame properties before running this tool.\lang1033\f2\fs16 )",
      kEnd,
  });
  text = Subst(text, "Layer1zzz", items.layer1);
  text = Subst(text, "Layer2zzz", items.layer2);
  text = Subst(text, "GCS_WGS_1984zzz1", items.gcs1);
  text = Subst(text, "GCS_WGS_1984zzz2", items.gcs2);
  if (items.projection1) text = Subst(text, "UTMZone12zzz1", *items.projection1);
  if (items.projection2) text = Subst(text, "UTMZone12zzz2", *items.projection2);
  return text;
}

std::string NoTransformationDetails() {
  return Joined({kNoInfoHeader, kRed, kHeading,
                 R"(\par \pard\cf1\i No information available...\cf0\lang1033\i0\f1\fs17 )", kEnd});
}

std::string TransformationDetails(const std::string& name, const std::string& spRef1, const std::string& spRef2,
                                  const CatalogueRow* row) {
  std::vector<std::string> lines = {
      kDetailsHeader,
      kRed,
      kHeading,
      R"(\par \pard\fi-360\li360\sa200\sl276\slmult1\b\fs16 Name:\b0   zzzName)",
      R"(\par \b Transforms Between:)",
      std::string(kDetailBullet) + R"(\fi-360\li720\sl240\slmult1\b0 zzzSpRef1)",
  };
  if (row == nullptr) {
    lines.push_back(std::string(kDetailBullet) + R"(\fi-360\li720\sa200\sl276\slmult1 zzzSpRef2)");
    lines.push_back(R"(\par \pard\cf1\i No other information available...\cf0\lang1033\i0\f1\fs17 )");
  } else {
    lines.push_back(std::string(kDetailBullet) + R"(\fi-360\li720\sa200\sl276\slmult1 zzzSpRef2\b )");
    lines.push_back(R"(\par \pard\fi-360\li360\sa200\sl276\slmult1 Description\b0 :  zzzDescription)");
    lines.push_back(R"(\par \b Accuracy:\b0   zzzAccuracy \i (units unknown))");
    lines.push_back(R"(\par \b\i0 Longitude Range: \b0  zzzLongStart\lang1033\'b0\lang9  to zzzLongEnd\lang1033\'b0)");
    lines.push_back(
        R"(\par \pard\lang9\b Latitude Range:\b0   zzzLatStart\lang1033\'b0\lang9  to zzzLatEnd\lang1033\'b0\f1\fs17 )");
  }
  lines.push_back(kEnd);
  std::string text = Joined(lines);
  text = Subst(text, "zzzName", row ? row->name : name);
  text = Subst(text, "zzzSpRef1", spRef1);
  text = Subst(text, "zzzSpRef2", spRef2);
  if (row) {
    text = Subst(text, "zzzDescription", row->area);
    text = Subst(text, "zzzAccuracy", AccuracyText(row->accuracy));
    text = Subst(text, "zzzLongStart", Degrees(row->west));
    text = Subst(text, "zzzLongEnd", Degrees(row->east));
    text = Subst(text, "zzzLatStart", Degrees(row->south));
    text = Subst(text, "zzzLatEnd", Degrees(row->north));
  }
  return text;
}

}  // namespace tarnwick
