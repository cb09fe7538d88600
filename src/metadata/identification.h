#pragma once
// The descriptive parts of a metadata document: abstract, keywords, citation
// dates, status, maintenance and format version.
#include <optional>
#include <string>
#include <vector>

#include "metadata/date_time.h"
#include "metadata/property_set.h"

namespace tarnwick::platform {
class FeatureClass;
namespace host {
class Application;
class MapDocument;
}  // namespace host
}  // namespace tarnwick::platform

namespace tarnwick::metadata {

// Writes "idinfo/descript/abstract" and "dataIdInfo/idAbs".
std::string SetMetadataAbstract(platform::FeatureClass& dataset, const std::string& strAbstract);

// Seven optional lists. A list that is absent or empty leaves its keywords as
// they stand; any other replaces them.
struct MetadataKeywords {
  std::optional<std::vector<std::string>> theme;        // dataIdInfo/themeKeys/keyword
  std::optional<std::vector<std::string>> search;       // dataIdInfo/searchKeys/keyword
  std::optional<std::vector<std::string>> descriptive;  // dataIdInfo/descKeys/keyword
  std::optional<std::vector<std::string>> stratum;      // dataIdInfo/StratKeys/keyword
  std::optional<std::vector<std::string>> themeOlder;   // idinfo/keywords/theme/themekey
  std::optional<std::vector<std::string>> place;        // idinfo/keywords/place/placekey
  std::optional<std::vector<std::string>> temporal;     // idinfo/keywords/temporal/tempkey
};
std::string SetMetadataKeywords(platform::FeatureClass& dataset, const MetadataKeywords& keywords);
void SetKeywordsInDocument(MetadataPropertySet& propertySet, const MetadataKeywords& keywords);

// Each date that is not the zero date is written in the element form.
std::string SetCitationDates(platform::FeatureClass& dataset, const DateTime& createDate, const DateTime& publishDate,
                             const DateTime& reviseDate);

// Attribute "value" of "dataIdInfo/idStatus/ProgCd" (ProgressStatusCode).
std::string SetResourceStatus(platform::FeatureClass& dataset, int statusIndex);
// Attribute "value" of "dataIdInfo/resMaint/maintFreq/MaintFreqCd".
std::string SetResourceMaintenance(platform::FeatureClass& dataset, int frequencyIndex);

// "distInfo/distFormat/formatVer": strVersion, or with booFromPlatform the
// host's version text ("Created in ArcGIS Version " ...), which needs a map
// document; without one a box says so and strVersion is written.
std::string SetFormatVersion(platform::FeatureClass& dataset, const std::string& strVersion, bool booFromPlatform,
                             const platform::host::MapDocument* mapDocument, platform::host::Application& application);

}  // namespace tarnwick::metadata
