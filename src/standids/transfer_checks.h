#pragma once
// The checks of a Stand ID transfer, made in the order of the Import Stand
// IDs dialog's controls, by the dialog and by the command line alike. They
// turn the names chosen into the transfer's parameter set.
#include <optional>
#include <string>
#include <vector>

#include "platform/host/application.h"
#include "presentation/dialog_checks.h"
#include "standids/transfer_parameters.h"

namespace tarnwick {

inline constexpr const char* kSelectFieldEntry = "<-- Select Field -->";
inline constexpr const char* kClonePolygonFieldEntry = "<-- Clone Polygon Field -->";

struct TransferStandIDChoices {
  platform::FeatureLayer standLayer;
  std::string standIdField;  // "" or "<-- Select Field -->" when none is chosen
  std::vector<std::string> additionalFields;
  std::optional<platform::FeatureLayer> pointLayer;  // none when no point layer is chosen
  std::string pointStandIdField;                     // "<-- Clone Polygon Field -->" clones; "" when none is chosen
};

// The stand fields a transfer can carry: text, numeric and date fields.
bool IsTransferableField(const platform::Field& field);

// The question asked when the two Stand ID fields differ in type.
std::string StandIdTypeQuestion(const platform::Field& stand, const platform::Field& point);
inline constexpr const char* kStandIdTypeQuestionTitle = "Confirm Attribute Field Choices:";

// Checks the choices and builds the parameter set without its
// transformation: the layers' kinds, the fields, the type question (asked
// through the application; declined, it gives an Answered refusal), both
// spatial references and a writable point layer.
Checked<TransferStandIDParameters> CheckTransferStandIDChoices(platform::host::Application& application,
                                                               const TransferStandIDChoices& choices);

}  // namespace tarnwick
