// Reports read as styled paragraphs for the report window, and as plain text.
#include "presentation/rtf_reader.h"

#include <gtest/gtest.h>

#include "presentation/rtf_text.h"

namespace tarnwick {
namespace {

// The head of a plot run's report, as the run writes it.
constexpr const char* kPlotReport =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}"
    "{\\f1\\fnil\\fcharset0 MS Sans Serif;}}\r\n"
    "{\\colortbl ;\\red0\\green0\\blue255;\\red128\\green0\\blue0;}\r\n"
    "\\viewkind4\\uc1\\pard\\qc\\tx360\\b\\f0\\fs20 Plot Generation Complete\\b0 \r\n"
    "\\par \\pard\\tx360\\ul\\b\\fs16 Parameters\r\n"
    "\\par \\cf1\\ulnone Stand Polygons:\\cf0 \r\n"
    "\\par \\b0\\tab\\cf2 Feature Class: \\cf0  Stands\r\n"
    "\\par \\b0\\tab\\tab Orientation = 17\\'b0\r\n"
    "\\par \\i Analysis Parameters also saved.\\i0 \\pard\\f1\\fs17 \r\n"
    "\\par }\r\n";

TEST(RtfReader, StylesOfARealReport) {
  const RtfDocument doc = ReadReport(kPlotReport);
  ASSERT_EQ(doc.paragraphs.size(), 7u);
  const Rgb blue{0, 0, 255};
  const Rgb maroon{128, 0, 0};

  const RtfParagraph& title = doc.paragraphs[0];
  EXPECT_EQ(title.alignment, RtfAlignment::Center);
  EXPECT_EQ(title.tabStops, std::vector<int>{360});
  ASSERT_EQ(title.runs.size(), 1u);
  EXPECT_EQ(title.runs[0].text, "Plot Generation Complete");
  EXPECT_EQ(title.runs[0].style, (RtfStyle{.bold = true, .fontSize = 20, .font = "Arial"}));

  EXPECT_EQ(doc.paragraphs[1].alignment, RtfAlignment::Left);
  EXPECT_EQ(doc.paragraphs[1].runs.at(0).style,
            (RtfStyle{.bold = true, .underline = true, .fontSize = 16, .font = "Arial"}));
  // Bold carries over the paragraph break; the colour is the table's first.
  EXPECT_EQ(doc.paragraphs[2].runs.at(0).style, (RtfStyle{.bold = true, .fontSize = 16, .color = blue, .font = "Arial"}));

  const auto& feature = doc.paragraphs[3].runs;
  ASSERT_EQ(feature.size(), 3u);
  EXPECT_EQ(feature[0].text, "\t");
  EXPECT_EQ(feature[1].text, "Feature Class: ");
  EXPECT_EQ(feature[1].style.color, maroon);
  EXPECT_EQ(feature[2].text, " Stands");
  EXPECT_FALSE(feature[2].style.color.has_value());

  EXPECT_EQ(doc.paragraphs[4].PlainText(), "\t\tOrientation = 17\xC2\xB0");
  EXPECT_TRUE(doc.paragraphs[5].runs.at(0).style.italic);
  EXPECT_TRUE(doc.paragraphs[6].runs.empty());  // after the last \par
  EXPECT_EQ(doc.PlainText(),
            "Plot Generation Complete\nParameters\nStand Polygons:\n\tFeature Class:  Stands\n"
            "\t\tOrientation = 17\xC2\xB0\nAnalysis Parameters also saved.\n");
}

TEST(RtfReader, PlainTextTablesWithoutGroupsAndHostileInput) {
  const RtfDocument plain = ReadReport("Plot 7 repeats\r\nPlot 9 repeats\n{\\b not rtf}");
  ASSERT_EQ(plain.paragraphs.size(), 3u);
  EXPECT_EQ(plain.paragraphs[2].PlainText(), "{\\b not rtf}");
  EXPECT_FALSE(plain.paragraphs[0].runs[0].style.bold);

  const RtfDocument flat =
      ReadRtf("{\\rtf1\\deff1{\\fonttbl\\f0 Courier New;\\f1 Arial;}\\fs30 a\\f0\\cf9 b\\plain c\\line d}");
  ASSERT_EQ(flat.paragraphs.size(), 1u);
  const auto& runs = flat.paragraphs[0].runs;
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[0].style, (RtfStyle{.fontSize = 30, .font = "Arial"}));
  EXPECT_EQ(runs[1].style, (RtfStyle{.fontSize = 30, .font = "Courier New"}));  // no colour 9: the default
  EXPECT_EQ(runs[2].text, "c\nd");
  EXPECT_EQ(runs[2].style, (RtfStyle{.font = "Arial"}));

  // Deep nesting, an unclosed document and huge parameters read to the end.
  const std::string deep = "{\\rtf1 " + std::string(200000, '{') + "\\b x" + std::string(200000, '}') +
                           " y\\fs99999999999999999999 z\\u99999999999?\\'";
  const RtfDocument hostile = ReadRtf(deep);
  EXPECT_EQ(hostile.PlainText(), "x yz\xEF\xBF\xBD");
  EXPECT_FALSE(hostile.paragraphs[0].runs.at(1).style.bold);
  EXPECT_EQ(hostile.paragraphs[0].runs.at(2).style.fontSize, 32767);
}

TEST(RtfToPlainText, ReportSubsetUnicodeFallbacksAndNegativeCodes) {
  const std::string rtf =
      "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Courier New;}}"
      "{\\colortbl;\\red255\\green0\\blue0;}{\\*\\generator Writer 1.0;}\n"
      "\\pard\\fs20\\b Plot Layout Report\\b0\\par\n"
      "\\i Stands:\\i0\\tab 12\\line Plots:\\tab 340\\par\n"
      "Path: C:\\\\data\\\\plots \\{new\\}\\par\n"
      "Caf\\'e9 \\'93quoted\\'94 10\\~m \\u8364?5\\par}";
  EXPECT_EQ(RtfToPlainText(rtf),
            "Plot Layout Report\n"
            "Stands:\t12\nPlots:\t340\n"
            "Path: C:\\data\\plots {new}\n"
            "Caf\xC3\xA9 \xE2\x80\x9Cquoted\xE2\x80\x9D 10\xC2\xA0m \xE2\x82\xAC" "5\n");
  // \uc2 makes two stand-in characters follow each \u; a hex escape counts
  // as one of them. Negative codes are taken modulo 65536.
  EXPECT_EQ(RtfToPlainText("{\\uc2\\u233 xx\\u-3913\\'3f?!}"), "\xC3\xA9\xEF\x82\xB7!");
  EXPECT_EQ(RtfToPlainText("{\\pard a\\par}{\\pard b}"), "a\nb");
}

}  // namespace
}  // namespace tarnwick
