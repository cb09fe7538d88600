#pragma once
// A datum transformation between two geographic coordinate systems, known by
// its catalogue name and code. It is applied through PROJ.
#include <string>

namespace tarnwick::platform {

enum class TransformDirection : long { Forward = 0, Reverse = 1 };

struct GeoTransformation {
  std::string name;      // ESRI-style name, e.g. "NAD_1927_To_NAD_1983_NADCON"
  int code = 0;          // EPSG or ESRI code of the operation
  std::string authority = "EPSG";
  int fromGcsCode = 0;   // factory code of the source geographic system
  int toGcsCode = 0;     // factory code of the target geographic system
};

// Throws PlatformError, naming the missing grid files, when PROJ cannot run
// the transformation on this machine.
void CheckTransformationUsable(const GeoTransformation& transformation);

}  // namespace tarnwick::platform
