#pragma once
// The OGR geometry behind a Geometry (platform-internal). The spatial
// reference is kept beside it rather than attached to the OGR object.
#include <ogr_geometry.h>

#include <memory>

#include "platform/geometry.h"

namespace tarnwick::platform {

struct Geometry::Impl {
  std::unique_ptr<OGRGeometry> geom;  // nullptr for a null geometry
  SpatialReference sr;
};

namespace internal {
// Wraps an OGR geometry (taking ownership) with a spatial reference.
Geometry Wrap(std::unique_ptr<OGRGeometry> geom, const SpatialReference& sr);
// The OGR geometry of g, or nullptr when g is null.
inline const OGRGeometry* OgrOf(const Geometry& g) { return g.impl() ? g.impl()->geom.get() : nullptr; }
}  // namespace internal

}  // namespace tarnwick::platform
