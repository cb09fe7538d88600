#pragma once
// The three texts of a plot run: the RTF report, the one-line parameter text
// for the geoprocessing history and the purpose sentences for the lineage;
// plus the failure report. All are plain functions of the run's settings.
#include <string>
#include <string_view>

#include "plot/plot_layout_parameters.h"

namespace tarnwick {

// What the texts need to know besides the parameters, settled once the
// output is open.
struct PlotRunDescription {
  std::string standReferenceName;
  std::string outputDatasetName;
  std::string outputWorkspacePath;
  std::string outputReferenceName;
  std::string outputStandFieldName;  // the stand ID field as the output names it
  long firstPlotNumber = 1;
};

// Shortest decimal text of a number, as the texts show numbers.
std::string NumberText(double value);

// The report up to and including "Notes on Analysis:". It holds two marks,
// zzzAllOrSelected and strStandSubReport, for FillReportMarks.
std::string ReportOpening(const PlotLayoutParameters& parameters, const PlotRunDescription& run);
// "All Stand Polygons (n = 5)" or "Selected Stand Polygons (n = 2)".
std::string StandSelectionText(bool allStands, long count);
// The lines about the stand-to-plot transformation (a lone "\par " for a new class).
std::string StandSubReport(const PlotLayoutParameters& parameters);
// Replaces the two marks, without regard to case.
void FillReportMarks(std::string& report, std::string_view standSelection, std::string_view standSubReport);

// Notes on one stand, each a report line.
std::string NoteLine(long standCounter, std::string_view note);
std::string OrientationNoteLine(double orientation);
std::string NoteBufferEliminated(std::string_view standId, double bufferDistance);
std::string NoteStandEmpty(std::string_view standId);
std::string NotePlotCountZero(std::string_view standId);
std::string NotePlotCount(std::string_view standId, long count, long iterations);

// The end of the report, around the elapsed-time lines.
std::string ReportClosing(std::string_view elapsedTimeRtf);

std::string ParameterText(const PlotLayoutParameters& parameters, const PlotRunDescription& run);
std::string PurposeText(const PlotLayoutParameters& parameters, const PlotRunDescription& run);

// The plain-text report of a failed run.
std::string FailureReportText(long lineNumber, long errorNumber, std::string_view errorSource,
                              std::string_view description);

}  // namespace tarnwick
