#include "support/spherical_area.h"

#include <algorithm>
#include <cmath>

#include "errors/error_road.h"
#include "support/geometric_operations.h"
#include "support/spheroid_operations.h"

namespace tarnwick {
namespace {

constexpr char kModule[] = "MyGeometricOperations";

// Initial bearing from p to q in radians, in 0 up to two pi.
double BearingRadians(const platform::XY& p, const platform::XY& q) {
  const double lat1 = DegToRad(p.y), lat2 = DegToRad(q.y);
  const double dLon = DegToRad(q.x - p.x);
  double bearing = tarnwick::atan2(std::sin(dLon) * std::cos(lat2),
                                   std::cos(lat1) * std::sin(lat2) - std::sin(lat1) * std::cos(lat2) * std::cos(dLon));
  if (bearing < 0) bearing += kTwoPi;
  return bearing;
}

// Central angle between two points, by the haversine.
double SideRadians(const platform::XY& p, const platform::XY& q) {
  double unused = 0;
  return DistanceHaversineNumbers(p.y, p.x, q.y, q.x, 1.0, false, unused);
}

bool SamePoint(const platform::XY& p, const platform::XY& q) {
  return std::fabs(p.x - q.x) <= 1e-12 && std::fabs(p.y - q.y) <= 1e-12;
}

bool OnPole(const platform::XY& p) { return std::fabs(std::fabs(p.y) - 90.0) <= 1e-9; }

// Twice the planar signed area of a ring; positive when it runs
// counter-clockwise in the longitude-latitude plane.
double PlanarSignedArea2(const platform::Ring& ring) {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    sum += ring[i].x * ring[i + 1].y - ring[i + 1].x * ring[i].y;
  }
  if (!ring.empty() && !(ring.front() == ring.back())) {
    sum += ring.back().x * ring.front().y - ring.front().x * ring.back().y;
  }
  return sum;
}

// Gives the rings the host's orientation, exterior clockwise and holes
// counter-clockwise, whatever order the store kept them in, so that the
// triangle signs add up to the part's area.
void OrientRings(platform::PolygonRings& part) {
  for (std::size_t i = 0; i < part.size(); ++i) {
    const double area2 = PlanarSignedArea2(part[i]);
    const bool counterClockwise = area2 > 0;
    const bool wantCounterClockwise = i > 0;
    if (area2 != 0 && counterClockwise != wantCounterClockwise) std::reverse(part[i].begin(), part[i].end());
  }
}

}  // namespace

double SphericalTriangleArea2(const platform::XY& p1, const platform::XY& p2, const platform::XY& p3, int& sign,
                              double semiMajor, double semiMinor) {
  sign = 0;
  if (SamePoint(p1, p2) || SamePoint(p2, p3) || SamePoint(p3, p1)) return 0;
  if (int(OnPole(p1)) + int(OnPole(p2)) + int(OnPole(p3)) > 1) return 0;

  const double radius = std::cbrt(semiMajor * semiMajor * semiMinor);
  const double a = SideRadians(p1, p2);
  const double b = SideRadians(p2, p3);
  const double c = SideRadians(p3, p1);

  const double diff = BearingRadians(p1, p3) - BearingRadians(p1, p2);
  if (diff <= 0) {
    sign = std::fabs(diff) <= kPi ? -1 : 1;
  } else {
    sign = diff <= kPi ? 1 : -1;
  }

  // L'Huilier's theorem for the spherical excess.
  const double s = (a + b + c) / 2;
  const double t0 = std::max(0.0, std::tan(s / 2));
  const double ta = std::max(0.0, std::tan((s - a) / 2));
  const double tb = std::max(0.0, std::tan((s - b) / 2));
  const double tc = std::max(0.0, std::tan((s - c) / 2));
  const double excess = 4 * std::atan(std::sqrt(t0 * ta * tb * tc));
  return radius * radius * excess * sign;
}

double SphericalPolygonArea2(const platform::Geometry& polygon, bool wantCentroid, double& centroidX,
                             double& centroidY, double semiMajor, double semiMinor) {
  return Guarded("SphericalPolygonArea2", kModule, [&]() -> double {
    double area = 0;
    double sumX = 0, sumY = 0, sumZ = 0;
    for (platform::PolygonRings part : polygon.Polygons()) {
      OrientRings(part);
      const platform::XY centre =
          platform::Geometry::MakePolygon({part}, polygon.SpatialRef()).Centroid().PointXY();
      double cx = 0, cy = 0, cz = 0;
      if (wantCentroid) SphericalLatLongToCart(centre.x, centre.y, cx, cy, cz, 1.0);

      for (const platform::Ring& ring : part) {
        const std::size_t n = ring.size();
        for (std::size_t i = 0; i < n; ++i) {
          const platform::XY& from = ring[i];
          const platform::XY& to = ring[(i + 1) % n];
          if (i + 1 == n && from == ring.front()) break;  // closed ring: no closing segment to add
          int sign = 0;
          const double triangle = SphericalTriangleArea2(from, to, centre, sign, semiMajor, semiMinor);
          area += triangle;
          if (wantCentroid && triangle != 0) {
            double x1 = 0, y1 = 0, z1 = 0, x2 = 0, y2 = 0, z2 = 0;
            SphericalLatLongToCart(from.x, from.y, x1, y1, z1, 1.0);
            SphericalLatLongToCart(to.x, to.y, x2, y2, z2, 1.0);
            double mx = 0, my = 0, mz = 0;
            TriangleCentroid3D(x1, y1, z1, x2, y2, z2, cx, cy, cz, mx, my, mz);
            const double length = std::sqrt(mx * mx + my * my + mz * mz);
            if (length > 0) {
              sumX += mx / length * triangle;
              sumY += my / length * triangle;
              sumZ += mz / length * triangle;
            }
          }
        }
      }
    }
    if (wantCentroid) {
      if (area > 0) {
        SphericalCartToLatLong(centroidX, centroidY, sumX, sumY, sumZ);
      } else {
        centroidX = -9999;
        centroidY = -9999;
      }
    }
    return area;
  });
}

}  // namespace tarnwick
