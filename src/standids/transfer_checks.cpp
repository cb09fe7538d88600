#include "standids/transfer_checks.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "support/lookups.h"
#include "support/protected_paths.h"
#include "support/text_operations.h"
#include "transforms/transform_checks.h"

namespace tarnwick {

namespace {

namespace fs = std::filesystem;

CheckMessage Refused(std::string text, std::string control) {
  return CheckMessage{std::move(text), "", platform::host::MessageIcon::None, std::move(control)};
}

// The stand field of that name, when the transfer can carry it.
Checked<platform::Field> StandField(const platform::FeatureLayer& layer, const std::string& name, const char* role,
                                    const char* control) {
  const int index = layer.featureClass->FindField(name);
  if (index < 0) return Refused("The layer '" + layer.name + "' has no field '" + name + "' (" + role + ").", control);
  const platform::Field field = layer.featureClass->Fields().at(static_cast<size_t>(index));
  if (!IsTransferableField(field)) {
    return Refused("The field '" + field.name + "' of '" + layer.name + "' cannot be transferred (" + role +
                       "): only text, numeric and date fields can.",
                   control);
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

std::optional<CheckMessage> CheckWritable(const platform::FeatureLayer& layer) {
  for (const auto& file : StoreFiles(*layer.featureClass)) {
    // A file without any write permission bit is read-only even for a user
    // (such as root) whom the system would let write it.
    std::error_code ec;
    const auto status = fs::status(file, ec);
    if (ec || !fs::exists(status)) continue;
    const auto writeBits = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((status.permissions() & writeBits) == fs::perms::none || ::access(file.c_str(), W_OK) != 0) {
      return Refused(
          "The point layer '" + layer.name + "' cannot be written: '" + file + "' is read-only. Nothing was changed.",
          "cbxExistingPointLayer");
    }
  }
  return std::nullopt;
}

}  // namespace

bool IsTransferableField(const platform::Field& field) {
  return FieldIsNumeric(field.type) || FieldIsString(field.type) || field.type == platform::FieldType::Date;
}

std::string StandIdTypeQuestion(const platform::Field& stand, const platform::Field& point) {
  return "Potential Problem:\n\nYour Stand ID fields from your Stand Polygon layer and your Plot Point layer are "
         "different types:\n  --> Stand Polygon ID Field '" +
         stand.name + "':  Type = " + ReturnEsriFieldTypeNameFromNumber_Friendly(static_cast<int>(stand.type)) +
         "\n  --> Plot Point Stand ID Field '" + point.name +
         "':  Type = " + ReturnEsriFieldTypeNameFromNumber_Friendly(static_cast<int>(point.type)) +
         "\n\nTransferring values from one field type to another is unreliable and might even cause a crash. Click "
         "'OK' to confirm that you want to use these fields, or 'Cancel' to exit and select different fields.";
}

Checked<TransferStandIDParameters> CheckTransferStandIDChoices(platform::host::Application& application,
                                                               const TransferStandIDChoices& choices) {
  TransferStandIDParameters parameters;
  parameters.standLayer = choices.standLayer;
  const auto& stands = parameters.standLayer;
  if (!stands.featureClass || stands.featureClass->ShapeType() != platform::GeometryType::Polygon) {
    return Refused("The stand layer '" + stands.name + "' is not a polygon layer.", "lbxLayers");
  }

  if (choices.standIdField.empty() || choices.standIdField == kSelectFieldEntry) {
    return Refused("Please select a Stand ID field!", "cbxStandID");
  }
  const auto standId = StandField(stands, choices.standIdField, "Stand ID", "cbxStandID");
  if (const auto* refusal = Refusal(standId)) return *refusal;
  parameters.standIdField = std::get<platform::Field>(standId);
  for (const auto& name : choices.additionalFields) {
    const auto attribute = StandField(stands, TrimBlanks(name), "additional attribute", "lbxFields");
    if (const auto* refusal = Refusal(attribute)) return *refusal;
    const auto& field = std::get<platform::Field>(attribute);
    if (EqualsIgnoreCase(field.name, parameters.standIdField.name)) {
      return Refused("The Stand ID field '" + field.name + "' cannot be an additional attribute too.", "lbxFields");
    }
    const bool twice = std::any_of(parameters.additionalFields.begin(), parameters.additionalFields.end(),
                                   [&](const platform::Field& f) { return EqualsIgnoreCase(f.name, field.name); });
    if (!twice) parameters.additionalFields.push_back(field);
  }

  if (!choices.pointLayer) {
    return Refused("Please select a Plot Point layer to add points to!", "cbxExistingPointLayer");
  }
  parameters.pointLayer = *choices.pointLayer;
  const auto& points = parameters.pointLayer;
  if (!points.featureClass) {
    return Refused("Please select a Plot Point layer to add points to!", "cbxExistingPointLayer");
  }
  if (IsSameClass(stands.featureClass->GetWorkspace()->PathName(), stands.featureClass->Name(),
                  points.featureClass->GetWorkspace()->PathName(), points.featureClass->Name())) {
    return Refused(
        "The point layer '" + points.name + "' is the stand layer; choose the plot points to receive the stand IDs.",
        "cbxExistingPointLayer");
  }
  if (points.featureClass->ShapeType() != platform::GeometryType::Point) {
    return Refused("The point layer '" + points.name + "' is not a point layer.", "cbxExistingPointLayer");
  }

  if (choices.pointStandIdField.empty()) {
    return Refused("Please select a Stand ID field in your Point Layer!", "cbxExistingIDField");
  }
  parameters.cloneStandIdField = choices.pointStandIdField == kClonePolygonFieldEntry;
  if (!parameters.cloneStandIdField) {
    const int index = points.featureClass->FindField(choices.pointStandIdField);
    if (index < 0) {
      return Refused("The point layer '" + points.name + "' has no field '" + choices.pointStandIdField + "'.",
                     "cbxExistingIDField");
    }
    parameters.pointStandIdField = points.featureClass->Fields().at(static_cast<size_t>(index));
    if (parameters.pointStandIdField->type != parameters.standIdField.type) {
      const std::string question = StandIdTypeQuestion(parameters.standIdField, *parameters.pointStandIdField);
      const auto answer =
          application.MessageBox(question, kStandIdTypeQuestionTitle, platform::host::MessageButtons::OKCancel);
      if (answer != platform::host::MessageResult::OK) {
        return CheckMessage{question, kStandIdTypeQuestionTitle, platform::host::MessageIcon::None, "",
                            CheckMessage::Display::Answered};
      }
    }
  }

  if (auto refusal = CheckSpatialReference(stands)) return *refusal;
  if (auto refusal = CheckSpatialReference(points)) return *refusal;
  if (auto refusal = CheckWritable(points)) return *refusal;
  return parameters;
}

}  // namespace tarnwick
