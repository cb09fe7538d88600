// The lattice walker on a plane and on a geographic system, and the search
// for the spacing that gives a stand its plot count.
#include "plot/lattice.h"

#include <gtest/gtest.h>

#include <cmath>

#include "plot/plot_points.h"
#include "plot/spacing_solver.h"
#include "support/spheroid_operations.h"

namespace tarnwick {
namespace {

using platform::Geometry;
using platform::PreparedPolygon;
using platform::SpatialReference;
using platform::XY;

constexpr double kDegree = 3.14159265358979323846 / 180;
const SpatialReference kUtm = SpatialReference::FromEpsg(26910);

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
    EXPECT_EQ((std::vector<double>{orientation, d.east, d.north, d.west, d.south}),
              (std::vector<double>{c.normalised, c.east, c.north, c.west, c.south}))
        << c.orientation;
  }
}

// A concave stand (an L with a notch) in UTM metres.
const char* kConcaveStand =
    "POLYGON((500000 4000000,500400 4000000,500400 4000150,500180 4000150,500180 4000330,500260 4000330,"
    "500260 4000420,500000 4000420,500000 4000000))";

// The exact points of orientation 0 are the whole-run test's.
TEST(ReturnTestPointCollection2, PlaneLatticeIsCompleteInsideAndOrdered) {
  const Geometry polygon = Geometry::FromWkt(kConcaveStand, kUtm);
  const PreparedPolygon prepared(polygon);
  const XY origin{500123.4, 4000077.7};  // any point: the lattice passes through it
  const double xSpacing = 23, ySpacing = 31;

  for (double orientation : {0.0, 45.0, 46.0, 90.0, 200.0, 330.0}) {
    SCOPED_TRACE(orientation);
    const LatticeFrame frame = MakeLatticeFrame(polygon, orientation);
    std::vector<XY> points;
    ReturnTestPointCollection2(origin, prepared, xSpacing, ySpacing, frame, points);
    // Unit vectors of the row (east) and column (north) directions: a
    // compass azimuth a points along (sin a, cos a).
    const XY east{std::sin(frame.directions.east * kDegree), std::cos(frame.directions.east * kDegree)};
    const XY north{std::sin(frame.directions.north * kDegree), std::cos(frame.directions.north * kDegree)};

    // Every point is a lattice point inside the stand; northern row first,
    // west to east within a row, no repeats.
    double lastI = 0, lastJ = 0;
    for (std::size_t n = 0; n < points.size(); ++n) {
      const XY& p = points[n];
      EXPECT_TRUE(prepared.Covers(p.x, p.y));
      const double dx = p.x - origin.x, dy = p.y - origin.y;
      const double i = (dx * east.x + dy * east.y) / xSpacing, j = (dx * north.x + dy * north.y) / ySpacing;
      EXPECT_NEAR(i, std::round(i), 1e-6);
      EXPECT_NEAR(j, std::round(j), 1e-6);
      if (n > 0) {
        EXPECT_TRUE(std::round(j) < lastJ || (std::round(j) == lastJ && std::round(i) > lastI)) << "point " << n;
      }
      lastI = std::round(i), lastJ = std::round(j);
    }

    // Nothing missed: every lattice point in the stand was found.
    int expected = 0;
    for (int i = -60; i <= 60; ++i) {
      for (int j = -60; j <= 60; ++j) {
        const double x = origin.x + i * xSpacing * east.x + j * ySpacing * north.x;
        const double y = origin.y + i * xSpacing * east.y + j * ySpacing * north.y;
        if (prepared.Covers(x, y)) ++expected;
      }
    }
    EXPECT_EQ(static_cast<int>(points.size()), expected);
    EXPECT_GT(expected, 50);

    // Spacings the walk would never end on are refused.
    for (const auto& [x, y] : {std::pair{0.0, 10.0}, {10.0, std::nan("")}, {10.0, -1.0}}) {
      EXPECT_THROW(ReturnTestPointCollection2(origin, prepared, x, y, frame, points), std::exception) << x << "," << y;
    }
  }
}

TEST(ReturnTestPointCollection2, GeographicStepsAreMetresOnTheSpheroid) {
  // About 1.2 km by 1.1 km near 45 degrees north.
  const Geometry polygon =
      Geometry::FromWkt("POLYGON((-122.010 45.000,-121.995 45.000,-121.995 45.010,-122.010 45.010,-122.010 45.000))",
                        SpatialReference::FromEpsg(4269));
  const PreparedPolygon prepared(polygon);
  double a = 30;
  const LatticeFrame frame = MakeLatticeFrame(polygon, a);
  ASSERT_TRUE(frame.isGeographic);
  std::vector<XY> points;
  ReturnTestPointCollection2(polygon.Centroid().PointXY(), prepared, 100, 100, frame, points);

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

TEST(SearchSpacingForCount, HitsTheTargetOnConcaveStands) {
  const char* crescent = "POLYGON((0 0,300 40,520 210,560 420,470 610,520 420,420 250,260 140,60 90,0 0))";
  const struct {
    const char* wkt;
    long target;
    SpacingRatioOption ratio;
  } cases[] = {
      {kConcaveStand, 1, SpacingRatioOption::Square},    {kConcaveStand, 12, SpacingRatioOption::Square},
      {kConcaveStand, 40, SpacingRatioOption::OneToTwo}, {kConcaveStand, 75, SpacingRatioOption::Square},
      {crescent, 10, SpacingRatioOption::Square},        {crescent, 25, SpacingRatioOption::OneToTwoPointFive},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.target) + " in " + c.wkt);
    const Geometry polygon = Geometry::FromWkt(c.wkt, kUtm);
    const PreparedPolygon prepared(polygon);
    const SpacingOption spacing = PlotsPerPolygon{c.target, SpacingRatio::Of(c.ratio)};
    const StandOriginContext origin = PrepareStandOrigin(polygon, NoAnchor{}, nullptr);
    platform::Feature stand;
    StandGrid grid{polygon, prepared, stand, spacing, "Meters", origin, {}, "S1"};
    double orientation = 17;
    long iterations = -1;
    std::vector<XY> points;
    const StandPlots plots = ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points);
    EXPECT_TRUE(plots.produced);
    EXPECT_FALSE(plots.plotCountIsZero);
    EXPECT_EQ(static_cast<long>(points.size()), c.target);
    EXPECT_GE(iterations, 1);
    EXPECT_LE(iterations, 301);
    for (const auto& p : points) EXPECT_TRUE(prepared.Covers(p.x, p.y));
  }
}

TEST(SearchSpacingForCount, ZeroTargetBuildsNothingAndANegativeOrNullTargetFails) {
  const Geometry polygon = Geometry::FromWkt("POLYGON((0 0,100 0,100 100,0 100,0 0))", kUtm);
  const PreparedPolygon prepared(polygon);
  const StandOriginContext origin = PrepareStandOrigin(polygon, NoAnchor{}, nullptr);
  platform::Feature stand;
  stand.values = {platform::Value{}, platform::Value{}, platform::Value{std::int64_t{0}}};
  platform::Field plots;
  plots.name = "Plots";
  const SpacingOption fromField = PlotsFromField{2, plots, SpacingRatio::Of(SpacingRatioOption::Square)};
  StandGrid grid{polygon, prepared, stand, fromField, "Meters", origin, {}, "S1"};
  double orientation = 0;
  long iterations = 5;
  std::vector<XY> points{{1, 1}};
  const StandPlots zero = ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points);
  EXPECT_TRUE(zero.plotCountIsZero);
  EXPECT_FALSE(zero.produced);
  EXPECT_TRUE(points.empty());
  for (const platform::Value& count : {platform::Value{std::int64_t{-4}}, platform::Value{}}) {
    stand.values[2] = count;
    EXPECT_THROW(ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points), std::exception);
  }
}

}  // namespace
}  // namespace tarnwick
