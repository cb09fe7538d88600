#pragma once
// Small questions put to the host and the operating system.
#include <string>
#include <string_view>

namespace tarnwick::platform::host {
class Map;
}

namespace tarnwick {

// The logged-in user's name, trimmed; "Unknown User" when there is none.
std::string ReturnUserName();

// The host's version text for its version number (0 "8.3" ... 6 "10.2").
std::string ReturnArcGISVersion(int versionNumber);

// Removes the map's graphic elements that bear this name (ignoring case).
void DeleteGraphicsByName(platform::host::Map& map, std::string_view name);

}  // namespace tarnwick
