#include "waypoints/waypoint_command_driver.h"

#include "errors/error_road.h"
#include "platform/errors.h"
#include "waypoints/create_waypoint_file.h"

namespace tarnwick {

std::string RunCreateWaypointFile(HostArray& host, const std::any& parameters) {
  const auto* waypoints = std::any_cast<WaypointParameters>(&parameters);
  if (!waypoints) RaiseError(platform::kErrTypeMismatch, "..\\ConversionFunctions", "Type mismatch");
  return CreateWaypointFile(host.application, &host.document, *waypoints).report;
}

}  // namespace tarnwick
