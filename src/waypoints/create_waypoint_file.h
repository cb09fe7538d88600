#pragma once
// Writes the points of a layer into a SoloForest waypoint file (".way"), in
// geographic WGS 1984 coordinates, and returns the run's RTF report.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "platform/transformation.h"
#include "platform/workspace.h"

namespace tarnwick {

// The parameter set of a conversion, in the order the dialog builds it.
struct WaypointParameters {
  platform::FeatureLayer pointLayer;                // 0: the layer, with its selection
  platform::Field plotIdField;                      // 1
  std::optional<platform::Field> standIdField;      // 2: none when absent
  std::optional<platform::Field> elevationField;    // 3: none when absent
  bool convertAll = true;                           // 4: False converts only the selection
  std::string outputPath;                           // 5: with its extension
  std::optional<platform::GeoTransformation> transformation;  // 6: layer to WGS 1984
  platform::TransformDirection direction = platform::TransformDirection::Forward;  // 7
};

struct WaypointResult {
  std::string report;          // the RTF report; empty when the run failed
  std::int64_t records = 0;    // records written
  // Records whose Plot ID or Stand ID holds a comma or a line break, written
  // as they stand but misread by a field computer: "record 3 (Plot ID 'A,1')".
  std::vector<std::string> misreadRecords;
  std::string errorText;       // what the error road showed, when the run failed
  std::string errorLogPath;    // the error log written, when the run failed
  std::string errorReason;     // what went wrong, in the error's own words
  bool Succeeded() const { return !report.empty(); }
};

// Reads every point first and writes the file in one go at the end, in
// place of an existing file only once complete, so a run that fails leaves
// the old file or none. A failure is shown through the error road
// (application's message window and the error log) and gives an empty
// report; an interruption (platform::RunInterrupted) is thrown on.
WaypointResult CreateWaypointFile(platform::host::Application& application,
                                  const platform::host::MapDocument* document,
                                  const WaypointParameters& parameters);

}  // namespace tarnwick
