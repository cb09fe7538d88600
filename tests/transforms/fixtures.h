#pragma once
// Layers and references for the transformation tests, made in code.
#include <string>
#include <tuple>
#include <vector>

#include "platform/geometry.h"
#include "platform/spatial_reference.h"
#include "platform/transformation.h"
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

// A transformation's parts, to compare whole transformations.
inline auto Parts(const platform::GeoTransformation& t) {
  return std::make_tuple(t.name, t.code, t.authority, t.fromGcsCode, t.toGcsCode);
}

}  // namespace tarnwick::testing
