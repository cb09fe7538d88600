#pragma once
// Positions of repeated elements in a metadata document.
#include <string>

#include "metadata/property_set.h"

namespace tarnwick::platform {
class FeatureClass;
}

namespace tarnwick::metadata {

// The highest index of path[i] that has a value, -1 when path[0] has none.
// A new element takes the result plus one.
int LastElementIndex(const MetadataPropertySet& propertySet, const std::string& path);
// Index i of the "eainfo/detailed/attr[i]" whose label matches the field name
// (trimmed, ignoring case), or -1.
int AttributeFieldIndex(const MetadataPropertySet& propertySet, const std::string& fieldName);

// The same, read from the dataset's stored document. booError is set when the
// document cannot be read, and the result is then -1.
int ReturnLastElementIndex(const std::string& strPath, platform::FeatureClass& dataset, bool& booError);
int ReturnAttributeFieldXPathIndex(platform::FeatureClass& dataset, const std::string& strFieldName, bool& booError);

}  // namespace tarnwick::metadata
