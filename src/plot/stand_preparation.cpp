#include "plot/stand_preparation.h"

#include "plot/plot_module.h"
#include "plot/plot_units.h"
#include "presentation/error_handling.h"
#include "support/geographic_buffer.h"

namespace tarnwick {

platform::Geometry ReturnPreparedPolygon(platform::Geometry polygon, double bufferDistance,
                                         const std::string& bufferUnits, bool reproject, bool hasTransformation,
                                         const platform::SpatialReference& outputReference,
                                         platform::TransformDirection direction,
                                         const std::optional<platform::GeoTransformation>& transformation) {
  return Guarded("ReturnPreparedPolygon", kPlotModule, [&] {
    if (!polygon.IsKnownSimple()) polygon = polygon.Simplify();
    if (polygon.IsEmpty()) return polygon;

    if (reproject) {
      polygon = hasTransformation && transformation
                    ? polygon.ProjectEx(outputReference, *transformation, direction)
                    : polygon.Project(outputReference);
    }

    if (bufferDistance != 0) {
      double meters = DistanceToMeters(bufferDistance, bufferUnits);
      if (meters > 0) meters = -meters;  // the buffer only ever shrinks the stand
      if (polygon.SpatialRef().IsGeographic()) {
        bool errorFlag = false;
        std::string errorText;
        polygon = BufferGeographic(polygon, meters, errorFlag, errorText);
      } else {
        polygon = polygon.Buffer(meters / polygon.SpatialRef().MetersPerUnit());
      }
    }
    return polygon;
  });
}

platform::Geometry& FixShapeZandM(platform::Geometry& point, bool hasZ, bool hasM) {
  return Guarded("FixShapeZandM", kPlotModule, [&]() -> platform::Geometry& {
    point.SetZAware(hasZ);
    point.SetMAware(hasM);
    return point;
  });
}

}  // namespace tarnwick
