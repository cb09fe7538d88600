// tarnwick plot-layout: lays plot points over stand polygons, after the checks
// the Plot Layout dialog makes, and prints the run's report.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "argument_checks.h"
#include "command_support.h"
#include "commands.h"
#include "platform/dataset_files.h"
#include "platform/errors.h"
#include "platform/host/interrupt_signals.h"
#include "plot/plot_run.h"
#include "presentation/rtf_text.h"
#include "support/lookups.h"
#include "support/protected_paths.h"
#include "support/text_operations.h"
#include "transform_option.h"
#include "transforms/transform_search.h"

namespace tarnwick::cli {

namespace {

constexpr double kLargestRatio = 1e6;
constexpr double kLargestCoordinate = 1e10;
constexpr long kLargestPlotNumber = 2'147'483'647;  // the host's Long

struct PlotLayoutOptions {
  std::string stands;
  std::string standId;
  std::optional<std::string> selected;
  std::string units;
  std::optional<std::string> plots;
  std::string plotsField;
  std::string spacing;
  std::string spacingFields;
  std::string ratio = "1:1";
  std::optional<std::string> orientation;
  std::string orientationField;
  std::string buffer = "0";
  std::string bufferUnits;
  std::optional<std::string> start;
  bool startAboveHighest = false;
  std::string maxPlots = std::to_string(kDefaultMaxPlots);
  std::string out;
  std::string into;
  std::string plotIdField;
  std::string anchor;
  std::string anchorCrs;
  std::string anchorLayer;
  std::optional<std::string> anchorSelected;
  std::string report;
  TransformOption transform;
};

void RequireShape(const platform::FeatureLayer& layer, platform::GeometryType type, const char* what) {
  if (layer.featureClass->ShapeType() != type) {
    throw UsageError("The layer '" + layer.name + "' is not a " + what + " layer.");
  }
}

// The field's index in the layer's class, refused unless it is of a kind the
// dialog offers for that role.
int RequireField(const platform::FeatureLayer& layer, const std::string& name, const char* role, bool numericOnly) {
  const int index = layer.featureClass->FindField(name);
  if (index < 0) throw UsageError("The layer '" + layer.name + "' has no field '" + name + "' (" + role + ").");
  const platform::FieldType type = layer.featureClass->Fields().at(static_cast<size_t>(index)).type;
  if (!(FieldIsNumeric(type) || (!numericOnly && FieldIsString(type)))) {
    throw UsageError("The field '" + name + "' cannot serve as " + role + ": it must be " +
                     (numericOnly ? "numeric." : "a text or numeric field."));
  }
  return index;
}

std::string UnitsText(const std::string& text, const char* what) {
  if (text.empty()) return "";
  for (const char* units : {"Feet", "Meters", "Chains"}) {
    if (EqualsIgnoreCase(text, units)) return units;
  }
  throw UsageError("Invalid " + std::string(what) + " '" + text + "': feet, meters or chains.");
}

SpacingRatio ParseRatio(const std::string& text) {
  if (text == "1:1") return SpacingRatio::Of(SpacingRatioOption::Square);
  if (text == "1:2") return SpacingRatio::Of(SpacingRatioOption::OneToTwo);
  if (text == "1:2.5") return SpacingRatio::Of(SpacingRatioOption::OneToTwoPointFive);
  const auto [xValue, yValue] = NumberPairArgument("--ratio", text, ':', "the X-value of the ratio",
                                                   "the Y-value of the ratio");
  if (xValue == 0) throw UsageError("Invalid Value for X-Value of User-Defined Ratio!\n\nPlease specify a non-zero X-value for the X/Y ratio...");
  if (yValue == 0) throw UsageError("Invalid Value for Y-Value of User-Defined Ratio!\n\nPlease specify a non-zero Y-value for the X/Y ratio...");
  NumberLimits limits;
  limits.low = 0;
  limits.lowIncluded = false;
  limits.high = kLargestRatio;
  for (const auto& [value, what] : {std::pair{xValue, "the X-value"}, std::pair{yValue, "the Y-value"}}) {
    if (const std::string problem = NumberProblem(value, limits); !problem.empty()) {
      throw UsageError("--ratio '" + text + "': " + what + " of the ratio " + problem);
    }
  }
  return SpacingRatio::Of(SpacingRatioOption::UserDefined, xValue, yValue);
}

// Distances: finite and no larger than the earth could need.
NumberLimits Distances(bool positive) {
  NumberLimits limits;
  limits.low = positive ? 0 : -kLargestDistance;
  limits.lowIncluded = !positive;
  limits.high = kLargestDistance;
  return limits;
}

SpacingOption BuildSpacing(const PlotLayoutOptions& o, const platform::FeatureLayer& stands, long maxPlots) {
  const int chosen = (o.plots ? 1 : 0) + (o.plotsField.empty() ? 0 : 1) + (o.spacing.empty() ? 0 : 1) +
                     (o.spacingFields.empty() ? 0 : 1);
  if (chosen != 1) {
    throw UsageError("Give exactly one of --plots, --plots-field, --spacing and --spacing-fields.");
  }
  const auto& fields = stands.featureClass->Fields();
  if (o.plots) {
    return PlotsPerPolygon{WholeNumberArgument("--plots", *o.plots, "the number of plots per stand", 0, maxPlots),
                           ParseRatio(o.ratio)};
  }
  if (!o.plotsField.empty()) {
    const int index = RequireField(stands, o.plotsField, "plot count", true);
    return PlotsFromField{index, fields.at(static_cast<size_t>(index)), ParseRatio(o.ratio)};
  }
  if (o.units.empty()) {
    throw UsageError("No Units Specified!\n\nPlease specify the units you wish to use for grid spacing... (--units)");
  }
  if (!o.spacing.empty()) {
    const auto [x, y] =
        NumberPairArgument("--spacing", o.spacing, ',', "the X spacing", "the Y spacing", Distances(true));
    return ManualSpacing{x, y};
  }
  const auto names = SplitPair(o.spacingFields, ',');
  if (!names) throw UsageError("--spacing-fields '" + o.spacingFields + "': two field names XF,YF are expected");
  const auto& [xName, yName] = *names;
  const int x = RequireField(stands, xName, "X spacing", true);
  const int y = RequireField(stands, yName, "Y spacing", true);
  return SpacingFromFields{x, fields.at(static_cast<size_t>(x)), y, fields.at(static_cast<size_t>(y))};
}

// The transformation the --transform option settles on between the two
// sides, with its direction; none when none is needed or known.
std::optional<platform::GeoTransformation> FindTransformation(TransformOption& option, CommandContext& context,
                                                              const SearchObject& from, const SearchObject& to,
                                                              platform::TransformDirection& direction,
                                                              const platform::Geometry* at) {
  const ResolvedTransform resolved = option.Resolve(context, from, to, at);
  direction = resolved.direction;
  return resolved.transformation;
}

OutputOption BuildNewOutput(const PlotLayoutOptions& o, CommandContext& context, const platform::FeatureLayer& stands) {
  const platform::ClassPath path = platform::SplitClassPath(o.out);
  if (path.name.empty()) throw UsageError("The output '" + o.out + "' names no feature class.");
  const std::filesystem::path workspace(path.workspace);
  std::error_code ec;
  const auto kind = platform::Workspace::KindOfPath(path.workspace);
  const std::filesystem::path folder =
      kind == platform::WorkspaceKind::ShapefileFolder ? workspace : workspace.parent_path();
  if (!folder.empty() && !std::filesystem::is_directory(folder, ec)) {
    throw UsageError("Specified Directory does not exist!\n\n--> Directory = '" + folder.string() + "'");
  }
  const auto standsWorkspace = stands.featureClass->GetWorkspace()->PathName();
  if (IsSameClass(path.workspace, path.name, standsWorkspace, stands.featureClass->Name())) {
    throw UsageError("--out '" + o.out + "' is the stand layer '" + stands.name +
                     "', which this run reads; choose another output. Nothing was changed.");
  }
  // A store that does not exist yet is made by the run itself.
  if (std::filesystem::exists(path.workspace, ec)) {
    try {
      auto store = platform::Workspace::Open(path.workspace);
      if (store->NameExists(path.name) && !context.overwrite) {
        throw UsageError("The feature class '" + path.name + "' already exists in '" + path.workspace +
                         "'; pass --overwrite to replace it.");
      }
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
  }
  return NewPlotClass{o.out, path.workspace, path.name};
}

OutputOption BuildExistingOutput(PlotLayoutOptions& o, CommandContext& context,
                                 const platform::FeatureLayer& stands) {
  if (o.plotIdField.empty()) throw UsageError("--into needs --plot-id-field.");
  ExistingPlotLayer existing;
  existing.layer = OpenLayer(o.into);
  RequireShape(existing.layer, platform::GeometryType::Point, "point");
  RequireSpatialReference(existing.layer);
  existing.plotIdFieldIndex = RequireField(existing.layer, o.plotIdField, "plot ID", false);
  existing.plotIdField = existing.layer.featureClass->Fields().at(static_cast<size_t>(existing.plotIdFieldIndex));
  existing.plotIdFieldName = existing.plotIdField.name;
  existing.startAboveHighest = o.startAboveHighest;
  existing.transformation =
      FindTransformation(o.transform, context, stands, existing.layer, existing.direction, nullptr);
  return existing;
}

AnchorOption BuildAnchor(PlotLayoutOptions& o, CommandContext& context, const platform::FeatureLayer& stands,
                         const SearchObject& outputSide) {
  if (!o.anchor.empty() && !o.anchorLayer.empty()) throw UsageError("Give --anchor or --anchor-layer, not both.");
  if (!o.anchor.empty()) {
    ClickedAnchor anchor;
    NumberLimits coordinates;
    coordinates.low = -kLargestCoordinate;
    coordinates.high = kLargestCoordinate;
    std::tie(anchor.x, anchor.y) = NumberPairArgument("--anchor", o.anchor, ',', "the anchor's X-coordinate",
                                                      "the anchor's Y-coordinate", coordinates);
    try {
      anchor.spatialReference = o.anchorCrs.empty() ? stands.featureClass->GetSpatialReference()
                                                     : platform::SpatialReference::FromUserInput(o.anchorCrs);
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
    if (anchor.spatialReference.IsUnknown()) {
      throw UsageError("Unknown Coordinate System for Anchor Point!\n\nPlease give the anchor's coordinate system (--anchor-crs).");
    }
    const platform::Geometry point = platform::Geometry::MakePoint(anchor.x, anchor.y, anchor.spatialReference);
    anchor.transformation =
        FindTransformation(o.transform, context, anchor.spatialReference, outputSide, anchor.direction, &point);
    return anchor;
  }
  if (o.anchorLayer.empty()) return NoAnchor{};

  LayerAnchor anchor;
  anchor.layer = OpenLayer(o.anchorLayer);
  RequireShape(anchor.layer, platform::GeometryType::Point, "point");
  RequireSpatialReference(anchor.layer);
  std::unique_ptr<platform::FeatureCursor> cursor;
  if (o.anchorSelected) {
    try {
      anchor.layer.selection = anchor.layer.featureClass->Select(*o.anchorSelected);
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
    if (anchor.layer.selection.empty()) throw UsageError("The filter --anchor-selected selects no anchor point.");
    cursor = anchor.layer.featureClass->SearchOids({anchor.layer.selection.front()});
    anchor.caption = "Use First Selected Point";
  } else {
    cursor = anchor.layer.featureClass->Search();
    anchor.caption = "Use First Point";
  }
  const auto first = cursor->NextFeature();
  if (!first || first->shape.IsEmpty()) {
    throw UsageError("Invalid X-Coordinate for Anchor Point!\n\nIt is possible that the first point in '" +
                     anchor.layer.name + "' is an empty point.  Please select a valid point to use as your anchor point...");
  }
  const platform::XY xy = first->shape.PointXY();
  anchor.x = xy.x;
  anchor.y = xy.y;
  anchor.spatialReference = anchor.layer.featureClass->GetSpatialReference();
  const platform::Geometry point = platform::Geometry::MakePoint(anchor.x, anchor.y, anchor.spatialReference);
  anchor.transformation = FindTransformation(o.transform, context, anchor.layer, outputSide, anchor.direction, &point);
  return anchor;
}

// NAME_report.rtf beside the output's store (in the folder of shapefiles).
std::string DefaultReportPath(const std::string& workspacePath, const std::string& name) {
  const std::filesystem::path workspace(workspacePath);
  const bool folder = platform::Workspace::KindOfPath(workspacePath) == platform::WorkspaceKind::ShapefileFolder;
  const std::filesystem::path dir = folder ? workspace : workspace.parent_path();
  return (dir / (name + "_report.rtf")).string();
}

// The files of the layer's dataset, added to files.
void AddDatasetFiles(const platform::FeatureLayer& layer, std::vector<std::string>& files) {
  const auto found = platform::DatasetFiles(*layer.featureClass);
  files.insert(files.end(), found.begin(), found.end());
}

// Refuses, before anything is written, a run whose stands cannot all be
// read or hold a number that cannot be used, and one that would lay out
// more plots than the limit.
void CheckPlotCount(const PlotLayoutParameters& parameters, long maxPlots) {
  const PlotCountEstimate estimate = EstimatePlotCount(parameters);
  if (!estimate.problem.empty()) throw UsageError(estimate.problem + ". Nothing was changed.");
  if (estimate.plots > static_cast<double>(maxPlots)) {
    throw UsageError(PlotCountAboveLimitText(estimate, maxPlots) +
                     " Pass a larger --max-plots if that many are wanted. Nothing was changed.");
  }
}

int RunPlotLayout(PlotLayoutOptions& o, CommandContext& context) {
  PlotLayoutParameters parameters;
  PlotRunOptions runOptions;
  runOptions.maxPlots = WholeNumberArgument("--max-plots", o.maxPlots, "the plot limit", 1, kLargestPlotLimit);

  // Stands.
  const platform::FeatureLayer stands = OpenLayer(o.stands);
  RequireShape(stands, platform::GeometryType::Polygon, "polygon");
  RequireSpatialReference(stands);
  parameters.stands.layer = stands;
  parameters.stands.standIdFieldIndex = RequireField(stands, o.standId, "Stand ID", false);
  parameters.stands.standIdField = stands.featureClass->Fields().at(static_cast<size_t>(parameters.stands.standIdFieldIndex));
  parameters.stands.doAllStands = !o.selected.has_value();
  if (o.selected) {
    try {
      parameters.stands.layer.selection = stands.featureClass->Select(*o.selected);
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
    if (parameters.stands.layer.selection.empty()) {
      std::fprintf(stderr, "Note: the filter selects no stand; plots are laid in every stand.\n");
    }
  }

  // Units, spacing, orientation, buffer, first number.
  parameters.units = UnitsText(o.units, "units");
  parameters.spacing = BuildSpacing(o, stands, runOptions.maxPlots);
  if (o.orientation && !o.orientationField.empty()) {
    throw UsageError("Give --orientation or --orientation-field, not both.");
  }
  if (!o.orientationField.empty()) {
    const int index = RequireField(stands, o.orientationField, "orientation", true);
    parameters.orientation = OrientationFromField{index, stands.featureClass->Fields().at(static_cast<size_t>(index))};
  } else {
    parameters.orientation =
        ConstantOrientation{o.orientation ? NumberArgument("--orientation", *o.orientation, "the orientation",
                                                           OrientationLimits())
                                          : 0};
  }
  parameters.buffer = {NumberArgument("--buffer", o.buffer, "the buffer distance", Distances(false)),
                       UnitsText(o.bufferUnits, "buffer units")};
  if (o.start && o.startAboveHighest) throw UsageError("Give --start or --start-above-highest, not both.");
  parameters.firstPlotNumber = o.start ? WholeNumberArgument("--start", *o.start, "the first plot number",
                                                             -kLargestPlotNumber, kLargestPlotNumber)
                                       : (o.startAboveHighest ? 0 : 1);

  // Output, and what the run must not write over.
  if (o.out.empty() == o.into.empty()) throw UsageError("Give exactly one of --out and --into.");
  SearchObject outputSide = stands;
  std::vector<std::string> datasets;
  AddDatasetFiles(stands, datasets);
  std::string outputDataset;
  if (!o.out.empty()) {
    if (o.startAboveHighest) throw UsageError("--start-above-highest needs an existing output (--into).");
    parameters.output = BuildNewOutput(o, context, stands);
    const auto& created = std::get<NewPlotClass>(parameters.output);
    outputDataset = platform::DatasetPathOf(created.workspacePath, created.datasetName);
    datasets.push_back(outputDataset);
  } else {
    parameters.output = BuildExistingOutput(o, context, stands);
    const auto& layer = std::get<ExistingPlotLayer>(parameters.output).layer;
    outputSide = layer;
    outputDataset = platform::DatasetPath(*layer.featureClass);
    AddDatasetFiles(layer, datasets);
  }
  const platform::DatasetLock lock = LockForRun(outputDataset);
  parameters.anchor = BuildAnchor(o, context, stands, outputSide);
  if (const auto* anchor = std::get_if<LayerAnchor>(&parameters.anchor)) AddDatasetFiles(anchor->layer, datasets);
  CheckPlotCount(parameters, runOptions.maxPlots);

  std::string defaultReport;
  if (const auto* created = std::get_if<NewPlotClass>(&parameters.output)) {
    defaultReport = DefaultReportPath(created->workspacePath, created->datasetName);
  } else {
    const auto& into = *std::get<ExistingPlotLayer>(parameters.output).layer.featureClass;
    defaultReport = DefaultReportPath(into.GetWorkspace()->PathName(), into.Name());
  }
  const std::string reportPath = SettleReportPath(o.report, defaultReport, context.overwrite, datasets);

  PlotLayoutResult result;
  {
    const platform::host::InterruptGuard interrupts;
    result = GeneratePlotLayout(context.application, context.document, parameters, runOptions);
  }
  if (!result.succeeded) {
    std::fputs(result.failureReport.c_str(), stdout);
    std::fputs("\n", stdout);
    std::string what = "the plot layout failed";
    if (!result.failedStandId.empty()) {
      what += " at stand '" + result.failedStandId + "' (" + std::to_string(result.standsDone) + " of " +
              std::to_string(result.standCount) + ")";
    }
    const ErrorLog log = result.errorLog.value_or(ErrorLog{});
    return RunFailed(what, log.reason, log.path, log.text, " The failure report is on standard output.");
  }

  WriteReport(reportPath, result.rtfReport, "The plots were saved to '" + result.outputClass->FullPath() + "'");
  std::fputs(RtfToPlainText(result.rtfReport).c_str(), stdout);
  std::fprintf(stderr, "Wrote %ld plots in %ld stands to %s; report: %s\n", result.plotsWritten, result.standsDone,
               result.outputClass->FullPath().c_str(), reportPath.c_str());
  return kExitSuccess;
}

}  // namespace

void RegisterPlotLayout(CLI::App& app, CommandAction& action) {
  auto o = std::make_shared<PlotLayoutOptions>();
  auto* sub = app.add_subcommand("plot-layout", "Lay a rotated grid of plot points over stand polygons");
  sub->add_option("--stands", o->stands, "Stand polygon layer: PATH or PATH|layername=NAME")->required();
  sub->add_option("--stand-id", o->standId, "Stand ID field")->required();
  sub->add_option("--selected", o->selected, "Lay plots only in the stands this attribute filter selects");
  sub->add_option("--units", o->units, "Plot units: feet, meters or chains");
  sub->add_option("--plots", o->plots, "Number of plots per stand");
  sub->add_option("--plots-field", o->plotsField, "Field holding each stand's number of plots");
  sub->add_option("--spacing", o->spacing, "X,Y spacing in plot units");
  sub->add_option("--spacing-fields", o->spacingFields, "XF,YF: fields holding each stand's X and Y spacing");
  sub->add_option("--ratio", o->ratio, "X:Y spacing ratio for a plot count: 1:1, 1:2, 1:2.5 or X:Y");
  sub->add_option("--orientation", o->orientation, "Grid orientation in compass degrees");
  sub->add_option("--orientation-field", o->orientationField, "Field holding each stand's grid orientation");
  sub->add_option("--buffer", o->buffer, "Internal buffer distance");
  sub->add_option("--buffer-units", o->bufferUnits, "Buffer units: feet, meters or chains");
  sub->add_option("--start", o->start, "First plot number");
  sub->add_flag("--start-above-highest", o->startAboveHighest, "Number on above the highest plot ID of --into");
  sub->add_option("--out", o->out, "New point class: dir/name.shp, x.gdb/NAME or x.gpkg/NAME");
  sub->add_option("--into", o->into, "Existing point layer to add the plots to");
  sub->add_option("--plot-id-field", o->plotIdField, "Plot ID field of --into");
  sub->add_option("--anchor", o->anchor, "X,Y of a point the grid must pass through");
  sub->add_option("--anchor-crs", o->anchorCrs, "Coordinate system of --anchor (default: the stands')");
  sub->add_option("--anchor-layer", o->anchorLayer, "Point layer whose first (selected) point is the anchor");
  sub->add_option("--anchor-selected", o->anchorSelected, "Attribute filter selecting the anchor point");
  sub->add_option("--report", o->report,
                  "RTF report path (default: NAME_report.rtf beside the output, numbered when taken)");
  sub->add_option("--max-plots", o->maxPlots,
                  "Refuse a run expected to lay out more plots than this (default 50000000)");
  o->transform.AddTo(*sub);
  sub->callback([o, &action] {
    action = [o](CommandContext& context) { return RunPlotLayout(*o, context); };
  });
}

}  // namespace tarnwick::cli
