#pragma once
// Brings a metadata document up to date with its dataset: title, format,
// extent, spatial reference, feature count and the list of fields.
#include "metadata/date_time.h"
#include "metadata/property_set.h"
#include "platform/metadata_store.h"

namespace tarnwick::metadata {

// Fields are matched with the document's entries by name, ignoring case and
// surrounding blanks; what a user wrote about a field (definition, domains)
// stays, entries of fields the dataset no longer has are dropped, and the
// entries follow the dataset's field order.
void SynchronizeDocument(MetadataPropertySet& propertySet, const platform::DatasetDescription& dataset,
                         const DateTime& now);

// The type name the document gives a field type ("OID", "String", ...).
std::string FieldTypeName(platform::FieldType type);

}  // namespace tarnwick::metadata
