#include "metadata/element_index.h"

#include <algorithm>
#include <cctype>

#include "metadata/document_io.h"
#include "metadata/routine_guard.h"

namespace tarnwick::metadata {

namespace {

std::string TrimmedLower(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  std::string trimmed = text.substr(first, text.find_last_not_of(' ') - first + 1);
  std::transform(trimmed.begin(), trimmed.end(), trimmed.begin(), [](unsigned char c) { return std::tolower(c); });
  return trimmed;
}

std::string Indexed(const std::string& path, int i) { return path + "[" + std::to_string(i) + "]"; }

}  // namespace

int LastElementIndex(const MetadataPropertySet& propertySet, const std::string& path) {
  int i = 0;
  while (!propertySet.GetProperty(Indexed(path, i)).empty()) ++i;
  return i - 1;
}

int AttributeFieldIndex(const MetadataPropertySet& propertySet, const std::string& fieldName) {
  const std::string wanted = TrimmedLower(fieldName);
  for (int i = 0;; ++i) {
    const std::string attr = Indexed("eainfo/detailed/attr", i);
    if (propertySet.GetProperty(attr).empty()) return -1;
    if (TrimmedLower(propertySet.GetProperty(attr + "/attrlabl")) == wanted) return i;
  }
}

int ReturnLastElementIndex(const std::string& strPath, platform::FeatureClass& dataset, bool& booError) {
  booError = false;
  return GuardedOr<int>("ReturnLastElementIndex", -1, [&] {
    return LastElementIndex(ReturnMetadataPropertySet(dataset), strPath);
  }, &booError);
}

int ReturnAttributeFieldXPathIndex(platform::FeatureClass& dataset, const std::string& strFieldName, bool& booError) {
  booError = false;
  return GuardedOr<int>("ReturnAttributeFieldXPathIndex", -1, [&] {
    return AttributeFieldIndex(ReturnMetadataPropertySet(dataset), strFieldName);
  }, &booError);
}

}  // namespace tarnwick::metadata
