#include "standids/transfer_fields.h"

#include <string>
#include <vector>

#include "platform/errors.h"
#include "presentation/error_handling.h"
#include "standids/transfer_texts.h"
#include "support/field_names.h"
#include "support/lookups.h"

namespace tarnwick {

namespace {

// The name rules take the name by reference and set it; callers keep theirs.
std::string AcceptableName(std::string name, const std::vector<std::string>* taken, bool dbase) {
  return ReturnAcceptableFieldName(name, taken, dbase, false, false);
}

struct Adder {
  platform::FeatureClass& points;
  std::vector<std::string>& takenNames;
  std::vector<std::string>& addedFields;
  std::vector<std::string>& logLines;

  void Add(const platform::Field& field, const char* opening) {
    points.AddField(field);
    takenNames.push_back(field.name);
    addedFields.push_back(field.name);
    logLines.push_back(AddedFieldLogLine(opening, points.Name(), field));
  }
};

FieldMapping MapColumn(const platform::FeatureClass& stands, const platform::FeatureClass& points,
                       const std::string& standName, const std::string& pointName) {
  FieldMapping column;
  column.standFieldName = standName;
  column.pointFieldName = pointName;
  column.standFieldIndex = stands.FindField(standName);
  column.pointFieldIndex = points.FindField(pointName);
  if (column.standFieldIndex < 0) {
    RaiseError(platform::kErrInvalidProcedureCall, "SettleTransferFields",
               "The stand field '" + standName + "' is not in '" + stands.Name() + "'.");
  }
  if (column.pointFieldIndex < 0) {
    RaiseError(platform::kErrInvalidProcedureCall, "SettleTransferFields",
               "The point field '" + pointName + "' is not in '" + points.Name() + "'.");
  }
  column.pointFieldIsText = FieldIsString(points.Fields().at(static_cast<size_t>(column.pointFieldIndex)).type);
  return column;
}

}  // namespace

TransferFields SettleTransferFields(platform::FeatureClass& stands, platform::FeatureClass& points,
                                    const TransferStandIDParameters& parameters, bool isShapefile,
                                    std::vector<std::string>& addedFields) {
  return Guarded("SettleTransferFields", "..\\TransferFunctions", [&] {
    TransferFields settled;
    std::vector<std::string> takenNames;
    for (const auto& field : points.Fields()) takenNames.push_back(field.name);
    Adder adder{points, takenNames, addedFields, settled.logLines};

    // The Stand ID: a clone of the stand field, or an existing point field.
    // Outside a shapefile the clone keeps the stand field's name unchecked,
    // so a point field of that name makes the addition fail.
    std::string pointIdName;
    if (parameters.cloneStandIdField) {
      platform::Field clone = parameters.standIdField;
      if (isShapefile) clone.name = AcceptableName(clone.name, &takenNames, true);
      if (clone.alias == parameters.standIdField.name) clone.alias.clear();  // an alias that was the name follows it
      adder.Add(clone, kAddStandIdFieldOpening);
      pointIdName = clone.name;
    } else {
      if (!parameters.pointStandIdField) {
        RaiseError(platform::kErrObjectNotSet, "SettleTransferFields", "No point field was given for the Stand ID.");
      }
      pointIdName = parameters.pointStandIdField->name;
    }

    // The additional attributes: an existing point field of the same name and
    // type is reused (its values are overwritten); otherwise a clone is added,
    // under a new name when the name is taken by a field of another type.
    std::vector<std::string> pointNames;
    for (const auto& standField : parameters.additionalFields) {
      const std::string candidate = AcceptableName(standField.name, nullptr, isShapefile);
      const int existing = points.FindField(candidate);
      if (existing >= 0 && points.Fields().at(static_cast<size_t>(existing)).type == standField.type) {
        pointNames.push_back(points.Fields().at(static_cast<size_t>(existing)).name);
        continue;
      }
      platform::Field clone = standField;
      clone.name = AcceptableName(standField.name, &takenNames, isShapefile);
      if (clone.alias == standField.name) clone.alias.clear();
      if (existing < 0 && isShapefile && clone.type == platform::FieldType::Double) {
        clone.precision = 12;
        clone.scale = 6;
      }
      adder.Add(clone, kAddAttributeFieldOpening);
      pointNames.push_back(clone.name);
    }

    settled.columns.push_back(MapColumn(stands, points, parameters.standIdField.name, pointIdName));
    for (size_t i = 0; i < parameters.additionalFields.size(); ++i) {
      settled.columns.push_back(MapColumn(stands, points, parameters.additionalFields[i].name, pointNames[i]));
    }
    return settled;
  });
}

}  // namespace tarnwick
