#pragma once
// The RTF report of a waypoint conversion.
#include <cstdint>
#include <optional>
#include <string>

#include "platform/host/application.h"
#include "platform/transformation.h"

namespace tarnwick {

struct WaypointReportItems {
  std::string pointLayer;
  std::string plotIdField;
  std::optional<std::string> standIdField;    // none: "<-- None Selected -->"
  std::optional<std::string> elevationField;  // none: "<-- None Selected -->"
  bool allPoints = true;
  std::int64_t total = 0;          // feature count of an "all" run; a selected run never computes it
  std::int64_t selectedCount = 0;  // size of the selection of a selected run
  std::string sourceSpatialReference;
  std::string waypointSpatialReference;
  std::optional<platform::GeoTransformation> transformation;
  platform::TransformDirection direction = platform::TransformDirection::Forward;
  bool sameGeographicSystem = false;  // the two geographic systems share a factory code
  std::string completeTime;           // the "Long Time" text of the end of the run
  std::string completeDate;           // the "Long Date" text of the end of the run
  std::string outputPath;
  platform::host::Version version;
};

// The report template with its placeholders replaced, in a fixed order.
std::string BuildWaypointReport(const WaypointReportItems& items);

// Replaces every occurrence of `from` in text, case-sensitively.
std::string ReplaceAll(std::string text, const std::string& from, const std::string& to);

}  // namespace tarnwick
