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
  OGRSpatialReference srs;
  mutable std::mutex mutex;
  mutable std::atomic<int> factoryCode{kUnidentified};  // identified lazily, then kept
};

namespace internal {
// A private copy of the OGR reference of sr (traditional GIS axis order), or
// nullptr when sr is unknown.
std::unique_ptr<OGRSpatialReference> CopyOgr(const SpatialReference& sr);
// The shared OGR reference itself (nullptr when unknown). Only for code that
// holds impl()->mutex or runs on one thread; otherwise use CopyOgr.
inline const OGRSpatialReference* OgrOf(const SpatialReference& sr) { return sr.impl() ? &sr.impl()->srs : nullptr; }
// Wraps a copy of an OGR reference (traditional GIS axis order).
SpatialReference FromOgr(const OGRSpatialReference* srs);
}  // namespace internal

}  // namespace tarnwick::platform
