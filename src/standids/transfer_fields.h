#pragma once
// Settles the point fields that take the Stand ID and the additional stand
// attributes, adding the ones that are missing, and builds the mapping table
// between stand and point fields.
#include <string>
#include <vector>

#include "platform/workspace.h"
#include "standids/transfer_parameters.h"

namespace tarnwick {

// One column of the mapping table: column 0 is the Stand ID, column i the
// i-th additional attribute.
struct FieldMapping {
  std::string standFieldName;
  std::string pointFieldName;
  int standFieldIndex = -1;  // in the stand class's field list
  int pointFieldIndex = -1;  // in the point class's field list
  bool pointFieldIsText = false;
};

struct TransferFields {
  std::vector<FieldMapping> columns;
  std::vector<std::string> logLines;  // one per field added
};

// Adds the fields to the point class at once. Each added field's name is
// appended to addedFields as soon as it exists, so that a caller knows them
// even when a later step fails.
TransferFields SettleTransferFields(platform::FeatureClass& stands, platform::FeatureClass& points,
                                    const TransferStandIDParameters& parameters, bool isShapefile,
                                    std::vector<std::string>& addedFields);

}  // namespace tarnwick
