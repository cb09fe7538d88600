// tarnwick plot-layout: lays plot points over stand polygons and prints the
// run's report. The flags are mapped onto the run's request, which goes
// through the Plot Layout dialog's checks; a failed check is told with the
// dialog's head and body, and exit 2.
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "argument_checks.h"
#include "command_support.h"
#include "commands.h"
#include "platform/dataset_files.h"
#include "platform/errors.h"
#include "platform/host/interrupt_signals.h"
#include "plot/plot_layout_references.h"
#include "plot/plot_run.h"
#include "presentation/rtf_text.h"
#include "support/protected_paths.h"
#include "support/text_operations.h"
#include "transform_option.h"

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

// A failed check: the dialog's head, its body, and where the command line
// needs it, which flag to change.
void Require(const PlotCheck& failure, const std::string& hint = "") {
  if (!failure) return;
  std::string message = failure->head + "\n" + failure->body;
  if (!hint.empty()) message += "\n" + hint;
  throw UsageError(message);
}

void RequireShape(const platform::FeatureLayer& layer, platform::GeometryType type, const char* what) {
  if (layer.featureClass->ShapeType() != type) {
    throw UsageError("The layer '" + layer.name + "' is not a " + what + " layer.");
  }
}

// What to change when a flag names no field the role can take.
std::string FieldHint(const char* option, const std::string& name, const platform::FeatureLayer& layer, long kinds) {
  if (name.empty()) return std::string("Name the field with ") + option + ".";
  return std::string(option) + " '" + name + "': the layer '" + layer.name + "' has no " +
         (kinds == kNumericFieldKinds ? "numeric" : "text or numeric") + " field of that name.";
}

std::string UnitsText(const std::string& text, const char* what) {
  if (text.empty()) return "";
  for (const char* units : {"Feet", "Meters", "Chains"}) {
    if (EqualsIgnoreCase(text, units)) return units;
  }
  throw UsageError("Invalid " + std::string(what) + " '" + text + "': feet, meters or chains.");
}

// Distances: finite and no larger than the earth could need.
NumberLimits Distances(bool positive) {
  NumberLimits limits;
  limits.low = positive ? 0 : -kLargestDistance;
  limits.lowIncluded = !positive;
  limits.high = kLargestDistance;
  return limits;
}

// A user-defined ratio's values: above 0, and no larger than any grid needs.
NumberLimits RatioLimits() {
  NumberLimits limits;
  limits.low = 0;
  limits.lowIncluded = false;
  limits.high = kLargestRatio;
  return limits;
}

// The pair of texts a flag holds as "A<separator>B"; without the separator,
// the whole text and an empty second.
std::pair<std::string, std::string> Parts(const std::string& text, char separator) {
  return SplitPair(text, separator).value_or(std::pair<std::string, std::string>{text, ""});
}

// The stand field, units, spacing, orientation, buffer and first number. The
// dialog's checks see the flags' texts as its boxes would hold them; then
// the numbers are read, one out of range named by its flag.
void BuildGrid(const PlotLayoutOptions& o, const platform::FeatureLayer& stands, long maxPlots,
               PlotLayoutParameters& p) {
  const int chosen = (o.plots ? 1 : 0) + (o.plotsField.empty() ? 0 : 1) + (o.spacing.empty() ? 0 : 1) +
                     (o.spacingFields.empty() ? 0 : 1);
  if (chosen != 1) {
    throw UsageError("Give exactly one of --plots, --plots-field, --spacing and --spacing-fields.");
  }
  if (o.orientation && !o.orientationField.empty()) {
    throw UsageError("Give --orientation or --orientation-field, not both.");
  }
  if (o.start && o.startAboveHighest) throw UsageError("Give --start or --start-above-highest, not both.");
  const platform::FeatureClass& standClass = *stands.featureClass;

  GridEntries grid;
  grid.unitsText = UnitsText(o.units, "units");
  grid.plotsOption = o.plots ? 0 : !o.plotsField.empty() ? 1 : !o.spacing.empty() ? 2 : 3;
  grid.numPlotsText = o.plots.value_or("");
  const std::array<std::string, 3> fixedRatios = {"1:1", "1:2", "1:2.5"};
  grid.ratioOption = 3;
  for (std::size_t i = 0; i < fixedRatios.size(); ++i) {
    if (o.ratio == fixedRatios[i]) grid.ratioOption = static_cast<int>(i);
  }
  const bool userRatio = grid.plotsOption <= 1 && grid.ratioOption == 3;
  if (userRatio) std::tie(grid.xRatioText, grid.yRatioText) = Parts(o.ratio, ':');
  std::tie(grid.xSpacingText, grid.ySpacingText) = Parts(o.spacing, ',');
  grid.orientationText = o.orientation.value_or("0");
  grid.bufferText = o.buffer;
  grid.bufferUnitsText = UnitsText(o.bufferUnits, "buffer units");
  grid.startAboveHighest = o.startAboveHighest;
  if (!o.startAboveHighest) grid.startNumberText = o.start.value_or("1");

  const auto standField = FieldOffered(standClass, o.standId, kStandIdFieldKinds);
  const auto plotsField = FieldOffered(standClass, o.plotsField, kNumericFieldKinds);
  const auto [xName, yName] = Parts(o.spacingFields, ',');
  const auto xField = FieldOffered(standClass, xName, kNumericFieldKinds);
  const auto yField = FieldOffered(standClass, yName, kNumericFieldKinds);
  const auto orientationField = FieldOffered(standClass, o.orientationField, kNumericFieldKinds);
  grid.standFieldChosen = standField.has_value();
  grid.plotsFieldChosen = plotsField.has_value();
  grid.xSpacingFieldChosen = xField.has_value();
  grid.ySpacingFieldChosen = yField.has_value();
  grid.orientationFromField = !o.orientationField.empty();
  grid.orientationFieldChosen = orientationField.has_value();
  const PlotCheck failure = CheckGridEntries(grid);
  const auto given = [](const char* option, const std::string& text) {
    return std::string(option) + " '" + text + "'";
  };
  std::string hint;
  switch (failure ? failure->number : 0) {
    case 1: hint = FieldHint("--stand-id", o.standId, stands, kStandIdFieldKinds); break;
    case 2: hint = "Give them with --units."; break;
    case 4: case 5: case 6: case 7: hint = given("--ratio", o.ratio); break;
    case 9: hint = given("--plots", grid.numPlotsText); break;
    case 10: hint = FieldHint("--plots-field", o.plotsField, stands, kNumericFieldKinds); break;
    case 11: case 12: hint = given("--spacing", o.spacing); break;
    case 13: hint = FieldHint("--spacing-fields", xName, stands, kNumericFieldKinds); break;
    case 14: hint = FieldHint("--spacing-fields", yName, stands, kNumericFieldKinds); break;
    case 15: hint = FieldHint("--orientation-field", o.orientationField, stands, kNumericFieldKinds); break;
    case 16: hint = given("--orientation", grid.orientationText); break;
    case 17: hint = given("--buffer", o.buffer); break;
    case 18: hint = given("--start", grid.startNumberText); break;
    default: break;
  }
  Require(failure, hint);

  // The texts are numbers now; each must also lie in its range, or it is
  // refused in one line naming its flag.
  const long plotsPerStand =
      o.plots ? WholeNumberArgument("--plots", *o.plots, "the number of plots per stand", 0, maxPlots) : 0;
  const std::pair<double, double> ratio =
      userRatio ? NumberPairArgument("--ratio", o.ratio, ':', "the X-value of the ratio", "the Y-value of the ratio",
                                     RatioLimits())
                : std::pair{1.0, 1.0};
  const std::pair<double, double> spacing =
      o.spacing.empty() ? std::pair{0.0, 0.0}
                        : NumberPairArgument("--spacing", o.spacing, ',', "the X spacing", "the Y spacing",
                                             Distances(true));
  const double orientation =
      NumberArgument("--orientation", grid.orientationText, "the orientation", OrientationLimits());
  const double buffer = NumberArgument("--buffer", o.buffer, "the buffer distance", Distances(false));
  const long firstPlotNumber = o.start ? WholeNumberArgument("--start", *o.start, "the first plot number",
                                                             -kLargestPlotNumber, kLargestPlotNumber)
                                       : (o.startAboveHighest ? 0 : 1);

  auto indexOf = [&](const platform::Field& field) { return standClass.FindField(field.name); };
  p.stands.standIdField = *standField;
  p.stands.standIdFieldIndex = indexOf(*standField);
  p.units = grid.unitsText;
  const SpacingRatio spacingRatio =
      userRatio ? SpacingRatio::Of(SpacingRatioOption::UserDefined, ratio.first, ratio.second)
                : SpacingRatio::Of(static_cast<SpacingRatioOption>(grid.ratioOption));
  switch (grid.plotsOption) {
    case 0: p.spacing = PlotsPerPolygon{plotsPerStand, spacingRatio}; break;
    case 1: p.spacing = PlotsFromField{indexOf(*plotsField), *plotsField, spacingRatio}; break;
    case 2: p.spacing = ManualSpacing{spacing.first, spacing.second}; break;
    default: p.spacing = SpacingFromFields{indexOf(*xField), *xField, indexOf(*yField), *yField}; break;
  }
  if (orientationField) {
    p.orientation = OrientationFromField{indexOf(*orientationField), *orientationField};
  } else {
    p.orientation = ConstantOrientation{orientation};
  }
  p.buffer = {buffer, grid.bufferUnitsText};
  p.firstPlotNumber = firstPlotNumber;
}

// Each transformation as the --transform option settles it.
TransformationChooser ChooserOf(TransformOption& option, CommandContext& context) {
  return [&option, &context](const SearchObject& from, const SearchObject& to,
                              const platform::Geometry* at) -> Checked<TransformationChoice> {
    const ResolvedTransform resolved = option.Resolve(context, from, to, at);
    TransformationChoice choice;
    choice.transformation = resolved.transformation;
    choice.direction = resolved.direction;
    choice.needed = resolved.needed;
    return choice;
  };
}

OutputOption BuildNewOutput(const PlotLayoutOptions& o, CommandContext& context,
                            const platform::FeatureLayer& stands) {
  const platform::ClassPath path = platform::SplitClassPath(o.out);
  if (path.name.empty()) throw UsageError("The output '" + o.out + "' names no feature class.");
  const auto standsWorkspace = stands.featureClass->GetWorkspace()->PathName();
  if (IsSameClass(path.workspace, path.name, standsWorkspace, stands.featureClass->Name())) {
    throw UsageError("--out '" + o.out + "' is the stand layer '" + stands.name +
                     "', which this run reads; choose another output. Nothing was changed.");
  }
  // Only --overwrite lets the run replace a class of that name.
  FClassPathData data;
  const bool shapefile = platform::Workspace::KindOfPath(path.workspace) == platform::WorkspaceKind::ShapefileFolder;
  const PlotCheck failure =
      CheckNewOutput(path.workspace + "/" + path.name + (shapefile ? ".shp" : ""), data, OutputPathReading::CommandLine);
  const bool replaced = failure && failure->number == 21 && context.overwrite;
  if (!replaced) Require(failure, failure && failure->number == 21 ? "Pass --overwrite to replace it." : "");
  return NewPlotClass{o.out, path.workspace, path.name};
}

OutputOption BuildExistingOutput(PlotLayoutOptions& o, CommandContext& context,
                                 const platform::FeatureLayer& stands) {
  ExistingPlotLayer existing;
  existing.layer = OpenLayer(o.into);
  RequireShape(existing.layer, platform::GeometryType::Point, "point");
  const auto field = FieldOffered(*existing.layer.featureClass, o.plotIdField, kNamedPlotIdFieldKinds);
  Require(CheckExistingOutputChoice(true, field.has_value(), existing.layer.name),
          FieldHint("--plot-id-field", o.plotIdField, existing.layer, kNamedPlotIdFieldKinds));
  existing.plotIdField = *field;
  existing.plotIdFieldName = field->name;
  existing.plotIdFieldIndex = existing.layer.featureClass->FindField(field->name);
  existing.startAboveHighest = o.startAboveHighest;
  Require(SettleExistingOutput(stands, existing, ChooserOf(o.transform, context)));
  return existing;
}

AnchorOption BuildAnchor(PlotLayoutOptions& o, CommandContext& context, const platform::FeatureLayer& stands,
                         const OutputOption& output) {
  if (!o.anchor.empty() && !o.anchorLayer.empty()) throw UsageError("Give --anchor or --anchor-layer, not both.");
  if (o.anchor.empty() && o.anchorLayer.empty()) return NoAnchor{};

  AnchorEntries entries;
  std::optional<platform::FeatureLayer> anchorLayer;
  if (!o.anchor.empty()) {
    std::tie(entries.xText, entries.yText) = Parts(o.anchor, ',');
    try {
      entries.reference = o.anchorCrs.empty() ? stands.featureClass->GetSpatialReference()
                                              : platform::SpatialReference::FromUserInput(o.anchorCrs);
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
  } else {
    anchorLayer = OpenLayer(o.anchorLayer);
    RequireShape(*anchorLayer, platform::GeometryType::Point, "point");
    if (o.anchorSelected) {
      try {
        anchorLayer->selection = anchorLayer->featureClass->Select(*o.anchorSelected);
      } catch (const platform::PlatformError& e) {
        throw UsageError(e.what());
      }
      if (anchorLayer->selection.empty()) throw UsageError("The filter --anchor-selected selects no anchor point.");
    }
    const AnchorPointReading reading = ReadAnchorPoint(*anchorLayer);
    entries.option = 1;
    entries.layerChosen = true;
    entries.layerText = anchorLayer->name;
    entries.layerOptionCaption = reading.caption;
    entries.xText = reading.xText;
    entries.yText = reading.yText;
    entries.reference = anchorLayer->featureClass->GetSpatialReference();
  }
  AnchorOption anchor;
  const PlotCheck failure = SettleAnchor(entries, anchorLayer, stands, output, ChooserOf(o.transform, context), anchor);
  std::string hint;
  switch (failure ? failure->number : 0) {
    case 30: case 31: hint = "--anchor '" + o.anchor + "'"; break;
    case 32: hint = "Give the anchor's coordinate system with --anchor-crs."; break;
    default: break;
  }
  Require(failure, hint);
  if (!o.anchor.empty()) {
    NumberLimits coordinates;
    coordinates.low = -kLargestCoordinate;
    coordinates.high = kLargestCoordinate;
    NumberPairArgument("--anchor", o.anchor, ',', "the anchor's X-coordinate", "the anchor's Y-coordinate",
                       coordinates);
  }
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
  parameters.stands.layer = stands;
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

  // Stand field, units, spacing, orientation, buffer, first number.
  BuildGrid(o, stands, runOptions.maxPlots, parameters);

  // Output, and what the run must not write over.
  if (o.out.empty() == o.into.empty()) throw UsageError("Give exactly one of --out and --into.");
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
    outputDataset = platform::DatasetPath(*layer.featureClass);
    AddDatasetFiles(layer, datasets);
  }
  const platform::DatasetLock lock = LockForRun(outputDataset);
  parameters.anchor = BuildAnchor(o, context, stands, parameters.output);
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
