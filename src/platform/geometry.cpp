// Geometry construction, coordinates and Z/M awareness on OGR geometries.
#include "platform/geometry.h"

#include <ogr_api.h>

#include <string>

#include "platform/errors.h"
#include "platform/internal/geometry_impl.h"
#include "platform/internal/ogr_errors.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "Geometry";

OGRLinearRing MakeRing(const Ring& ring) {
  OGRLinearRing r;
  r.setNumPoints(static_cast<int>(ring.size()), FALSE);
  for (std::size_t i = 0; i < ring.size(); ++i) r.setPoint(static_cast<int>(i), ring[i].x, ring[i].y);
  r.closeRings();
  return r;
}

std::unique_ptr<OGRPolygon> MakeOgrPolygon(const PolygonRings& rings) {
  auto polygon = std::make_unique<OGRPolygon>();
  for (const Ring& ring : rings) {
    OGRLinearRing r = MakeRing(ring);
    polygon->addRing(&r);
  }
  return polygon;
}

Ring ReadRing(const OGRLinearRing& ring) {
  Ring out;
  out.reserve(ring.getNumPoints());
  for (int i = 0; i < ring.getNumPoints(); ++i) out.push_back({ring.getX(i), ring.getY(i)});
  return out;
}

PolygonRings ReadPolygon(const OGRPolygon& polygon) {
  PolygonRings rings;
  if (polygon.IsEmpty()) return rings;
  rings.push_back(ReadRing(*polygon.getExteriorRing()));
  for (int i = 0; i < polygon.getNumInteriorRings(); ++i) rings.push_back(ReadRing(*polygon.getInteriorRing(i)));
  return rings;
}

int CountVertices(const OGRGeometry& geom) {
  const OGRwkbGeometryType type = wkbFlatten(geom.getGeometryType());
  if (type == wkbPoint) return geom.IsEmpty() ? 0 : 1;
  if (type == wkbLineString || type == wkbLinearRing || type == wkbCircularString) {
    return geom.toSimpleCurve()->getNumPoints();
  }
  if (type == wkbPolygon) {
    int count = 0;
    for (const OGRLinearRing* ring : *geom.toPolygon()) count += ring->getNumPoints();
    return count;
  }
  if (OGR_GT_IsSubClassOf(type, wkbGeometryCollection)) {
    int count = 0;
    for (const OGRGeometry* part : *geom.toGeometryCollection()) count += CountVertices(*part);
    return count;
  }
  return 0;
}

}  // namespace

namespace internal {
Geometry Wrap(std::unique_ptr<OGRGeometry> geom, const SpatialReference& sr) {
  auto impl = std::make_unique<Geometry::Impl>();
  impl->geom = std::move(geom);
  impl->sr = sr;
  return Geometry(std::move(impl));
}
}  // namespace internal

Geometry::Geometry() : impl_(std::make_unique<Impl>()) {}
Geometry::~Geometry() = default;
Geometry::Geometry(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Geometry::Geometry(const Geometry& other) : impl_(std::make_unique<Impl>()) {
  if (other.impl_) {
    if (other.impl_->geom) impl_->geom.reset(other.impl_->geom->clone());
    impl_->sr = other.impl_->sr;
  }
}
Geometry& Geometry::operator=(const Geometry& other) {
  if (this != &other) *this = Geometry(other);
  return *this;
}
Geometry::Geometry(Geometry&&) noexcept = default;
Geometry& Geometry::operator=(Geometry&&) noexcept = default;

Geometry Geometry::MakePoint(double x, double y, const SpatialReference& sr) {
  return internal::Wrap(std::make_unique<OGRPoint>(x, y), sr);
}

Geometry Geometry::MakeMultipoint(std::span<const XY> points, const SpatialReference& sr) {
  auto multipoint = std::make_unique<OGRMultiPoint>();
  for (const XY& p : points) multipoint->addGeometryDirectly(new OGRPoint(p.x, p.y));
  return internal::Wrap(std::move(multipoint), sr);
}

Geometry Geometry::MakePolygon(const std::vector<PolygonRings>& parts, const SpatialReference& sr) {
  if (parts.size() == 1) return internal::Wrap(MakeOgrPolygon(parts.front()), sr);
  auto multipolygon = std::make_unique<OGRMultiPolygon>();
  for (const PolygonRings& part : parts) multipolygon->addGeometryDirectly(MakeOgrPolygon(part).release());
  return internal::Wrap(std::move(multipolygon), sr);
}

Geometry Geometry::FromWkt(std::string_view wkt, const SpatialReference& sr) {
  internal::QuietGdalErrors quiet;
  std::string text(wkt);
  OGRGeometry* geom = nullptr;
  if (OGRGeometryFactory::createFromWkt(text.c_str(), nullptr, &geom) != OGRERR_NONE || geom == nullptr) {
    throw PlatformError(kErrPlatform, kSource, "Invalid geometry text '" + text.substr(0, 80) + "'");
  }
  return internal::Wrap(std::unique_ptr<OGRGeometry>(geom), sr);
}

std::string Geometry::ToWkt() const {
  if (IsNull()) return "";
  return impl_->geom->exportToWkt();
}

GeometryType Geometry::Type() const {
  if (IsNull()) return GeometryType::Null;
  switch (wkbFlatten(impl_->geom->getGeometryType())) {
    case wkbPoint: return GeometryType::Point;
    case wkbMultiPoint: return GeometryType::Multipoint;
    case wkbLineString:
    case wkbMultiLineString: return GeometryType::Polyline;
    case wkbPolygon:
    case wkbMultiPolygon: return GeometryType::Polygon;
    default: return GeometryType::Null;
  }
}

bool Geometry::IsNull() const { return !impl_ || !impl_->geom; }
bool Geometry::IsEmpty() const { return IsNull() || impl_->geom->IsEmpty(); }

const SpatialReference& Geometry::SpatialRef() const {
  static const SpatialReference unknown;  // of a moved-from geometry
  return impl_ ? impl_->sr : unknown;
}

void Geometry::SetSpatialRef(const SpatialReference& sr) {
  if (!impl_) impl_ = std::make_unique<Impl>();
  impl_->sr = sr;
}

XY Geometry::PointXY() const {
  if (Type() != GeometryType::Point || IsEmpty()) {
    throw PlatformError(kErrPlatform, kSource, "The geometry is not a point");
  }
  const auto* point = impl_->geom->toPoint();
  return {point->getX(), point->getY()};
}

std::vector<XY> Geometry::Points() const {
  std::vector<XY> points;
  if (IsEmpty()) return points;
  if (Type() == GeometryType::Point) {
    points.push_back(PointXY());
  } else if (Type() == GeometryType::Multipoint) {
    const auto* multipoint = impl_->geom->toMultiPoint();
    points.reserve(multipoint->getNumGeometries());
    for (const OGRPoint* p : *multipoint) points.push_back({p->getX(), p->getY()});
  } else {
    throw PlatformError(kErrPlatform, kSource, "The geometry is not a point or multipoint");
  }
  return points;
}

std::vector<PolygonRings> Geometry::Polygons() const {
  std::vector<PolygonRings> parts;
  if (IsEmpty()) return parts;
  const OGRwkbGeometryType type = wkbFlatten(impl_->geom->getGeometryType());
  if (type == wkbPolygon) {
    parts.push_back(ReadPolygon(*impl_->geom->toPolygon()));
  } else if (type == wkbMultiPolygon) {
    for (const OGRPolygon* p : *impl_->geom->toMultiPolygon()) {
      if (!p->IsEmpty()) parts.push_back(ReadPolygon(*p));
    }
  } else {
    throw PlatformError(kErrPlatform, kSource, "The geometry is not a polygon");
  }
  return parts;
}

int Geometry::PointCount() const {
  if (IsEmpty()) return 0;
  return CountVertices(*impl_->geom);
}

bool Geometry::HasZ() const { return !IsNull() && impl_->geom->Is3D(); }
bool Geometry::HasM() const { return !IsNull() && impl_->geom->IsMeasured(); }
void Geometry::SetZAware(bool aware) {
  if (!IsNull()) impl_->geom->set3D(aware ? TRUE : FALSE);
}
void Geometry::SetMAware(bool aware) {
  if (!IsNull()) impl_->geom->setMeasured(aware ? TRUE : FALSE);
}

}  // namespace tarnwick::platform
