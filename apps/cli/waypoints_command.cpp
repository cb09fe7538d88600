// tarnwick waypoints: writes a point layer into a SoloForest waypoint file,
// after the checks the Waypoint Converter dialog makes.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "command_support.h"
#include "commands.h"
#include "transform_option.h"
#include "platform/dataset_files.h"
#include "platform/errors.h"
#include "platform/host/interrupt_signals.h"
#include "presentation/rtf_text.h"
#include "shell/commands.h"
#include "waypoints/create_waypoint_file.h"
#include "waypoints/waypoint_checks.h"
#include "waypoints/waypoint_output.h"

namespace tarnwick::cli {

namespace {

struct WaypointOptions {
  TransformOption transform;
  std::string points;
  std::string plotId;
  std::string standId;
  std::string elevation;
  std::string selected;
  bool selectedGiven = false;
  std::string out;
  std::string report;
};

// Names the records a field computer will misread: all of them up to ten,
// then how many more.
void WarnOfMisreadRecords(const std::vector<std::string>& records) {
  if (records.empty()) return;
  constexpr std::size_t kNamed = 10;
  std::string named;
  for (std::size_t i = 0; i < records.size() && i < kNamed; ++i) named += (i == 0 ? "" : ", ") + records[i];
  if (records.size() > kNamed) named += " and " + std::to_string(records.size() - kNamed) + " more";
  std::fprintf(stderr,
               "Warning: %zu waypoint record%s hold%s a comma or a line break in the Plot ID or Stand ID, which the "
               "field computer will misread: %s\n",
               records.size(), records.size() == 1 ? "" : "s", records.size() == 1 ? "s" : "", named.c_str());
}

int RunWaypoints(WaypointOptions& options, CommandContext& context) {
  WaypointParameters parameters;
  parameters.pointLayer = OpenLayer(options.points);
  const auto& layer = parameters.pointLayer;
  Require(CheckWaypointLayer(layer));
  parameters.plotIdField = Require(FindWaypointField(layer, options.plotId, WaypointFieldRole::PlotID));
  if (!options.standId.empty()) {
    parameters.standIdField = Require(FindWaypointField(layer, options.standId, WaypointFieldRole::StandID));
  }
  if (!options.elevation.empty()) {
    parameters.elevationField = Require(FindWaypointField(layer, options.elevation, WaypointFieldRole::Elevation));
  }

  // --selected plays the map's selection.
  parameters.convertAll = !options.selectedGiven;
  if (options.selectedGiven) {
    try {
      parameters.pointLayer.selection = layer.featureClass->Select(options.selected);
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
    if (parameters.pointLayer.selection.empty()) {
      std::fprintf(stderr, "Note: the filter selects no point; every point is converted.\n");
    }
  }
  Require(CheckPlotIDsForConversion(parameters));

  // The output must not hold the points; an existing file is replaced only
  // once the new one is complete.
  const std::string outputPath = WaypointOutputPath(options.out);
  std::vector<std::string> datasets = platform::DatasetFiles(*layer.featureClass);
  RefuseWritingOver("--out", outputPath, datasets);
  parameters.outputPath =
      Require(CheckWaypointOutput(context.application, options.out),
              "The file '" + outputPath + "' already exists; pass --overwrite to replace it.");
  datasets.push_back(parameters.outputPath);
  RequireSpatialReference(layer);

  // Waypoints are written in WGS 1984; settle the datum step to it.
  const ResolvedTransform resolved =
      options.transform.Resolve(context, layer, platform::SpatialReference::FromEpsg(4326));
  parameters.transformation = resolved.transformation;
  parameters.direction = resolved.direction;

  const std::filesystem::path out(parameters.outputPath);
  const std::string defaultReport = (out.parent_path() / (out.stem().string() + "_report.rtf")).string();
  const std::string reportPath = SettleReportPath(options.report, defaultReport, context.overwrite, datasets);
  const platform::DatasetLock lock = LockForRun(parameters.outputPath);

  WaypointResult result;
  {
    const platform::host::InterruptGuard interrupts;
    result = CreateWaypointFile(context.application, &context.document, parameters);
  }
  if (!result.Succeeded()) {
    std::printf("%s\n", kFunctionFailed);
    return RunFailed("the waypoint conversion failed", result.errorReason, result.errorLogPath, result.errorText,
                     kFailureReportOnStdout);
  }
  WarnOfMisreadRecords(result.misreadRecords);
  WriteReport(reportPath, result.report, "The waypoints were saved to '" + parameters.outputPath + "'");
  std::fputs(RtfToPlainText(result.report).c_str(), stdout);
  std::fprintf(stderr, "Wrote %lld waypoints to %s; report: %s\n", static_cast<long long>(result.records),
               parameters.outputPath.c_str(), reportPath.c_str());
  return kExitSuccess;
}

}  // namespace

void RegisterWaypoints(CLI::App& app, CommandAction& action) {
  auto options = std::make_shared<WaypointOptions>();
  auto* sub = app.add_subcommand("waypoints", "Write a point layer into a Trimble SoloForest waypoint file (.way)");
  sub->add_option("--points", options->points, "Point layer: PATH or PATH|layername=NAME")->required();
  sub->add_option("--plot-id", options->plotId, "Plot ID field")->required();
  sub->add_option("--stand-id", options->standId, "Stand ID field, written as the waypoint description");
  sub->add_option("--elevation", options->elevation, "Elevation field");
  sub->add_option("--selected", options->selected, "Convert only the points this attribute filter selects")
      ->each([options](const std::string&) { options->selectedGiven = true; });
  sub->add_option("--out", options->out, "Output waypoint file (given the .way extension)")->required();
  sub->add_option("--report", options->report, "RTF report path (default: beside the output)");
  options->transform.AddTo(*sub);
  sub->callback([options, &action] {
    action = [options](CommandContext& context) { return RunWaypoints(*options, context); };
  });
}

}  // namespace tarnwick::cli
