// tarnwick import-stand-ids: copies the Stand ID and chosen stand attributes
// into the plot points that the stands contain, after the checks the Import
// Stand IDs dialog makes.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "command_support.h"
#include "commands.h"
#include "transform_option.h"
#include "platform/dataset_files.h"
#include "platform/host/interrupt_signals.h"
#include "presentation/rtf_text.h"
#include "shell/commands.h"
#include "standids/import_stand_id_values.h"
#include "standids/transfer_checks.h"
#include "support/text_operations.h"

namespace tarnwick::cli {

namespace {

namespace fs = std::filesystem;

struct ImportOptions {
  TransformOption transform;
  std::string stands;
  std::string standId;
  std::vector<std::string> attributes;
  std::string points;
  std::string pointField;
  bool clone = false;
  std::string report;
};

// Where the report goes by default: beside the point class's store.
std::string DefaultReportPath(const platform::FeatureClass& points) {
  const auto workspace = points.GetWorkspace();
  fs::path folder(workspace->PathName());
  if (workspace->Kind() != platform::WorkspaceKind::ShapefileFolder) folder = folder.parent_path();
  return (folder / (points.Name() + "_standids_report.rtf")).string();
}

int RunImportStandIds(ImportOptions& options, CommandContext& context) {
  if (options.clone == !options.pointField.empty()) {
    throw UsageError("Give either --point-field F (an existing point field) or --clone.");
  }
  TransferStandIDChoices choices;
  choices.standLayer = OpenLayer(options.stands);
  choices.standIdField = options.standId;
  choices.additionalFields = options.attributes;
  choices.pointLayer = OpenLayer(options.points);
  choices.pointStandIdField = options.clone ? kClonePolygonFieldEntry : options.pointField;
  TransferStandIDParameters parameters =
      Require(CheckTransferStandIDChoices(context.application, choices),
              "The Stand ID fields are of different types; pass --overwrite to use them anyway.");
  const auto& stands = parameters.standLayer;
  const auto& points = parameters.pointLayer;
  // The overlay runs in the stands' coordinates: points are taken to them.
  const ResolvedTransform resolved = options.transform.Resolve(context, points, stands);
  parameters.transformation = resolved.transformation;
  parameters.direction = resolved.direction;

  std::vector<std::string> datasets = platform::DatasetFiles(*stands.featureClass);
  for (const auto& file : platform::DatasetFiles(*points.featureClass)) datasets.push_back(file);
  const platform::DatasetLock lock = LockForRun(platform::DatasetPath(*points.featureClass));
  const std::string reportPath =
      SettleReportPath(options.report, DefaultReportPath(*points.featureClass), context.overwrite, datasets);

  TransferStandIDResult result;
  {
    const platform::host::InterruptGuard interrupts;
    result = ImportStandIDValues(context.application, &context.document, parameters);
  }
  if (!result.Succeeded()) {
    std::printf("%s\n", kFunctionFailed);
    return RunFailed("the stand ID import into '" + points.name + "' failed", result.errorReason, result.errorLogPath,
                     result.errorText, kFailureReportOnStdout);
  }
  for (size_t i = 1; i < result.fields.size(); ++i) {
    const auto& field = result.fields[i];
    if (field.added && !EqualsIgnoreCase(field.standField, field.pointField)) {
      std::fprintf(stderr, "Note: '%s' is taken in '%s' by a field of another type; the stand attribute '%s' was "
                           "added as '%s'.\n",
                   field.standField.c_str(), points.name.c_str(), field.standField.c_str(), field.pointField.c_str());
    }
  }

  WriteReport(reportPath, result.report, "The stand IDs were saved to '" + points.featureClass->FullPath() + "'");
  std::fputs(RtfToPlainText(result.report).c_str(), stdout);
  std::fprintf(stderr, "Updated %lld points (%lld inside a stand); report: %s\n",
               static_cast<long long>(result.pointsUpdated), static_cast<long long>(result.pointsInStands),
               reportPath.c_str());
  return kExitSuccess;
}

}  // namespace

void RegisterImportStandIds(CLI::App& app, CommandAction& action) {
  auto options = std::make_shared<ImportOptions>();
  auto* sub = app.add_subcommand("import-stand-ids",
                                 "Copy the Stand ID and stand attributes into the plot points the stands contain");
  sub->add_option("--stands", options->stands, "Stand polygon layer: PATH or PATH|layername=NAME")->required();
  sub->add_option("--stand-id", options->standId, "Stand ID field of the stands")->required();
  sub->add_option("--attributes", options->attributes, "Further stand fields to transfer, comma-separated")
      ->delimiter(',');
  sub->add_option("--points", options->points, "Plot point layer: PATH or PATH|layername=NAME")->required();
  auto* pointField = sub->add_option("--point-field", options->pointField, "Existing point field for the Stand ID");
  auto* clone = sub->add_flag("--clone", options->clone, "Add a copy of the Stand ID field to the points");
  pointField->excludes(clone);
  sub->add_option("--report", options->report,
                  "RTF report path (default: beside the point class, numbered when taken)");
  options->transform.AddTo(*sub);
  sub->callback([options, &action] {
    action = [options](CommandContext& context) { return RunImportStandIds(*options, context); };
  });
}

}  // namespace tarnwick::cli
