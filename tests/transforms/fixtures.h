#pragma once
// Layers and references for the transformation tests, made in code.
#include <string>
#include <vector>

#include "platform/geometry.h"
#include "platform/spatial_reference.h"
#include "platform/workspace.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::testing {

// A polygon layer in a GeoPackage with one square of `size` units whose lower
// left corner is (x, y), in the given reference.
inline platform::FeatureLayer SquareLayer(const testkit::TempDir& dir, const std::string& name,
                                          const platform::SpatialReference& sr, double x, double y, double size) {
  auto fc = testkit::MakeClass(dir / "layers.gpkg", testkit::ClassSpec(name, platform::GeometryType::Polygon, sr),
                               {{testkit::Square(x, y, size)}});
  return platform::FeatureLayer{name, fc, {}, true};
}

inline platform::SpatialReference Epsg(int code) { return platform::SpatialReference::FromEpsg(code); }

}  // namespace tarnwick::testing
