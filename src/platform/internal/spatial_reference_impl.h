#pragma once
// The OGR object behind a SpatialReference (platform-internal). Copies of a
// SpatialReference share it; OGR objects are not safe for concurrent use,
// even through const methods, so every use goes through the mutex.
#include <ogr_spatialref.h>

#include <atomic>
#include <memory>
#include <mutex>

#include "platform/spatial_reference.h"

namespace tarnwick::platform {

struct SpatialReference::Impl {
  static constexpr int kUnidentified = -1;
  using TransformPtr = std::unique_ptr<OGRCoordinateTransformation, void (*)(OGRCoordinateTransformation*)>;

  OGRSpatialReference srs;
  mutable std::mutex mutex;
  mutable std::atomic<int> factoryCode{kUnidentified};  // identified lazily, then kept
  // Pure conversions between a projected system and its own geographic
  // system, made on first use and kept: making one costs far more than using it.
  mutable TransformPtr toGeographic{nullptr, OGRCoordinateTransformation::DestroyCT};
  mutable TransformPtr fromGeographic{nullptr, OGRCoordinateTransformation::DestroyCT};
};

namespace internal {
// A private copy of the OGR reference of sr (traditional GIS axis order), or
// nullptr when sr is unknown.
std::unique_ptr<OGRSpatialReference> CopyOgr(const SpatialReference& sr);
// The shared OGR reference itself (nullptr when unknown). Only for code that
// holds impl()->mutex or runs on one thread; otherwise use CopyOgr.
inline const OGRSpatialReference* OgrOf(const SpatialReference& sr) { return sr.impl() ? &sr.impl()->srs : nullptr; }
// Converts coordinates in place between a projected system and its own
// geographic system (longitude, latitude in the geographic system's unit);
// nothing to do for a geographic or unknown system. False when a point fails.
bool ConvertToGeographic(const SpatialReference& sr, int count, double* x, double* y, double* z);
bool ConvertFromGeographic(const SpatialReference& sr, int count, double* x, double* y, double* z);
// Wraps a copy of an OGR reference (traditional GIS axis order).
SpatialReference FromOgr(const OGRSpatialReference* srs);
}  // namespace internal

}  // namespace tarnwick::platform
