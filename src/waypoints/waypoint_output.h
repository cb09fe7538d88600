#pragma once
// The output-name rules of the waypoint conversion: the ".way" extension, the
// default name beside the map, and the checks on the chosen path.
#include <string>

namespace tarnwick {

// The path with its extension set to "way" (added when missing, replaced otherwise).
std::string WaypointOutputPath(const std::string& text);

// folder + the layer name made safe + "_Waypoints.way", made unique on disk,
// with doubled separators reduced to one.
std::string DefaultWaypointOutputPath(const std::string& folder, const std::string& layerName);

// The question asked when the output exists already.
std::string WaypointFileExistsQuestion(const std::string& path);
inline constexpr const char* kWaypointFileExistsTitle = "File Already Exists:";

// "" when the folder of the path exists, else the message that refuses it.
std::string CheckWaypointOutputFolder(const std::string& path);

}  // namespace tarnwick
