#pragma once
// The Waypoint Converter command's driver: the waypoint file written from
// the parameter set the dialog left in the extension.
#include <any>
#include <string>

#include "shell/host_array.h"

namespace tarnwick {

// parameters holds a WaypointParameters; returns the report, empty when the
// run failed.
std::string RunCreateWaypointFile(HostArray& host, const std::any& parameters);

}  // namespace tarnwick
