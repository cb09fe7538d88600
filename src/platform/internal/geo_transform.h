#pragma once
// Applies a datum transformation to geographic coordinates (degrees,
// longitude first) in place, through the PROJ operation of the given code.
// Throws PlatformError naming the missing grid when the operation cannot be
// instantiated on this machine.
#include <span>

#include "platform/geometry.h"
#include "platform/transformation.h"

namespace tarnwick::platform::internal {

void ApplyGeoTransformation(std::span<XY> lonLat, const GeoTransformation& transformation,
                            TransformDirection direction);

}  // namespace tarnwick::platform::internal
