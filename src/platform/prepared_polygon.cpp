// Point-in-polygon tests for many points against one polygon.
//
// The ring edges are filed into horizontal strips; a test looks only at the
// edges of the point's strip and counts ray crossings the way GEOS's indexed
// point-in-area locator does (a point on an edge or vertex is on the
// boundary, which counts as covered). Orientation uses GEOS's double-precision
// filter and, when that cannot decide, GEOS's exact predicate, so the answers
// are those of a GEOS prepared "covers" test without building a GEOS point
// per test. Each object owns its GEOS context, so objects may be used on
// different threads.
#include <geos_c.h>

#include <algorithm>
#include <cmath>

#include "platform/errors.h"
#include "platform/geometry.h"
#include "platform/internal/geometry_impl.h"

namespace tarnwick::platform {

namespace {

struct Edge {
  double x1, y1, x2, y2;
};

// Sign of the orientation of q against the line p1 -> p2 when plain doubles
// decide it surely; 2 when they cannot.
int OrientationFilter(const Edge& e, double qx, double qy) {
  constexpr double kSafeEpsilon = 1e-15;
  const double detLeft = (e.x1 - qx) * (e.y2 - qy);
  const double detRight = (e.y1 - qy) * (e.x2 - qx);
  const double det = detLeft - detRight;
  auto sign = [](double v) { return v > 0 ? 1 : (v < 0 ? -1 : 0); };
  double detSum = 0;
  if (detLeft > 0.0) {
    if (detRight <= 0.0) return sign(det);
    detSum = detLeft + detRight;
  } else if (detLeft < 0.0) {
    if (detRight >= 0.0) return sign(det);
    detSum = -detLeft - detRight;
  } else {
    return sign(det);
  }
  const double bound = kSafeEpsilon * detSum;
  if (det >= bound || -det >= bound) return sign(det);
  return 2;
}

}  // namespace

struct PreparedPolygon::Impl {
  GEOSContextHandle_t context = GEOS_init_r();
  std::vector<Edge> edges;
  std::vector<std::vector<std::uint32_t>> strips;  // edge indexes per strip, bottom up
  double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
  double stripHeight = 1;
  bool empty = true;

  Impl() = default;
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() { GEOS_finish_r(context); }

  std::size_t StripOf(double y) const {
    const double s = std::floor((y - yMin) / stripHeight);
    return static_cast<std::size_t>(std::clamp(s, 0.0, static_cast<double>(strips.size() - 1)));
  }

  void AddRing(const OGRLinearRing& ring) {
    for (int i = 1; i < ring.getNumPoints(); ++i) {
      edges.push_back({ring.getX(i - 1), ring.getY(i - 1), ring.getX(i), ring.getY(i)});
    }
  }

  void BuildStrips() {
    const std::size_t count = std::clamp<std::size_t>(edges.size() / 2, 1, 4096);
    strips.assign(count, {});
    stripHeight = (yMax - yMin) / static_cast<double>(count);
    if (!(stripHeight > 0)) stripHeight = 1;
    for (std::uint32_t i = 0; i < edges.size(); ++i) {
      const Edge& e = edges[i];
      const std::size_t first = StripOf(std::min(e.y1, e.y2));
      const std::size_t last = StripOf(std::max(e.y1, e.y2));
      for (std::size_t s = first; s <= last; ++s) strips[s].push_back(i);
    }
  }

  int Orientation(const Edge& e, double x, double y) const {
    const int filtered = OrientationFilter(e, x, y);
    if (filtered != 2) return filtered;
    return GEOSOrientationIndex_r(context, e.x1, e.y1, e.x2, e.y2, x, y);
  }

  bool Covers(double x, double y) const {
    if (empty || x < xMin || x > xMax || y < yMin || y > yMax) return false;
    int crossings = 0;
    for (const std::uint32_t index : strips[StripOf(y)]) {
      const Edge& e = edges[index];
      if (e.x1 < x && e.x2 < x) continue;  // wholly left of the point
      if (x == e.x2 && y == e.y2) return true;  // on a vertex
      if (e.y1 == y && e.y2 == y) {  // horizontal edge through the point's line
        if (x >= std::min(e.x1, e.x2) && x <= std::max(e.x1, e.x2)) return true;
        continue;
      }
      if ((e.y1 > y && e.y2 <= y) || (e.y2 > y && e.y1 <= y)) {
        int orientation = Orientation(e, x, y);
        if (orientation == 0) return true;  // on the edge
        if (e.y2 < e.y1) orientation = -orientation;
        if (orientation == 1) ++crossings;
      }
    }
    return (crossings % 2) == 1;
  }
};

PreparedPolygon::PreparedPolygon(const Geometry& polygon) : impl_(std::make_unique<Impl>()) {
  const OGRGeometry* geom = internal::OgrOf(polygon);
  if (geom == nullptr || geom->IsEmpty()) return;
  const OGRwkbGeometryType type = wkbFlatten(geom->getGeometryType());
  auto addPolygon = [this](const OGRPolygon& p) {
    for (const OGRLinearRing* ring : p) impl_->AddRing(*ring);
  };
  if (type == wkbPolygon) {
    addPolygon(*geom->toPolygon());
  } else if (type == wkbMultiPolygon) {
    for (const OGRPolygon* p : *geom->toMultiPolygon()) addPolygon(*p);
  } else {
    throw PlatformError(kErrPlatform, "PreparedPolygon", "The geometry is not a polygon");
  }
  OGREnvelope envelope;
  geom->getEnvelope(&envelope);
  impl_->xMin = envelope.MinX;
  impl_->yMin = envelope.MinY;
  impl_->xMax = envelope.MaxX;
  impl_->yMax = envelope.MaxY;
  impl_->BuildStrips();
  impl_->empty = impl_->edges.empty();
}

PreparedPolygon::~PreparedPolygon() = default;
PreparedPolygon::PreparedPolygon(PreparedPolygon&&) noexcept = default;
PreparedPolygon& PreparedPolygon::operator=(PreparedPolygon&&) noexcept = default;

bool PreparedPolygon::Covers(double x, double y) const { return impl_->Covers(x, y); }

void PreparedPolygon::KeepCovered(std::vector<XY>& points) const {
  const Impl& impl = *impl_;
  std::erase_if(points, [&impl](const XY& p) { return !impl.Covers(p.x, p.y); });
}

}  // namespace tarnwick::platform
