#pragma once
// Checks and outputs the subcommands share.
#include <string>

#include "platform/workspace.h"

namespace tarnwick::cli {

// Opens "PATH" or "PATH|layername=NAME"; a layer that cannot be opened is a
// usage error naming the path and the reason.
platform::FeatureLayer OpenLayer(const std::string& layerSource);

// Refuses a layer whose coordinate system is unknown or cannot be used, with
// the dialogs' text.
void RequireSpatialReference(const platform::FeatureLayer& layer);

// Writes the RTF report; a report that cannot be written is told on stderr
// and does not fail the run that made it.
void WriteReport(const std::string& path, const std::string& rtf);

}  // namespace tarnwick::cli
