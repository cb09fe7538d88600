#include "presentation/error_handling.h"
#include "transforms/transform_search.h"

namespace tarnwick {

void ProjectGeometryToGeographicCoordinates(platform::host::Application& app, platform::Geometry& pGeometry) {
  Guarded("ProjectGeometryToGeographicCoordinates", "TransformFunctions", [&] {
    const platform::SpatialReference& sr = pGeometry.SpatialRef();
    if (sr.IsUnknown()) {
      app.MessageBox(
          "Failed in ProjectGeometryToGeographicCoordinates:  Geometry has an unknown spatial reference set...", "",
          platform::host::MessageButtons::OK);
      return;
    }
    if (sr.IsProjected()) pGeometry = pGeometry.Project(sr.GeographicCoordinateSystem());
  });
}

}  // namespace tarnwick
