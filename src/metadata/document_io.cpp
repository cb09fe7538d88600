#include "metadata/document_io.h"

#include <stdexcept>

#include "metadata/synchronize.h"
#include "platform/errors.h"
#include "platform/metadata_store.h"
#include "platform/workspace.h"

namespace tarnwick::metadata {

namespace {

MetadataPropertySet ParseStored(const platform::MetadataStore& store, const std::string& xml) {
  try {
    return MetadataPropertySet::FromXml(xml);
  } catch (const std::invalid_argument& error) {
    throw platform::PlatformError(platform::kErrPlatform, "MetadataStore",
                                  "The metadata document '" + store.Location() +
                                      "' is damaged and cannot be read (" + error.what() + ")");
  }
}

}  // namespace

MetadataPropertySet ReturnMetadataPropertySet(platform::FeatureClass& dataset) {
  return Guarded("ReturnMetadataPropertySet", kMetadataModule, [&] {
    platform::MetadataStore store(dataset);
    const auto stored = store.Read();
    MetadataPropertySet propertySet = stored ? ParseStored(store, *stored) : MetadataPropertySet();
    if (store.CanEdit() && propertySet.IsNew()) {
      propertySet.InitExisting(DateTime::Now());
      store.Write(propertySet.GetXml());
    }
    return propertySet;
  });
}

void SaveMetadataPropertySet(platform::FeatureClass& dataset, const MetadataPropertySet& propertySet, bool& booError) {
  booError = false;
  GuardedOr<int>("SaveMetadataPropertySet", 0, [&] {
    platform::MetadataStore store(dataset);
    if (store.CanEdit()) store.Write(propertySet.GetXml());
    return 0;
  }, &booError);
}

std::string SynchronizeMetadata(platform::FeatureClass& dataset) {
  return GuardedOr<std::string>("SynchronizeMetadata", "Failed", [&]() -> std::string {
    platform::MetadataStore store(dataset);
    if (!store.CanEdit()) return kNotEditableStatus;
    const auto stored = store.Read();
    MetadataPropertySet propertySet = stored ? ParseStored(store, *stored) : MetadataPropertySet();
    const DateTime now = DateTime::Now();
    if (propertySet.IsNew()) propertySet.InitExisting(now);
    SynchronizeDocument(propertySet, store.Describe(), now);
    store.Write(propertySet.GetXml());
    return "Succeeded";
  });
}

std::string ReturnMetadataXMLStringFromDataset(platform::FeatureClass& dataset, bool& booError) {
  booError = false;
  return GuardedOr<std::string>("ReturnMetadataXMLStringFromDataset", "", [&] {
    return ReturnMetadataPropertySet(dataset).GetXml();
  }, &booError);
}

std::string ReturnAllMetadataPropertiesFromDataset(platform::FeatureClass& dataset, bool& booError) {
  booError = false;
  return GuardedOr<std::string>("ReturnAllMetadataPropertiesFromDataset", "", [&] {
    std::vector<std::string> names;
    std::vector<PropertyValue> values;
    ReturnMetadataPropertySet(dataset).GetAllProperties(names, values);
    std::string listing;
    // The last entry is deliberately not listed.
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
      listing += std::to_string(i) + "] " + names[i] + "\r\n";
      listing += values[i].isObject ? "  --> *** DATA OBJECT ***" : "  --> " + values[i].text;
      listing += "\r\n";
    }
    return listing;
  }, &booError);
}

}  // namespace tarnwick::metadata
