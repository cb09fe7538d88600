#pragma once
// The checks of a waypoint conversion, made by the Waypoint Converter dialog
// and by the command line alike, in the dialog's order: the layer and its
// fields, unique Plot IDs among the points to convert, the output file.
#include <functional>
#include <string>

#include "platform/host/application.h"
#include "presentation/dialog_checks.h"
#include "waypoints/create_waypoint_file.h"

namespace tarnwick {

// "The layer ... is not a point layer." for any other layer.
std::optional<CheckMessage> CheckWaypointLayer(const platform::FeatureLayer& layer);

// The layer's field of that name, when it can serve in that role: text or
// numeric fields, numeric only for the elevation.
enum class WaypointFieldRole { PlotID, StandID, Elevation };
Checked<platform::Field> FindWaypointField(const platform::FeatureLayer& layer, const std::string& name,
                                           WaypointFieldRole role);

// Reads the Plot ID of every point the conversion will write (the selection,
// unless all are asked for or none is selected). A repeated ID, or no point
// at all, is refused with a plain-text report. onProgress receives the
// progress text each time it changes.
std::optional<CheckMessage> CheckPlotIDsForConversion(const WaypointParameters& parameters,
                                                      const std::function<void(const std::string&)>& onProgress = {});
inline constexpr const char* kPlotIdProblemsCaption = " Problems with Plot ID Values:";

// The output path from the text typed: ".way" set, the question when the
// file exists (declined, it gives an Answered refusal), and a folder that
// must exist. The file is left in place: the run replaces it only once the
// new one is complete.
Checked<std::string> CheckWaypointOutput(platform::host::Application& application, const std::string& text);

}  // namespace tarnwick
