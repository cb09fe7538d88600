// Steps, distances and areas on the spheroid and the sphere, against values
// from an independent geodesic solver (PROJ's geod) and the ellipsoidal area
// formula.
#include <gtest/gtest.h>

#include <cmath>

#include "platform/geometry.h"
#include "presentation/error_handling.h"
#include "platform/spatial_reference.h"
#include "support/spherical_area.h"
#include "support/spheroid_operations.h"

namespace tarnwick {
namespace {

constexpr double kA = 6378137.0;
constexpr double kB = 6356752.314245179;  // WGS 84
constexpr double kMillimetreInDegrees = 1e-3 / 111000.0;

TEST(SpheroidOperations, VincentyStepMatchesAGeodesicSolverToAMillimetre) {
  const struct {
    double lon, lat, azimuth, distance, lon2, lat2, azimuth2;
  } cases[] = {
      {0, 45, 0, 100000, 0, 45.899761453362, 0},
      {10, 45, 30, 100000, 10.642881323068, 45.777431864676, 30.457672268803},
      {151.2, -33.5, 137.25, 2500000, 174.007923812163, -48.109701671349, 122.109760321968},
  };
  for (const auto& c : cases) {
    double lon = 0, lat = 0, azimuth = 0;
    PointLineVincentyPerPoint2_by_Numbers(c.lon, c.lat, c.distance, c.azimuth, lon, lat, azimuth, kA, kB);
    EXPECT_NEAR(lat, c.lat2, kMillimetreInDegrees) << c.azimuth;
    EXPECT_NEAR(lon, c.lon2, kMillimetreInDegrees / std::cos(c.lat2 * 3.14159265358979 / 180)) << c.azimuth;
    EXPECT_NEAR(azimuth, c.azimuth2, 1e-7) << c.azimuth;
  }
  // Going west: the arrival azimuth is brought into 0..360.
  double lon = 0, lat = 0, azimuth = 0;
  PointLineVincentyPerPoint2_by_Numbers(0, 45, 1000, 270, lon, lat, azimuth, kA, kB);
  EXPECT_LT(lon, 0);
  EXPECT_GT(azimuth, 269);
  EXPECT_LT(azimuth, 271);
  // A step of nothing stays put and hands the azimuth on.
  PointLineVincentyPerPoint2_by_Numbers(-122.5, 47.25, 0, 123.4, lon, lat, azimuth, kA, kB);
  EXPECT_TRUE(lon == -122.5 && lat == 47.25 && azimuth == 123.4);
}

TEST(SpheroidOperations, HaversineDistanceAndItsRaisedBearing) {
  constexpr double kRadius = 6371000.79000915;
  double bearing = 0;
  // London to New York.
  const double d = DistanceHaversineNumbers(51.5007, -0.1246, 40.6892, -74.0445, kRadius, true, bearing);
  EXPECT_NEAR(d, 5574841.148, 0.01);
  EXPECT_NEAR(bearing, -71.66314033847218 + 360, 1e-9);
  // Due east along the equator: one degree of arc, bearing 90 + 360.
  EXPECT_NEAR(DistanceHaversineNumbers(0, 0, 0, 1, kRadius, true, bearing), kRadius * 3.14159265358979 / 180, 1e-6);
  EXPECT_NEAR(bearing, 450, 1e-9);
  // Without wantBearing the out value is left alone.
  bearing = -1;
  DistanceHaversineNumbers(0, 0, 1, 0, kRadius, false, bearing);
  EXPECT_EQ(bearing, -1);
}

TEST(SphericalArea, CellAreasAgreeWithTheEllipsoidWhateverTheRingOrder) {
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  double cx = 0, cy = 0;
  // 1 x 1 degree cells; the ellipsoid gives 12308.46 and 8686.49 km².
  const auto equatorCcw = platform::Geometry::FromWkt("POLYGON ((0 0, 1 0, 1 1, 0 1, 0 0))", wgs84);
  const auto equatorCw = platform::Geometry::FromWkt("POLYGON ((0 0, 0 1, 1 1, 1 0, 0 0))", wgs84);
  const auto midLatitude = platform::Geometry::FromWkt("POLYGON ((10 45, 11 45, 11 46, 10 46, 10 45))", wgs84);
  const double a1 = SphericalPolygonArea2(equatorCcw, true, cx, cy, kA, kB);
  EXPECT_NEAR(cx, 0.5, 1e-3);
  EXPECT_NEAR(cy, 0.5, 1e-3);
  const double a2 = SphericalPolygonArea2(equatorCw, false, cx, cy, kA, kB);
  const double a3 = SphericalPolygonArea2(midLatitude, false, cx, cy, kA, kB);
  EXPECT_NEAR(a1 / 1e6, 12308.46, 12308.46 * 0.005);
  EXPECT_NEAR(a2, a1, 1e-3);
  EXPECT_NEAR(a3 / 1e6, 8686.49, 8686.49 * 0.005);

  // A hole subtracts, a second part adds.
  const auto outer = platform::Geometry::FromWkt("POLYGON ((0 0, 2 0, 2 2, 0 2, 0 0))", wgs84);
  const auto hole = platform::Geometry::FromWkt("POLYGON ((0.5 0.5, 1.5 0.5, 1.5 1.5, 0.5 1.5, 0.5 0.5))", wgs84);
  const auto holed = platform::Geometry::FromWkt(
      "POLYGON ((0 0, 2 0, 2 2, 0 2, 0 0), (0.5 0.5, 1.5 0.5, 1.5 1.5, 0.5 1.5, 0.5 0.5))", wgs84);
  const double outerArea = SphericalPolygonArea2(outer, false, cx, cy, kA, kB);
  const double holeArea = SphericalPolygonArea2(hole, false, cx, cy, kA, kB);
  EXPECT_NEAR(SphericalPolygonArea2(holed, false, cx, cy, kA, kB), outerArea - holeArea, outerArea * 1e-9);
  const auto twoCells = platform::Geometry::FromWkt(
      "MULTIPOLYGON (((0 0, 1 0, 1 1, 0 1, 0 0)), ((10 45, 11 45, 11 46, 10 46, 10 45)))", wgs84);
  EXPECT_NEAR(SphericalPolygonArea2(twoCells, true, cx, cy, kA, kB), a1 + a3, 1e-3);
  // The weighted centroid lies between the two cells, nearer the larger.
  EXPECT_GT(cx, 0.5);
  EXPECT_LT(cx, 10.5);

  // A point has no area.
  EXPECT_THROW(SphericalPolygonArea2(platform::Geometry::MakePoint(1, 2, wgs84), false, cx, cy, kA, kB), RoutineError);
}

}  // namespace
}  // namespace tarnwick
