// tarnwick import-stand-ids: copies the Stand ID and chosen stand attributes
// into the plot points that the stands contain, after the checks the Import
// Stand IDs dialog makes.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
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
#include "standids/import_stand_id_values.h"
#include "support/lookups.h"
#include "support/protected_paths.h"
#include "support/text_operations.h"
#include "transforms/transform_search.h"

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

// The stand fields the dialog offers: text, numeric and date fields.
platform::Field RequireField(const platform::FeatureLayer& layer, const std::string& name, const char* what) {
  const int index = layer.featureClass->FindField(name);
  if (index < 0) throw UsageError("The layer '" + layer.name + "' has no field '" + name + "' (" + what + ").");
  const platform::Field field = layer.featureClass->Fields().at(static_cast<size_t>(index));
  if (!FieldIsNumeric(field.type) && !FieldIsString(field.type) && field.type != platform::FieldType::Date) {
    throw UsageError("The field '" + field.name + "' of '" + layer.name + "' cannot be transferred (" + what +
                     "): only text, numeric and date fields can.");
  }
  return field;
}

// The files an update of the class writes to.
std::vector<std::string> StoreFiles(const platform::FeatureClass& featureClass) {
  const auto workspace = featureClass.GetWorkspace();
  if (workspace->Kind() == platform::WorkspaceKind::ShapefileFolder) {
    const fs::path base = fs::path(workspace->PathName()) / featureClass.Name();
    return {base.string() + ".shp", base.string() + ".dbf"};
  }
  return {workspace->PathName()};
}

void RequireWritable(const platform::FeatureLayer& layer) {
  for (const auto& file : StoreFiles(*layer.featureClass)) {
    // A file without any write permission bit is read-only even for a user
    // (such as root) whom the system would let write it.
    std::error_code ec;
    const auto status = fs::status(file, ec);
    if (ec || !fs::exists(status)) continue;
    const auto writeBits = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((status.permissions() & writeBits) == fs::perms::none || ::access(file.c_str(), W_OK) != 0) {
      throw UsageError("The point layer '" + layer.name + "' cannot be written: '" + file +
                       "' is read-only. Nothing was changed.");
    }
  }
}

std::string TypeQuestion(const platform::Field& stand, const platform::Field& point) {
  return "Potential Problem:\n\nYour Stand ID fields from your Stand Polygon layer and your Plot Point layer are "
         "different types:\n  --> Stand Polygon ID Field '" + stand.name + "':  Type = " +
         ReturnEsriFieldTypeNameFromNumber_Friendly(static_cast<int>(stand.type)) +
         "\n  --> Plot Point Stand ID Field '" + point.name + "':  Type = " +
         ReturnEsriFieldTypeNameFromNumber_Friendly(static_cast<int>(point.type)) +
         "\n\nTransferring values from one field type to another is unreliable and might even cause a crash. Click "
         "'OK' to confirm that you want to use these fields, or 'Cancel' to exit and select different fields.";
}

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
  TransferStandIDParameters parameters;
  parameters.standLayer = OpenLayer(options.stands);
  parameters.pointLayer = OpenLayer(options.points);
  const auto& stands = parameters.standLayer;
  const auto& points = parameters.pointLayer;
  if (IsSameClass(stands.featureClass->GetWorkspace()->PathName(), stands.featureClass->Name(),
                  points.featureClass->GetWorkspace()->PathName(), points.featureClass->Name())) {
    throw UsageError("The point layer '" + points.name + "' is the stand layer; choose the plot points to receive the "
                     "stand IDs.");
  }
  if (stands.featureClass->ShapeType() != platform::GeometryType::Polygon) {
    throw UsageError("The stand layer '" + stands.name + "' is not a polygon layer.");
  }
  if (points.featureClass->ShapeType() != platform::GeometryType::Point) {
    throw UsageError("The point layer '" + points.name + "' is not a point layer.");
  }

  parameters.standIdField = RequireField(stands, options.standId, "Stand ID");
  for (const auto& name : options.attributes) {
    const platform::Field field = RequireField(stands, TrimBlanks(name), "additional attribute");
    if (EqualsIgnoreCase(field.name, parameters.standIdField.name)) {
      throw UsageError("The Stand ID field '" + field.name + "' cannot be an additional attribute too.");
    }
    const bool twice = std::any_of(parameters.additionalFields.begin(), parameters.additionalFields.end(),
                                   [&](const platform::Field& f) { return EqualsIgnoreCase(f.name, field.name); });
    if (!twice) parameters.additionalFields.push_back(field);
  }

  parameters.cloneStandIdField = options.clone;
  if (!options.clone) {
    const int index = points.featureClass->FindField(options.pointField);
    if (index < 0) throw UsageError("The point layer '" + points.name + "' has no field '" + options.pointField + "'.");
    parameters.pointStandIdField = points.featureClass->Fields().at(static_cast<size_t>(index));
    if (parameters.pointStandIdField->type != parameters.standIdField.type) {
      const auto answer = context.application.MessageBox(
          TypeQuestion(parameters.standIdField, *parameters.pointStandIdField), "Confirm Attribute Field Choices:",
          platform::host::MessageButtons::OKCancel, platform::host::MessageIcon::None);
      if (answer != platform::host::MessageResult::OK) {
        throw UsageError("The Stand ID fields are of different types; pass --overwrite to use them anyway.");
      }
    }
  }

  RequireSpatialReference(stands);
  RequireSpatialReference(points);
  RequireWritable(points);
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
    return RunFailed("the stand ID import into '" + points.name + "' failed", result.errorReason, result.errorLogPath,
                     result.errorText);
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
