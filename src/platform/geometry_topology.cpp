// Topological operations on Geometry (GEOS through OGR).
#include <ogr_api.h>

#include "platform/errors.h"
#include "platform/geometry.h"
#include "platform/internal/geometry_impl.h"
#include "platform/internal/ogr_errors.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "Geometry";
constexpr int kBufferQuadrantSegments = 30;  // arc vertices per quarter circle

bool IsPolygonal(const OGRGeometry& geom) {
  const OGRwkbGeometryType type = wkbFlatten(geom.getGeometryType());
  return type == wkbPolygon || type == wkbMultiPolygon;
}

// The polygonal parts of a geometry: a polygon when there is one, a
// multipolygon otherwise (empty when there are none).
std::unique_ptr<OGRGeometry> PolygonalPart(std::unique_ptr<OGRGeometry> geom) {
  if (IsPolygonal(*geom)) return geom;
  auto multipolygon = std::make_unique<OGRMultiPolygon>();
  if (OGR_GT_IsSubClassOf(wkbFlatten(geom->getGeometryType()), wkbGeometryCollection)) {
    for (const OGRGeometry* part : *geom->toGeometryCollection()) {
      const OGRwkbGeometryType type = wkbFlatten(part->getGeometryType());
      if (type == wkbPolygon) {
        multipolygon->addGeometry(part);
      } else if (type == wkbMultiPolygon) {
        for (const OGRPolygon* p : *part->toMultiPolygon()) multipolygon->addGeometry(p);
      }
    }
  }
  if (multipolygon->getNumGeometries() == 1) {
    return std::unique_ptr<OGRGeometry>(multipolygon->getGeometryRef(0)->clone());
  }
  return multipolygon;
}

}  // namespace

bool Geometry::IsKnownSimple() const {
  if (IsEmpty()) return true;
  internal::QuietGdalErrors quiet;
  return impl()->geom->IsValid();
}

Geometry Geometry::Simplify() const {
  if (IsEmpty() || !IsPolygonal(*impl()->geom)) return *this;
  internal::QuietGdalErrors quiet;
  if (impl()->geom->IsValid()) return *this;
  std::unique_ptr<OGRGeometry> repaired(impl()->geom->MakeValid());
  if (!repaired) internal::ThrowGdalError(kSource, "The polygon's topology could not be repaired");
  return internal::Wrap(PolygonalPart(std::move(repaired)), SpatialRef());
}

Geometry Geometry::Buffer(double distance) const {
  if (IsEmpty()) return *this;
  internal::QuietGdalErrors quiet;
  std::unique_ptr<OGRGeometry> buffered(impl()->geom->Buffer(distance, kBufferQuadrantSegments));
  if (!buffered) internal::ThrowGdalError(kSource, "The geometry could not be buffered");
  return internal::Wrap(std::move(buffered), SpatialRef());
}

Geometry Geometry::Centroid() const {
  auto point = std::make_unique<OGRPoint>();
  if (!IsEmpty()) {
    internal::QuietGdalErrors quiet;
    if (impl()->geom->Centroid(point.get()) != OGRERR_NONE) {
      internal::ThrowGdalError(kSource, "The centroid could not be computed");
    }
  }
  return internal::Wrap(std::move(point), SpatialRef());
}

double Geometry::Area() const {
  if (IsEmpty()) return 0.0;
  return OGR_G_Area(OGRGeometry::ToHandle(impl()->geom.get()));
}

Envelope Geometry::GetEnvelope() const {
  Envelope envelope;
  if (IsEmpty()) return envelope;
  OGREnvelope e;
  impl()->geom->getEnvelope(&e);
  return {e.MinX, e.MinY, e.MaxX, e.MaxY, false};
}

Geometry Geometry::IntersectPoints(const Geometry& multipoint) const {
  std::vector<XY> points = multipoint.IsEmpty() ? std::vector<XY>{} : multipoint.Points();
  if (!points.empty()) {
    if (IsEmpty() || !IsPolygonal(*impl()->geom)) {
      points.clear();
    } else {
      PreparedPolygon(*this).KeepCovered(points);
    }
  }
  return MakeMultipoint(points, multipoint.SpatialRef());
}

}  // namespace tarnwick::platform
