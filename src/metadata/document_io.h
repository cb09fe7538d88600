#pragma once
// Loading, storing and synchronising a dataset's metadata document, and
// reading it whole. Each call opens the dataset's store afresh.
#include <string>

#include "metadata/property_set.h"

namespace tarnwick::platform {
class FeatureClass;
}

namespace tarnwick::metadata {

inline constexpr const char* kNotEditableStatus = "Unable to synchronize; Metadata not editable...";

// The dataset's document. A dataset without one gets a new document, which is
// initialised and stored at once when the store can be written. A stored
// document that is not well-formed raises a PlatformError naming its file.
MetadataPropertySet ReturnMetadataPropertySet(platform::FeatureClass& dataset);

// Stores the document when the store can be written; otherwise does nothing.
void SaveMetadataPropertySet(platform::FeatureClass& dataset, const MetadataPropertySet& propertySet, bool& booError);

// Fills the document with the dataset's current fields, extent, spatial
// reference and count, and stores it. "Succeeded", the not-editable text, or
// "Failed".
std::string SynchronizeMetadata(platform::FeatureClass& dataset);

std::string ReturnMetadataXMLStringFromDataset(platform::FeatureClass& dataset, bool& booError);

// One entry per property, "i] name" and "  --> value" on two lines each. The
// last property is left out of the listing, as this listing always has been.
std::string ReturnAllMetadataPropertiesFromDataset(platform::FeatureClass& dataset, bool& booError);

// Loads the document, applies the edit, stores it and answers "Succeeded";
// "Failed" when anything raises. The edit may return a status of its own
// (a non-empty text), in which case nothing is stored.
template <class Edit>
std::string EditMetadata(platform::FeatureClass& dataset, Edit&& edit);

}  // namespace tarnwick::metadata

#include "metadata/document_io_inl.h"
