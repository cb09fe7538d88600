// The RTF report of a plot run.
#include <string>

#include "platform/field.h"
#include "plot/plot_texts.h"
#include "plot/plot_texts_common.h"
#include "support/text_operations.h"

namespace tarnwick {

using plot_texts::kLineEnd;
using plot_texts::Rtf;

namespace {

constexpr std::string_view kAllOrSelectedMark = "zzzAllOrSelected";
constexpr std::string_view kStandSubReportMark = "strStandSubReport";

void Line(std::string& out, std::string_view text) {
  out += text;
  out += kLineEnd;
}

std::string RatioName(SpacingRatioOption option) {
  switch (option) {
    case SpacingRatioOption::Square:
      return "1:1 (Square pattern)";
    case SpacingRatioOption::OneToTwo:
      return "1:2 (Rectangular pattern)";
    case SpacingRatioOption::OneToTwoPointFive:
      return "1:2.5 (Rectangular pattern)";
    case SpacingRatioOption::UserDefined:
      break;
  }
  return "User-Defined Ratio";
}

void RatioLines(std::string& out, const SpacingRatio& ratio) {
  Line(out, "\\par \\tab\\cf2 X-Ratio Option:  \\cf0 " + NumberText(ratio.x));
  Line(out, "\\par \\tab\\cf2 Y-Ratio Option:  \\cf0 " + NumberText(ratio.y));
}

std::string FieldWithIndex(const platform::Field& field, int index) {
  return Rtf(field.name) + " (Field Index " + std::to_string(index) + ")";
}

void SpacingBlock(std::string& out, const SpacingOption& spacing) {
  const std::string head = "\\par \\tab\\cf2 Plot Count Option:  \\cf0 ";
  const std::string ratioHead = "\\par \\tab\\cf2 Plot Spacing Option:  \\cf0 ";
  if (const auto* perPolygon = std::get_if<PlotsPerPolygon>(&spacing)) {
    Line(out, head + "Enter # Plots per Polygon");
    Line(out, ratioHead + RatioName(perPolygon->ratio.option));
    Line(out, "\\par \\tab\\cf2 Plot Count:\\cf0   " + std::to_string(perPolygon->plotsPerStand));
    RatioLines(out, perPolygon->ratio);
  } else if (const auto* fromField = std::get_if<PlotsFromField>(&spacing)) {
    Line(out, head + "Read # Plots from Stand Attribute Field");
    Line(out, ratioHead + RatioName(fromField->ratio.option));
    Line(out, "\\par \\tab\\cf2 Plot Count Field:  \\cf0 " + Rtf(fromField->field.name));
    RatioLines(out, fromField->ratio);
  } else if (const auto* manual = std::get_if<ManualSpacing>(&spacing)) {
    Line(out, head + "Manually Enter X/Y Point Spacing");
    Line(out, "\\par \\tab\\cf2 X-spacing: \\cf0  " + NumberText(manual->x));
    Line(out, "\\par \\tab\\cf2 Y-spacing:  \\cf0 " + NumberText(manual->y));
  } else {
    const auto& fields = std::get<SpacingFromFields>(spacing);
    Line(out, head + "Read X/Y Point Spacing from Attribute Fields");
    Line(out, "\\par \\tab\\cf2 X-spacing Field: \\cf0  " + FieldWithIndex(fields.xField, fields.xFieldIndex));
    Line(out, "\\par \\tab\\cf2 Y-spacing Field: \\cf0  " + FieldWithIndex(fields.yField, fields.yFieldIndex));
  }
}

void OutputBlock(std::string& out, const OutputOption& output, const PlotRunDescription& run) {
  Line(out, "\\par \\cf1\\b Output Options:\\cf0\\b0 ");
  const std::string firstNumber =
      "\\par \\tab\\cf2 First Plot Starting Number: \\cf0  " + std::to_string(run.firstPlotNumber);
  if (std::holds_alternative<NewPlotClass>(output)) {
    Line(out, "\\par \\tab\\cf2 New or Existing Option:  \\cf0 Create New Feature Class");
    Line(out, "\\par \\tab\\cf2 Feature Class:\\cf0  " + Rtf(run.outputDatasetName));
    Line(out, "\\par \\tab\\cf2 Plot ID Field Name: \\cf0  PlotID");
    Line(out, "\\par \\tab\\cf2 Stand ID Field Name:\\cf0  " + Rtf(run.outputStandFieldName));
    Line(out, "\\par \\tab\\cf2 Feature Class Spatial Reference:  \\cf0 " + Rtf(run.outputReferenceName));
    Line(out, firstNumber);
    return;
  }
  const auto& existing = std::get<ExistingPlotLayer>(output);
  Line(out, "\\par \\tab\\cf2 New or Existing Option:  \\cf0 Add to Existing Feature Class");
  Line(out, "\\par \\tab\\cf2 Feature Class:\\cf0  " + Rtf(run.outputDatasetName));
  Line(out, "\\par \\tab\\cf2 Plot ID Field Name: \\cf0   " + Rtf(existing.plotIdFieldName));
  Line(out, "\\par \\tab\\cf2 Stand ID Field Name:\\cf0   " + Rtf(run.outputStandFieldName));
  Line(out, "\\par \\tab\\cf2 Feature Class Spatial Reference:  \\cf0 " + Rtf(run.outputReferenceName));
  Line(out, existing.startAboveHighest
                ? "\\par \\tab\\cf2 Plot Starting Number Option: \\cf0  Determine Grid Point Starting Number from "
                  "Points Layer"
                : "\\par \\tab\\cf2 Plot Starting Number Option: \\cf0   Use specified starting value");
  Line(out, firstNumber);
}

template <class Anchor>
void AnchorLines(std::string& out, const Anchor& anchor) {
  Line(out, "\\par \\tab\\cf2 Anchor Point X-Coordinate:  \\cf0 " + NumberText(anchor.x));
  Line(out, "\\par \\tab\\cf2 Anchor Point Y-Coordinate:\\cf0   " + NumberText(anchor.y));
  Line(out, "\\par \\tab\\cf2 Anchor Point Coordinate System:  \\cf0 " + Rtf(anchor.spatialReference.Name()));
  Line(out, "\\par \\tab\\cf2 Anchor Transformation to Plot Coordinate System:  \\cf0 " +
                (anchor.transformation ? Rtf(anchor.transformation->name) : std::string("None")));
  Line(out, "\\par \\tab\\cf2 Anchor Transformation Direction:\\cf0   " +
                (anchor.transformation ? plot_texts::DirectionText(anchor.direction) : std::string("None")));
}

void AnchorBlock(std::string& out, const AnchorOption& anchor) {
  const std::string head = "\\par \\tab\\cf2 Anchor Point Option:  \\cf0 ";
  if (const auto* fromLayer = std::get_if<LayerAnchor>(&anchor)) {
    Line(out, head + "Use First Selected Point in Point Feature Class");
    Line(out, "\\par \\tab\\cf2 Anchor Point Feature layer:  \\cf0 " + Rtf(fromLayer->layer.name));
    AnchorLines(out, *fromLayer);
  } else if (const auto* clicked = std::get_if<ClickedAnchor>(&anchor)) {
    Line(out, head + "Select Point by Clicking on Screen");
    AnchorLines(out, *clicked);
  } else {
    Line(out, head + "Do not force grid through a specified point");
  }
}

}  // namespace

std::string ReportOpening(const PlotLayoutParameters& p, const PlotRunDescription& run) {
  std::string out;
  Line(out,
       "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\fnil\\fcharset0 "
       "MS Sans Serif;}}");
  Line(out, "{\\colortbl ;\\red0\\green0\\blue255;\\red128\\green0\\blue0;}");
  Line(out, "\\viewkind4\\uc1\\pard\\qc\\tx360\\b\\f0\\fs20 Plot Generation Complete\\b0 ");
  Line(out, "\\par \\pard\\tx360\\ul\\b\\fs16 Parameters");
  Line(out, "\\par \\cf1\\ulnone Stand Polygons:\\cf0 ");
  // This line carries a visible " & vbNewLine" and no line end of its own.
  out += "\\par \\b0\\tab\\cf2 Feature Class: \\cf0  " + Rtf(p.stands.layer.name) + " & vbNewLine";
  Line(out, "\\par \\tab\\cf2 Option to do All or Selected:  \\cf0 " + std::string(kAllOrSelectedMark));
  Line(out, "\\par \\tab\\cf2 Stand ID Field: \\cf0  " + FieldWithIndex(p.stands.standIdField, p.stands.standIdFieldIndex));
  Line(out, "\\par \\tab\\cf2 Stand Coordinate System:  \\cf0 " + Rtf(run.standReferenceName));
  out += kStandSubReportMark;
  Line(out, "\\par \\cf1\\b Plot Units:\\cf0\\b0   " + Rtf(p.units));
  Line(out, "\\par ");
  Line(out, "\\par \\cf1\\b Spacing and Plot Count:\\cf0\\b0 ");
  SpacingBlock(out, p.spacing);
  Line(out, "\\par ");
  const std::string orientation = std::holds_alternative<OrientationFromField>(p.orientation)
                                      ? "[" + Rtf(std::get<OrientationFromField>(p.orientation).field.name) + "]"
                                      : NumberText(std::get<ConstantOrientation>(p.orientation).degrees);
  Line(out, "\\par \\cf1\\b Grid Orientation:\\cf0\\b0   " + orientation + " degrees (compass direction)");
  Line(out, "\\par ");
  if (p.buffer.distance == 0) {
    Line(out, "\\par \\cf1\\b Internal Buffer:\\b0  \\cf0  None");
  } else {
    Line(out, "\\par \\cf1\\b Internal Buffer:\\b0  \\cf0  " + NumberText(p.buffer.distance) + " " + Rtf(p.buffer.units));
  }
  Line(out, "\\par ");
  OutputBlock(out, p.output, run);
  Line(out, "\\par ");
  Line(out, "\\par \\cf1\\b Anchor Point:\\cf0\\b0 ");
  AnchorBlock(out, p.anchor);
  Line(out, "\\par ");
  Line(out, "\\par \\ul\\b Notes on Analysis:\\ulnone ");
  return out;
}

std::string StandSelectionText(bool allStands, long count) {
  return std::string(allStands ? "All Stand Polygons (n = " : "Selected Stand Polygons (n = ") +
         std::to_string(count) + ")";
}

std::string StandSubReport(const PlotLayoutParameters& p) {
  std::string out;
  if (const auto* existing = std::get_if<ExistingPlotLayer>(&p.output)) {
    Line(out, "\\par \\tab\\cf2 Stand Transformation to Plot Coordinate System:\\cf0   " +
                  (existing->transformation ? Rtf(existing->transformation->name) : std::string("None")));
    Line(out, "\\par \\tab\\cf2 Stand Transformation Direction: \\cf0  " +
                  (existing->transformation ? plot_texts::DirectionText(existing->direction) : std::string("None")));
  }
  Line(out, "\\par ");
  return out;
}

namespace {
// Replaces every occurrence of mark, compared without regard to case.
void ReplaceIgnoringCase(std::string& text, std::string_view mark, std::string_view replacement) {
  const std::string lowerMark = ToLowerAscii(mark);
  std::string lowerText = ToLowerAscii(text);
  std::size_t at = 0;
  while ((at = lowerText.find(lowerMark, at)) != std::string::npos) {
    text.replace(at, mark.size(), replacement);
    lowerText.replace(at, mark.size(), ToLowerAscii(replacement));
    at += replacement.size();
  }
}
}  // namespace

void FillReportMarks(std::string& report, std::string_view standSelection, std::string_view standSubReport) {
  ReplaceIgnoringCase(report, kAllOrSelectedMark, Rtf(standSelection));
  ReplaceIgnoringCase(report, kStandSubReportMark, standSubReport);
}

std::string NoteLine(long standCounter, std::string_view note) {
  return "\\par \\b0\\tab " + std::to_string(standCounter) + Rtf(note) + std::string(kLineEnd);
}

std::string OrientationNoteLine(double orientation) {
  return "\\par \\b0\\tab\\tab " + Rtf("Orientation = " + NumberText(orientation) + "\u00B0") + std::string(kLineEnd);
}

std::string NoteBufferEliminated(std::string_view standId, double bufferDistance) {
  return "] Stand '" + std::string(standId) + "': Buffer Distance of '" + NumberText(bufferDistance) +
         "' completely eliminated the polygon";
}

std::string NoteStandEmpty(std::string_view standId) {
  return "] Stand '" + std::string(standId) + "': Stand Polygon is Empty";
}

std::string NotePlotCountZero(std::string_view standId) {
  return "] Stand '" + std::string(standId) + "': Plot Count = 0; No plots generated...";
}

std::string NotePlotCount(std::string_view standId, long count, long iterations) {
  return "] Stand '" + std::string(standId) + "': Plot Count = " + std::to_string(count) + " (" +
         std::to_string(iterations) + " iterations)";
}

std::string ReportClosing(std::string_view elapsedTimeRtf) {
  std::string out;
  Line(out, "\\par ");
  Line(out, "\\par \\i Analysis Parameters also saved to plot feature class metadata.\\i0 ");
  Line(out, "\\par ");
  Line(out, "\\par \\pard\\qc\\tx360 ----------------------------------");
  Line(out, "\\par \\i " + std::string(elapsedTimeRtf) + "\\i0\\fs20 ");
  Line(out, "\\par \\pard\\f1\\fs17 ");
  Line(out, "\\par }");
  Line(out, " ");
  return out;
}

std::string FailureReportText(long lineNumber, long errorNumber, std::string_view errorSource,
                              std::string_view description) {
  std::string out = "Analysis Failed:";
  out += kLineEnd;
  out += "  --> Line Number " + std::to_string(lineNumber);
  out += kLineEnd;
  out += "  --> Error Number = " + std::to_string(errorNumber);
  out += kLineEnd;
  out += "  --> Error Source = GeneratePlotLayout PlotLayoutFunctions " + std::string(errorSource);
  out += kLineEnd;
  out += "  --> Error Description = " + std::string(description);
  return out;
}

std::string NumberText(double value) { return platform::NumberToText(value); }

}  // namespace tarnwick
