#pragma once
// Template body of EditMetadata (included by document_io.h).
#include "metadata/routine_guard.h"

namespace tarnwick::metadata {

template <class Edit>
std::string EditMetadata(platform::FeatureClass& dataset, Edit&& edit) {
  MetadataPropertySet propertySet = ReturnMetadataPropertySet(dataset);
  std::string status = edit(propertySet);
  if (!status.empty()) return status;
  bool booError = false;
  SaveMetadataPropertySet(dataset, propertySet, booError);
  return booError ? "Failed" : "Succeeded";
}

}  // namespace tarnwick::metadata
