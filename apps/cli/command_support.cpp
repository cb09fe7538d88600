#include "command_support.h"

#include <cstdio>
#include <fstream>
#include <optional>

#include "commands.h"
#include "platform/errors.h"
#include "transforms/transform_search.h"

namespace tarnwick::cli {

platform::FeatureLayer OpenLayer(const std::string& layerSource) {
  try {
    return platform::OpenFeatureLayer(layerSource);
  } catch (const platform::PlatformError& e) {
    throw UsageError(e.what());
  }
}

void RequireSpatialReference(const platform::FeatureLayer& layer) {
  bool booError = false;
  std::string problem;
  std::optional<platform::SpatialReference> projected;
  ReturnGCSFromDataset(layer, booError, problem, projected);
  if (booError) {
    throw UsageError("There is a problem with the spatial reference for '" + layer.name + "':\n\n  --> " + problem +
                     "\n\nPlease select a different layer, or fix the spatial reference before running this tool.");
  }
}

void WriteReport(const std::string& path, const std::string& rtf) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << rtf;
  if (!out) std::fprintf(stderr, "tarnwick: could not write the report '%s'\n", path.c_str());
}

}  // namespace tarnwick::cli
