#include "platform/internal/geo_transform.h"

#include "platform/errors.h"

namespace tarnwick::platform::internal {

void ApplyGeoTransformation(std::span<XY>, const GeoTransformation& transformation, TransformDirection) {
  throw PlatformError(kErrPlatform, "geo_transform",
                      "Geographic transformation '" + transformation.name + "' cannot be applied yet");
}

}  // namespace tarnwick::platform::internal
