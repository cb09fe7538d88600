#include "metadata/geoprocessing_event.h"

#include "metadata/document_io.h"
#include "metadata/element_index.h"
#include "metadata/routine_guard.h"

namespace tarnwick::metadata {

void AddGeoprocessingEventToDocument(MetadataPropertySet& set, const GeoprocessingEvent& event) {
  const std::string base = "Esri/DataProperties/lineage/Process";
  const std::string element = base + "[" + std::to_string(LastElementIndex(set, base) + 1) + "]";
  set.SetPropertyX(element, event.eventText);
  set.SetAttribute(element, "ToolSource", event.toolSource);
  set.SetAttribute(element, "Date", event.date.CompactDate());
  set.SetAttribute(element, "Time", event.date.CompactTime());
  set.SetAttribute(element, "Name", event.name);
  set.SetAttribute(element, "export", event.exportFlag ? "True" : "");
}

std::string AddGeoprocessingEvent(platform::FeatureClass& dataset, const GeoprocessingEvent& event) {
  return GuardedOr<std::string>("AddGeoprocessingEvent", "Failed", [&] {
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      AddGeoprocessingEventToDocument(set, event);
      return std::string();
    });
  });
}

}  // namespace tarnwick::metadata
