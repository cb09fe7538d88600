#include "support/geographic_buffer.h"

#include "errors/error_road.h"

namespace tarnwick {

namespace {
constexpr char kModule[] = "MyGeometricOperations";
}

platform::Geometry EnvelopeToPolygon(const platform::Envelope& envelope, const platform::SpatialReference& sr) {
  return Guarded("EnvelopeToPolygon", kModule, [&] {
    const platform::Ring ring{{envelope.xMin, envelope.yMin},
                              {envelope.xMin, envelope.yMax},
                              {envelope.xMax, envelope.yMax},
                              {envelope.xMax, envelope.yMin},
                              {envelope.xMin, envelope.yMin}};
    return platform::Geometry::MakePolygon({{ring}}, sr);
  });
}

platform::Geometry BufferGeographic(const platform::Geometry& geometry, double distance, bool& errorFlag,
                                    std::string& errorText) {
  errorFlag = false;
  errorText.clear();
  return Guarded("BufferGeographic", kModule, [&]() -> platform::Geometry {
    const platform::SpatialReference& own = geometry.SpatialRef();
    if (!own.IsGeographic()) {
      errorFlag = true;
      errorText = "Spatial Reference Not Geographic";
      return platform::Geometry();
    }
    platform::XY centre;
    if (geometry.Type() == platform::GeometryType::Point) {
      centre = geometry.PointXY();
    } else {
      const platform::Envelope box = geometry.GetEnvelope();
      centre = {(box.xMin + box.xMax) / 2, (box.yMin + box.yMax) / 2};
    }
    const auto projection = platform::SpatialReference::AzimuthalEquidistant(centre.x, centre.y);
    return geometry.Project(projection).Simplify().Buffer(distance).Simplify().Project(own).Simplify();
  });
}

platform::Geometry BufferGeographic(const platform::Envelope& envelope, const platform::SpatialReference& sr,
                                    double distance, bool& errorFlag, std::string& errorText) {
  return BufferGeographic(EnvelopeToPolygon(envelope, sr), distance, errorFlag, errorText);
}

}  // namespace tarnwick
