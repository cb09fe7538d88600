#pragma once
// Layers and references for the transformation tests, made in code.
#include <string>
#include <vector>

#include "platform/geometry.h"
#include "platform/spatial_reference.h"
#include "platform/workspace.h"
#include "testkit/temp_dir.h"

namespace tarnwick::testing {

// A polygon layer in a GeoPackage with one square of `size` units whose lower
// left corner is (x, y), in the given reference.
inline platform::FeatureLayer SquareLayer(const testkit::TempDir& dir, const std::string& name,
                                          const platform::SpatialReference& sr, double x, double y, double size) {
  auto workspace = platform::Workspace::OpenOrCreate(dir / "layers.gpkg");
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = name;
  newClass.geometryType = platform::GeometryType::Polygon;
  newClass.spatialReference = sr;
  auto fc = workspace->CreateFeatureClass(newClass);
  auto cursor = fc->Insert();
  auto feature = cursor->CreateFeatureBuffer();
  feature.shape = platform::Geometry::MakePolygon(
      {{{{x, y}, {x, y + size}, {x + size, y + size}, {x + size, y}, {x, y}}}}, sr);
  cursor->InsertFeature(feature);
  cursor->Flush();
  return platform::FeatureLayer{name, fc, {}, true};
}

inline platform::SpatialReference Epsg(int code) { return platform::SpatialReference::FromEpsg(code); }

}  // namespace tarnwick::testing
