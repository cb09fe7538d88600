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
//
// The same strips let a polygon that is one ring check cheaply that the ring
// neither touches nor crosses itself, which settles that it is valid without
// handing it to GEOS.
#include <geos_c.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <span>

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
  std::vector<Edge> edges;
  // Edge indexes by strip, bottom up: strip s holds stripEdges[stripStart[s]]
  // up to stripEdges[stripStart[s + 1]].
  std::vector<std::uint32_t> stripStart;
  std::vector<std::uint32_t> stripEdges;
  double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
  double stripHeight = 1;
  std::size_t stripCount = 1;
  bool empty = true;
  bool singleRing = false;
  // Made on the first orientation plain doubles cannot decide, which most
  // polygons never meet.
  mutable std::atomic<GEOSContextHandle_t> context{nullptr};

  Impl() = default;
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() {
    if (GEOSContextHandle_t handle = context.load()) GEOS_finish_r(handle);
  }

  std::size_t StripOf(double y) const {
    const double s = std::floor((y - yMin) / stripHeight);
    if (!(s > 0)) return 0;  // below the first strip, or not a number
    return s < static_cast<double>(stripCount - 1) ? static_cast<std::size_t>(s) : stripCount - 1;
  }

  // Repeated vertices give no edge: an edge of no length adds no crossing,
  // and its point is the end of the edge before it.
  void AddRing(const OGRLinearRing& ring) {
    for (int i = 1; i < ring.getNumPoints(); ++i) {
      const Edge e{ring.getX(i - 1), ring.getY(i - 1), ring.getX(i), ring.getY(i)};
      if (e.x1 != e.x2 || e.y1 != e.y2) edges.push_back(e);
    }
  }

  template <typename Visit>
  void ForEachStripOf(const Edge& e, Visit visit) const {
    const std::size_t last = StripOf(std::max(e.y1, e.y2));
    for (std::size_t s = StripOf(std::min(e.y1, e.y2)); s <= last; ++s) visit(s);
  }

  void BuildStrips() {
    stripCount = std::clamp<std::size_t>(edges.size() / 2, 1, 4096);
    stripHeight = (yMax - yMin) / static_cast<double>(stripCount);
    if (!(stripHeight > 0)) stripHeight = 1;
    stripStart.assign(stripCount + 2, 0);  // counted one place up, then summed
    for (const Edge& e : edges) ForEachStripOf(e, [this](std::size_t s) { ++stripStart[s + 2]; });
    for (std::size_t s = 2; s < stripStart.size(); ++s) stripStart[s] += stripStart[s - 1];
    stripEdges.resize(stripStart.back());
    for (std::uint32_t i = 0; i < edges.size(); ++i) {
      ForEachStripOf(edges[i], [&](std::size_t s) { stripEdges[stripStart[s + 1]++] = i; });
    }
    stripStart.pop_back();
  }

  std::span<const std::uint32_t> Strip(std::size_t s) const {
    return {stripEdges.data() + stripStart[s], stripEdges.data() + stripStart[s + 1]};
  }

  GEOSContextHandle_t Context() const {
    GEOSContextHandle_t handle = context.load(std::memory_order_acquire);
    if (handle != nullptr) return handle;
    GEOSContextHandle_t fresh = GEOS_init_r();
    if (context.compare_exchange_strong(handle, fresh, std::memory_order_acq_rel)) return fresh;
    GEOS_finish_r(fresh);  // another thread made one first
    return handle;
  }

  int Orientation(const Edge& e, double x, double y) const {
    const int filtered = OrientationFilter(e, x, y);
    if (filtered != 2) return filtered;
    return GEOSOrientationIndex_r(Context(), e.x1, e.y1, e.x2, e.y2, x, y);
  }

  bool Covers(double x, double y) const {
    if (empty || x < xMin || x > xMax || y < yMin || y > yMax) return false;
    int crossings = 0;
    for (const std::uint32_t index : Strip(StripOf(y))) {
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

  // Whether two edges that follow each other on the ring meet only at their
  // shared vertex: they do unless they run back along the same line.
  bool MeetOnlyAtVertex(const Edge& a, const Edge& b) const {
    if (Orientation(a, b.x2, b.y2) != 0) return true;
    return (a.x2 - a.x1) * (b.x2 - b.x1) + (a.y2 - a.y1) * (b.y2 - b.y1) > 0;
  }

  // Whether two edges share any point, decided exactly.
  bool Meet(const Edge& a, const Edge& b) const {
    if (std::max(a.x1, a.x2) < std::min(b.x1, b.x2) || std::max(b.x1, b.x2) < std::min(a.x1, a.x2) ||
        std::max(a.y1, a.y2) < std::min(b.y1, b.y2) || std::max(b.y1, b.y2) < std::min(a.y1, a.y2)) {
      return false;
    }
    const int a1 = Orientation(b, a.x1, a.y1);
    const int a2 = Orientation(b, a.x2, a.y2);
    const int b1 = Orientation(a, b.x1, b.y1);
    const int b2 = Orientation(a, b.x2, b.y2);
    if (a1 * a2 < 0 && b1 * b2 < 0) return true;  // they cross
    // An end on the other edge's line touches it when it lies within that edge's box.
    auto within = [](const Edge& e, double x, double y) {
      return x >= std::min(e.x1, e.x2) && x <= std::max(e.x1, e.x2) && y >= std::min(e.y1, e.y2) &&
             y <= std::max(e.y1, e.y2);
    };
    return (a1 == 0 && within(b, a.x1, a.y1)) || (a2 == 0 && within(b, a.x2, a.y2)) ||
           (b1 == 0 && within(a, b.x1, b.y1)) || (b2 == 0 && within(a, b.x2, b.y2));
  }

  // A single ring of at least three edges whose edges meet only where they
  // follow each other is a simple closed curve and so a valid polygon
  // (repeated vertices, which make no edge, do not count against it). Edges
  // that could meet share a strip; a ring whose strips are too crowded to
  // test cheaply is left undecided.
  bool PlainlyValid() const {
    const std::size_t n = edges.size();
    if (empty || !singleRing || n < 3) return false;
    if (edges.back().x2 != edges.front().x1 || edges.back().y2 != edges.front().y1) return false;  // not closed
    for (const Edge& e : edges) {
      if (!std::isfinite(e.x1) || !std::isfinite(e.y1)) return false;
    }
    for (std::size_t i = 0; i < n; ++i) {
      if (!MeetOnlyAtVertex(edges[i], edges[(i + 1) % n])) return false;
    }
    std::size_t budget = 64 * n;
    for (std::size_t s = 0; s < stripCount; ++s) {
      const auto strip = Strip(s);
      for (std::size_t a = 0; a < strip.size(); ++a) {
        for (std::size_t b = a + 1; b < strip.size(); ++b) {
          const std::size_t gap = strip[b] - strip[a];  // strips list edges in ring order
          if (gap == 1 || gap == n - 1) continue;
          if (budget-- == 0 || Meet(edges[strip[a]], edges[strip[b]])) return false;
        }
      }
    }
    return true;
  }
};

PreparedPolygon::PreparedPolygon(const Geometry& polygon) : impl_(std::make_unique<Impl>()) {
  const OGRGeometry* geom = internal::OgrOf(polygon);
  if (geom == nullptr || geom->IsEmpty()) return;
  const OGRwkbGeometryType type = wkbFlatten(geom->getGeometryType());
  std::vector<const OGRPolygon*> parts;
  if (type == wkbPolygon) {
    parts.push_back(geom->toPolygon());
  } else if (type == wkbMultiPolygon) {
    for (const OGRPolygon* p : *geom->toMultiPolygon()) parts.push_back(p);
  } else {
    throw PlatformError(kErrPlatform, "PreparedPolygon", "The geometry is not a polygon");
  }
  std::size_t points = 0, rings = 0;
  for (const OGRPolygon* p : parts) {
    for (const OGRLinearRing* ring : *p) {
      points += static_cast<std::size_t>(ring->getNumPoints());
      ++rings;
    }
  }
  impl_->edges.reserve(points);
  for (const OGRPolygon* p : parts) {
    for (const OGRLinearRing* ring : *p) impl_->AddRing(*ring);
  }
  OGREnvelope envelope;
  geom->getEnvelope(&envelope);
  impl_->xMin = envelope.MinX;
  impl_->yMin = envelope.MinY;
  impl_->xMax = envelope.MaxX;
  impl_->yMax = envelope.MaxY;
  impl_->singleRing = parts.size() == 1 && rings == 1;
  impl_->BuildStrips();
  impl_->empty = impl_->edges.empty();
}

PreparedPolygon::~PreparedPolygon() = default;
PreparedPolygon::PreparedPolygon(PreparedPolygon&&) noexcept = default;
PreparedPolygon& PreparedPolygon::operator=(PreparedPolygon&&) noexcept = default;

bool PreparedPolygon::Covers(double x, double y) const { return impl_->Covers(x, y); }

bool PreparedPolygon::PlainlyValid() const { return impl_->PlainlyValid(); }

void PreparedPolygon::KeepCovered(std::vector<XY>& points) const {
  const Impl& impl = *impl_;
  std::erase_if(points, [&impl](const XY& p) { return !impl.Covers(p.x, p.y); });
}

}  // namespace tarnwick::platform
