#pragma once
// A geoprocessing history entry: "Esri/DataProperties/lineage/Process".
#include <string>

#include "metadata/date_time.h"
#include "metadata/property_set.h"

namespace tarnwick::platform {
class FeatureClass;
}

namespace tarnwick::metadata {

struct GeoprocessingEvent {
  std::string eventText;   // the element's value
  std::string toolSource;  // attribute "ToolSource"
  DateTime date;           // attributes "Date" (yyyymmdd) and "Time" (HHMMSS)
  std::string name;        // attribute "Name"
  bool exportFlag = false; // attribute "export": "True" or empty
};

std::string AddGeoprocessingEvent(platform::FeatureClass& dataset, const GeoprocessingEvent& event);
void AddGeoprocessingEventToDocument(MetadataPropertySet& propertySet, const GeoprocessingEvent& event);

}  // namespace tarnwick::metadata
