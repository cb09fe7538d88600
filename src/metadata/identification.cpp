#include "metadata/identification.h"

#include <utility>

#include "metadata/code_tables.h"
#include "metadata/document_io.h"
#include "metadata/routine_guard.h"
#include "platform/host/application.h"
#include "support/host_operations.h"

namespace tarnwick::metadata {

namespace {

using Keywords = std::optional<std::vector<std::string>>;

void ReplaceKeywords(MetadataPropertySet& set, const std::string& key, const Keywords& list) {
  if (!list || list->empty()) return;
  set.DeleteProperty(key);
  for (std::size_t i = 0; i < list->size(); ++i) set.SetPropertyX(key + "[" + std::to_string(i) + "]", (*list)[i]);
}

std::string SetSimple(const char* routine, platform::FeatureClass& dataset,
                      const std::vector<std::pair<std::string, std::string>>& values) {
  return GuardedOr<std::string>(routine, "Failed", [&] {
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      for (const auto& [key, value] : values) set.SetPropertyX(key, value);
      return std::string();
    });
  });
}

std::string SetCodeAttribute(const char* routine, platform::FeatureClass& dataset, const std::string& key,
                             const std::string& code) {
  return GuardedOr<std::string>(routine, "Failed", [&] {
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      set.SetAttribute(key, "value", code);
      return std::string();
    });
  });
}

}  // namespace

std::string SetMetadataAbstract(platform::FeatureClass& dataset, const std::string& strAbstract) {
  return SetSimple("SetMetadataAbstract", dataset,
                   {{"idinfo/descript/abstract", strAbstract}, {"dataIdInfo/idAbs", strAbstract}});
}

void SetKeywordsInDocument(MetadataPropertySet& set, const MetadataKeywords& k) {
  ReplaceKeywords(set, "dataIdInfo/themeKeys/keyword", k.theme);
  ReplaceKeywords(set, "dataIdInfo/StratKeys/keyword", k.stratum);
  ReplaceKeywords(set, "dataIdInfo/searchKeys/keyword", k.search);
  ReplaceKeywords(set, "dataIdInfo/descKeys/keyword", k.descriptive);
  ReplaceKeywords(set, "idinfo/keywords/theme/themekey", k.themeOlder);
  ReplaceKeywords(set, "idinfo/keywords/place/placekey", k.place);
  ReplaceKeywords(set, "idinfo/keywords/temporal/tempkey", k.temporal);
}

std::string SetMetadataKeywords(platform::FeatureClass& dataset, const MetadataKeywords& keywords) {
  return GuardedOr<std::string>("SetMetadataKeywords", "Failed", [&] {
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      SetKeywordsInDocument(set, keywords);
      return std::string();
    });
  });
}

std::string SetCitationDates(platform::FeatureClass& dataset, const DateTime& createDate, const DateTime& publishDate,
                             const DateTime& reviseDate) {
  std::vector<std::pair<std::string, std::string>> values;
  const std::string base = "dataIdInfo/idCitation/date/";
  if (!createDate.IsZero()) values.emplace_back(base + "createDate", createDate.ElementText());
  if (!publishDate.IsZero()) values.emplace_back(base + "pubDate", publishDate.ElementText());
  if (!reviseDate.IsZero()) values.emplace_back(base + "reviseDate", reviseDate.ElementText());
  return SetSimple("SetCitationDates", dataset, values);
}

std::string SetResourceStatus(platform::FeatureClass& dataset, int statusIndex) {
  return SetCodeAttribute("SetResourceStatus", dataset, "dataIdInfo/idStatus/ProgCd", ProgressStatusCode(statusIndex));
}

std::string SetResourceMaintenance(platform::FeatureClass& dataset, int frequencyIndex) {
  return SetCodeAttribute("SetResourceMaintenance", dataset, "dataIdInfo/resMaint/maintFreq/MaintFreqCd",
                          MaintenanceFrequencyCode(frequencyIndex));
}

std::string SetFormatVersion(platform::FeatureClass& dataset, const std::string& strVersion, bool booFromPlatform,
                             const platform::host::MapDocument* mapDocument, platform::host::Application& application) {
  return GuardedOr<std::string>("SetFormatVersion", "Failed", [&] {
    std::string version = strVersion;
    if (booFromPlatform) {
      if (mapDocument == nullptr) {
        application.MessageBox("Map Document required to generate version!", "");
      } else {
        version = "Created in ArcGIS Version " + ReturnArcGISVersion(application.VersionNumber());
      }
    }
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      set.DeleteProperty("distInfo/distFormat/formatVer");
      set.SetPropertyX("distInfo/distFormat/formatVer", version);
      return std::string();
    });
  });
}

}  // namespace tarnwick::metadata
