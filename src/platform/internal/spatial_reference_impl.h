#pragma once
// The OGR object behind a SpatialReference (platform-internal).
#include <ogr_spatialref.h>

#include <optional>

#include "platform/spatial_reference.h"

namespace tarnwick::platform {

struct SpatialReference::Impl {
  OGRSpatialReference srs;
  mutable std::optional<int> factoryCode;  // identified lazily, then kept
};

namespace internal {
// The OGR reference of sr, or nullptr when it is unknown.
inline const OGRSpatialReference* OgrOf(const SpatialReference& sr) {
  return sr.impl() ? &sr.impl()->srs : nullptr;
}
// Wraps a copy of an OGR reference (traditional GIS axis order).
SpatialReference FromOgr(const OGRSpatialReference* srs);
}  // namespace internal

}  // namespace tarnwick::platform
