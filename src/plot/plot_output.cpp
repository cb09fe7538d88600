#include "plot/plot_output.h"

#include <algorithm>
#include <filesystem>

#include "platform/edit_session.h"
#include "platform/errors.h"
#include "plot/plot_module.h"
#include "presentation/error_handling.h"
#include "support/dataset_creation.h"
#include "support/field_names.h"
#include "support/text_operations.h"

namespace tarnwick {

namespace {

bool EndsWithIgnoringCase(const std::string& text, std::string_view ending) {
  return text.size() >= ending.size() && EqualsIgnoreCase(std::string_view(text).substr(text.size() - ending.size()), ending);
}

// The name rule of the output's store: shapefile columns in a folder, the
// database rule otherwise.
std::string FieldNameForStore(std::string name, bool folderWorkspace) {
  if (folderWorkspace) return ReturnAcceptableFieldName(name, nullptr, true, false, false);
  return ReturnValidFGDBFieldName(name, nullptr);
}

}  // namespace

platform::Field StandFieldForOutput(const platform::Field& standField, bool folderWorkspace) {
  platform::Field field;
  field.name = FieldNameForStore(standField.name, folderWorkspace);
  field.alias = standField.alias;
  field.type = standField.type;
  if (field.type == platform::FieldType::String) {
    field.length = folderWorkspace ? std::max(standField.length, 255) : standField.length;
  } else if (field.type == platform::FieldType::Double && folderWorkspace) {
    field.precision = 12;
    field.scale = 6;
  }
  return field;
}

long OutputKindOfPath(const std::string& workspacePath) {
  if (EndsWithIgnoringCase(workspacePath, ".mdb")) return 4;
  if (EndsWithIgnoringCase(workspacePath, ".gdb")) return kOutputFileGeodatabase;
  if (EndsWithIgnoringCase(workspacePath, ".gpkg")) return kOutputPersonalGeodatabase;
  std::error_code ec;
  if (std::filesystem::is_directory(workspacePath, ec)) return kOutputShapefile;
  return 0;
}

PlotOutput OpenNewPlotOutput(platform::host::Application& application, const NewPlotClass& output,
                             const StandsParameters& stands, long firstPlotNumber, platform::EditSession& session) {
  return Guarded("OpenNewPlotOutput", kPlotModule, [&] {
    const long kind = OutputKindOfPath(output.workspacePath);
    const bool folder = kind == kOutputShapefile;
    const platform::Field standField = StandFieldForOutput(stands.standIdField, folder);
    platform::Field plotField;
    plotField.name = FieldNameForStore(kPlotIdFieldName, folder);
    plotField.type = platform::FieldType::String;
    plotField.length = 50;

    const auto& standClass = *stands.layer.featureClass;
    GeneralFeatureClassArgs args;
    args.geometryType = platform::GeometryType::Point;
    args.spatialReference = standClass.GetSpatialReference();
    args.path = output.workspacePath;
    args.name = output.datasetName;
    args.outputType = kind;
    args.extraFields = {standField, plotField};
    args.startingLocation = "Specify New Feature Class Name:";
    args.addUniqueID = false;
    args.envelope = stands.layer.featureClass->Extent();
    args.expectedCount = -9999;
    args.session = &session;
    auto featureClass = CreateGeneralFeatureClass(application, args);
    if (!featureClass) {
      RaiseError(platform::kErrObjectNotSet, std::string(kPlotModule),
                 "Object variable or With block variable not set (the feature class '" + output.fullPath +
                     "' was not created)");
    }

    PlotOutput result;
    result.featureClass = featureClass;
    result.isNew = true;
    result.standFieldAdded = true;
    result.standFieldName = standField.name;
    result.plotFieldName = plotField.name;
    result.standFieldIndex = featureClass->FindField(standField.name);
    result.plotFieldIndex = featureClass->FindField(kPlotIdFieldName);  // the literal name, as validated or not
    result.firstPlotNumber = firstPlotNumber;
    result.datasetName = output.datasetName;
    result.workspacePath = output.workspacePath;
    return result;
  });
}

PlotOutput OpenExistingPlotOutput(const ExistingPlotLayer& output, const StandsParameters& stands,
                                  long firstPlotNumber, platform::EditSession& session) {
  return Guarded("OpenExistingPlotOutput", kPlotModule, [&] {
    PlotOutput result;
    result.featureClass = output.layer.featureClass;
    if (!result.featureClass) {
      RaiseError(platform::kErrObjectNotSet, std::string(kPlotModule),
                 "Object variable or With block variable not set (the layer '" + output.layer.name +
                     "' has no feature class)");
    }
    platform::FeatureClass& featureClass = *session.Edit(result.featureClass);
    const auto workspace = featureClass.GetWorkspace();
    const bool folder = workspace && workspace->Type() == 0;
    result.datasetName = featureClass.Name();
    result.workspacePath = workspace ? workspace->PathName() : std::string();

    const platform::Field standField = StandFieldForOutput(stands.standIdField, folder);
    result.standFieldName = folder ? standField.name : stands.standIdField.name;
    result.standFieldIndex = featureClass.FindField(result.standFieldName);
    if (result.standFieldIndex < 0) {
      platform::Field added = standField;
      added.name = result.standFieldName;
      featureClass.AddField(added);
      result.standFieldAdded = true;
      result.standFieldIndex = featureClass.FindField(result.standFieldName);
    }

    result.plotFieldIndex = output.plotIdFieldIndex;
    result.plotFieldName = output.plotIdFieldName;
    if (output.startAboveHighest) {
      bool first = true;
      std::int64_t highest = 0;
      auto cursor = featureClass.Search();
      while (auto feature = cursor->NextFeature()) {
        const std::int64_t value = platform::ValueToLong(feature->values.at(result.plotFieldIndex));
        if (first || value > highest) highest = value;
        first = false;
      }
      result.firstPlotNumber = first ? 1 : static_cast<long>(highest + 1);
    } else {
      result.firstPlotNumber = firstPlotNumber;
    }
    return result;
  });
}

}  // namespace tarnwick
