#pragma once
// The texts a Stand ID transfer writes: log lines for the metadata, the
// process description and the RTF report.
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/transformation.h"

namespace tarnwick {

inline constexpr const char* kAddStandIdFieldOpening = "[Add Stand ID Field to ";
inline constexpr const char* kAddAttributeFieldOpening = "[Add Additional Stand Attribute Field to ";

// The log line of a field the run added to the point dataset.
std::string AddedFieldLogLine(const std::string& opening, const std::string& pointDatasetName,
                              const platform::Field& field);

struct TransferTextItems {
  std::string standLayer;
  std::string standIdField;
  std::vector<std::string> additionalFields;  // names, in list order
  std::string pointLayer;
  std::string pointStandIdField;
  std::string standSpatialReference;
  std::string pointSpatialReference;
  std::optional<platform::GeoTransformation> transformation;
  platform::TransformDirection direction = platform::TransformDirection::Forward;
  // Stands whose polygons were not valid and were repaired for the
  // containment test, as "K20 (OID 20)", in feature order.
  std::vector<std::string> repairedStands;
};

// "<-None->" or "<Age, Site>".
std::string AdditionalFieldListText(const std::vector<std::string>& names);

// The line that records the run's parameters.
std::string TransferSummaryLogLine(const TransferTextItems& items);

// The metadata process description; locations are workspace path + "/" + dataset name.
std::string TransferProcessDescription(const TransferTextItems& items, const std::string& standLocation,
                                       const std::string& pointLocation);

// The whole RTF report; elapsed is the text of the elapsed-time routine.
std::string BuildTransferReport(const TransferTextItems& items, const std::string& elapsed);

}  // namespace tarnwick
