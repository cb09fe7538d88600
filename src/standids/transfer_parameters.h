#pragma once
// The parameter set and the result of a Stand ID transfer.
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/transformation.h"
#include "platform/workspace.h"

namespace tarnwick {

// Members in the order the Import Stand IDs dialog builds them.
struct TransferStandIDParameters {
  platform::FeatureLayer standLayer;                 // 0: stand polygons
  platform::Field standIdField;                      // 1: of the stand class
  std::vector<platform::Field> additionalFields;     // 2: stand attributes, in list order; may be empty
  platform::FeatureLayer pointLayer;                 // 3: plot points
  bool cloneStandIdField = true;                     // 4: clone the Stand ID field into the points
  std::optional<platform::Field> pointStandIdField;  // 5: existing point field; read only when not cloning
  std::optional<platform::GeoTransformation> transformation;  // 6: points to stands; none when not needed
  platform::TransformDirection direction = platform::TransformDirection::Forward;  // 7
};

// Where one stand field went in the point class.
struct TransferredField {
  std::string standField;
  std::string pointField;
  bool added = false;  // false: an existing point field was used
};

struct TransferStandIDResult {
  std::string report;                    // the RTF report; empty when the run failed
  std::vector<std::string> addedFields;  // point fields the run added (rolled back when it fails)
  std::vector<TransferredField> fields;  // the Stand ID first, then the attributes in order
  std::int64_t pointsUpdated = 0;
  std::int64_t pointsInStands = 0;
  std::string errorText;     // what the error road showed, when the run failed
  std::string errorLogPath;  // the error log written, when the run failed
  std::string errorReason;   // what went wrong, in the error's own words
  bool Succeeded() const { return !report.empty(); }
};

}  // namespace tarnwick
