#include "metadata/attribute_field.h"

#include "metadata/document_io.h"
#include "metadata/element_index.h"
#include "metadata/routine_guard.h"
#include "platform/host/application.h"

namespace tarnwick::metadata {

namespace {

bool IsBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

void WriteIfNotBlank(MetadataPropertySet& set, const std::string& key, const std::string& value) {
  if (!IsBlank(value)) set.SetPropertyX(key, value);
}

}  // namespace

void SetAttributeFieldInDocument(MetadataPropertySet& set, int index, const AttributeFieldMetadata& f) {
  const std::string attr = "eainfo/detailed/attr[" + std::to_string(index) + "]";
  if (f.clearFirst) {
    for (const char* path : {"/attrdef", "/attrdefs", "/attrdomv/rdom", "/attrdomv/udom", "/attrdomv/edom",
                             "/attrdomv/codesetd"}) {
      set.DeleteProperty(attr + path);
    }
  }
  WriteIfNotBlank(set, attr + "/attrdef", f.definition);
  WriteIfNotBlank(set, attr + "/attrdefs", f.definitionSource);
  const std::string range = attr + "/attrdomv/rdom";
  WriteIfNotBlank(set, range + "/rdommin", f.rangeMinimum);
  WriteIfNotBlank(set, range + "/rdommax", f.rangeMaximum);
  WriteIfNotBlank(set, range + "/rdommean", f.mean);
  WriteIfNotBlank(set, range + "/attrunit", f.units);
  WriteIfNotBlank(set, range + "/rdomstdv", f.standardDeviation);
  WriteIfNotBlank(set, range + "/attrmres", f.resolution);
  WriteIfNotBlank(set, attr + "/attrdomv/udom", f.unrepresentable);
  WriteIfNotBlank(set, attr + "/attrdomv/codesetd/codesetn", f.codesetName);
  WriteIfNotBlank(set, attr + "/attrdomv/codesetd/codesets", f.codesetSource);
  if (!f.enumerated || f.enumerated->wrongShape) return;
  int k = 0;
  for (const EnumeratedValue& column : f.enumerated->columns) {
    if (IsBlank(column.value) && IsBlank(column.definition) && IsBlank(column.source)) continue;
    const std::string edom = attr + "/attrdomv/edom[" + std::to_string(k++) + "]";
    WriteIfNotBlank(set, edom + "/edomv", column.value);
    WriteIfNotBlank(set, edom + "/edomvd", column.definition);
    WriteIfNotBlank(set, edom + "/edomvds", column.source);
  }
}

std::string SetAttributeFieldMetadata(platform::FeatureClass& dataset, const AttributeFieldMetadata& field,
                                      platform::host::Application& application) {
  return GuardedOr<std::string>("SetAttributeFieldMetadata", "Failed", [&]() -> std::string {
    if (field.enumerated && field.enumerated->wrongShape) application.MessageBox(kWrongShapeMessage, "");
    bool lookupFailed = false;
    const int index = ReturnAttributeFieldXPathIndex(dataset, field.fieldName, lookupFailed);
    if (index == -1) return lookupFailed ? "ReturnAttributeFieldXPathIndex Failed" : "No Field Found";
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      SetAttributeFieldInDocument(set, index, field);
      return std::string();
    });
  });
}

}  // namespace tarnwick::metadata
