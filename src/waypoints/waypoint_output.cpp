#include "waypoints/waypoint_output.h"

#include <filesystem>
#include <string>

#include "support/field_names.h"
#include "support/path_operations.h"
#include "support/unique_names.h"
#include "waypoints/waypoint_report.h"

namespace tarnwick {

std::string WaypointOutputPath(const std::string& text) { return SetExtension(text, "way"); }

std::string DefaultWaypointOutputPath(const std::string& folder, const std::string& layerName) {
  std::string path = folder + "/" + ReplaceBadChars(layerName, true, true, true, false) + "_Waypoints.way";
  for (size_t at = path.find("//"); at != std::string::npos; at = path.find("//")) path.erase(at, 1);
  return MakeUniquedBASEName(path);
}

std::string WaypointFileExistsQuestion(const std::string& path) {
  return "The file '" + path + "' already exists.  Do you wish to overwrite the existing file?";
}

std::string CheckWaypointOutputFolder(const std::string& path) {
  std::string folder = std::filesystem::path(path).parent_path().string();
  if (folder.empty()) folder = ".";
  std::error_code ec;
  if (std::filesystem::is_directory(folder, ec)) return "";
  return "The specified folder '" + folder + "' does not exist!  Please specify a valid workspace.";
}

}  // namespace tarnwick
