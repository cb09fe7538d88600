// The lattice walker on a plane and on a geographic system.
#include "plot/lattice.h"

#include <gtest/gtest.h>

#include <cmath>

#include "plot/plot_points.h"
#include "support/spheroid_operations.h"

namespace tarnwick {
namespace {

using platform::Geometry;
using platform::PreparedPolygon;
using platform::SpatialReference;
using platform::XY;

constexpr double kDegree = 3.14159265358979323846 / 180;

TEST(LatticeDirections, FollowTheOrientationClasses) {
  struct Case {
    double orientation, normalised, east, north, west, south;
  };
  const Case cases[] = {
      {0, 0, 90, 0, 270, 180},      {45, 45, 135, 45, 315, 225},  {46, 46, 46, 316, 226, 136},
      {90, 90, 90, 0, 270, 180},    {200, 200, 110, 20, 290, 200}, {330, 330, 60, 330, 240, 150},
      {360, 0, 90, 0, 270, 180},    {-30, 330, 60, 330, 240, 150}, {135, 135, 135, 45, 315, 225},
      {136, 136, 46, 316, 226, 136}, {315, 315, 135, 45, 315, 225},
  };
  for (const Case& c : cases) {
    double orientation = c.orientation;
    const LatticeDirections d = ReturnLatticeDirections(orientation);
    SCOPED_TRACE(c.orientation);
    EXPECT_DOUBLE_EQ(orientation, c.normalised);
    EXPECT_DOUBLE_EQ(d.east, c.east);
    EXPECT_DOUBLE_EQ(d.north, c.north);
    EXPECT_DOUBLE_EQ(d.west, c.west);
    EXPECT_DOUBLE_EQ(d.south, c.south);
  }
}

// A concave stand (an L with a notch) in UTM metres.
const char* kConcaveStand =
    "POLYGON((500000 4000000,500400 4000000,500400 4000150,500180 4000150,500180 4000330,500260 4000330,"
    "500260 4000420,500000 4000420,500000 4000000))";

struct LatticeIndex {
  double i;  // steps along the row (east) direction
  double j;  // steps along the north direction
};

// Coordinates of p in the lattice through origin, in steps.
LatticeIndex IndexOf(XY p, XY origin, const LatticeDirections& d, double xSpacing, double ySpacing) {
  const double dx = p.x - origin.x, dy = p.y - origin.y;
  // Compass azimuth a: unit vector (sin a, cos a).
  const double ex = std::sin(d.east * kDegree), ey = std::cos(d.east * kDegree);
  const double nx = std::sin(d.north * kDegree), ny = std::cos(d.north * kDegree);
  return {(dx * ex + dy * ey) / xSpacing, (dx * nx + dy * ny) / ySpacing};
}

TEST(ReturnTestPointCollection2, PlaneLatticeIsCompleteInsideAndOrdered) {
  const SpatialReference utm = SpatialReference::FromEpsg(26910);
  const Geometry polygon = Geometry::FromWkt(kConcaveStand, utm);
  const PreparedPolygon prepared(polygon);
  const XY origin{500123.4, 4000077.7};  // any point: the lattice passes through it
  const double xSpacing = 23, ySpacing = 31;

  for (double orientation : {0.0, 45.0, 46.0, 90.0, 200.0, 330.0}) {
    SCOPED_TRACE(orientation);
    double a = orientation;
    const LatticeFrame frame = MakeLatticeFrame(polygon, a);
    std::vector<XY> points;
    ReturnTestPointCollection2(origin, prepared, xSpacing, ySpacing, frame, points);

    // Every point is a lattice point inside the stand.
    std::vector<LatticeIndex> indexes;
    for (const XY& p : points) {
      EXPECT_TRUE(prepared.Covers(p.x, p.y));
      const LatticeIndex k = IndexOf(p, origin, frame.directions, xSpacing, ySpacing);
      EXPECT_NEAR(k.i, std::round(k.i), 1e-6);
      EXPECT_NEAR(k.j, std::round(k.j), 1e-6);
      indexes.push_back({std::round(k.i), std::round(k.j)});
    }

    // Northern row first, west to east within a row, no repeats.
    for (std::size_t n = 1; n < indexes.size(); ++n) {
      const bool sameRow = indexes[n].j == indexes[n - 1].j;
      EXPECT_TRUE(indexes[n].j < indexes[n - 1].j || (sameRow && indexes[n].i > indexes[n - 1].i))
          << "point " << n << " out of order";
    }

    // Nothing missed: every lattice point in the stand was found.
    int expected = 0;
    const double ex = std::sin(frame.directions.east * kDegree), ey = std::cos(frame.directions.east * kDegree);
    const double nx = std::sin(frame.directions.north * kDegree), ny = std::cos(frame.directions.north * kDegree);
    for (int i = -60; i <= 60; ++i) {
      for (int j = -60; j <= 60; ++j) {
        const double x = origin.x + i * xSpacing * ex + j * ySpacing * nx;
        const double y = origin.y + i * xSpacing * ey + j * ySpacing * ny;
        if (prepared.Covers(x, y)) ++expected;
      }
    }
    EXPECT_EQ(static_cast<int>(points.size()), expected);
    EXPECT_GT(expected, 50);
  }
}

TEST(ReturnTestPointCollection2, OrientationZeroRowsRunExactlyEastWestAndUnwalkableSpacingsAreRefused) {
  const SpatialReference utm = SpatialReference::FromEpsg(26910);
  const Geometry polygon = Geometry::FromWkt("POLYGON((0 0,100 0,100 50,0 50,0 0))", utm);
  const PreparedPolygon prepared(polygon);
  double a = 0;
  const LatticeFrame frame = MakeLatticeFrame(polygon, a);
  std::vector<XY> points;
  ReturnTestPointCollection2({5, 5}, prepared, 10, 10, frame, points);
  ASSERT_EQ(points.size(), 50u);  // x 5..95, y 45..5
  EXPECT_EQ(points.front(), (XY{5, 45}));
  EXPECT_EQ(points[1], (XY{15, 45}));
  EXPECT_EQ(points[10], (XY{5, 35}));
  EXPECT_EQ(points.back(), (XY{95, 5}));
  for (const auto& [x, y] : {std::pair{0.0, 10.0}, {10.0, std::nan("")}, {10.0, -1.0}}) {
    EXPECT_THROW(ReturnTestPointCollection2({5, 5}, prepared, x, y, frame, points), std::exception) << x << "," << y;
  }
}

TEST(ReturnTestPointCollection2, GeographicStepsAreMetresOnTheSpheroid) {
  const SpatialReference nad83 = SpatialReference::FromEpsg(4269);
  // About 1.2 km by 1.1 km near 45 degrees north.
  const Geometry polygon =
      Geometry::FromWkt("POLYGON((-122.010 45.000,-121.995 45.000,-121.995 45.010,-122.010 45.010,-122.010 45.000))",
                        nad83);
  const PreparedPolygon prepared(polygon);
  double a = 30;
  const LatticeFrame frame = MakeLatticeFrame(polygon, a);
  ASSERT_TRUE(frame.isGeographic);
  std::vector<XY> points;
  const XY centre = polygon.Centroid().PointXY();
  ReturnTestPointCollection2(centre, prepared, 100, 100, frame, points);

  // Area / cell: about 1182 m x 1112 m / 10,000 m2.
  EXPECT_NEAR(static_cast<double>(points.size()), 131, 12);
  // Neighbours in a row lie 100 m apart along the east azimuth (60 degrees).
  int neighbours = 0;
  for (std::size_t n = 1; n < points.size(); ++n) {
    double bearing = 0;
    const double d = DistanceHaversineNumbers(points[n - 1].y, points[n - 1].x, points[n].y, points[n].x,
                                              6371008.8, false, bearing);
    if (d < 150) {
      EXPECT_NEAR(d, 100, 0.5);
      ++neighbours;
    }
  }
  EXPECT_GT(neighbours, 80);
  for (const XY& p : points) EXPECT_TRUE(prepared.Covers(p.x, p.y));
}

}  // namespace
}  // namespace tarnwick
