#pragma once
// The description of one attribute field: "eainfo/detailed/attr[i]".
#include <optional>
#include <string>
#include <vector>

#include "metadata/property_set.h"

namespace tarnwick::platform {
class FeatureClass;
namespace host {
class Application;
}
}  // namespace tarnwick::platform

namespace tarnwick::metadata {

// One column of an enumerated domain: a value, its definition and the
// definition's source.
struct EnumeratedValue {
  std::string value;
  std::string definition;
  std::string source;
};

struct EnumeratedDomain {
  std::vector<EnumeratedValue> columns;
  // Set by a caller whose table of values had the wrong shape: a box says
  // so and the enumerated part is left out.
  bool wrongShape = false;
};

struct AttributeFieldMetadata {
  std::string fieldName;
  std::string definition;
  std::string definitionSource;
  std::string rangeMinimum;
  std::string rangeMaximum;
  std::string mean;
  std::string units;
  std::string standardDeviation;
  std::string resolution;
  std::optional<EnumeratedDomain> enumerated;  // none: no enumerated part
  std::string unrepresentable;
  std::string codesetName;
  std::string codesetSource;
  bool clearFirst = false;
};

inline constexpr const char* kWrongShapeMessage = "Array has incorrect dimensions.  Skipping this item...";

// "Succeeded", "No Field Found", "ReturnAttributeFieldXPathIndex Failed" or
// "Failed".
std::string SetAttributeFieldMetadata(platform::FeatureClass& dataset, const AttributeFieldMetadata& field,
                                      platform::host::Application& application);

// Writes the description at field index i (enumerated columns as given).
void SetAttributeFieldInDocument(MetadataPropertySet& propertySet, int index, const AttributeFieldMetadata& field);

}  // namespace tarnwick::metadata
