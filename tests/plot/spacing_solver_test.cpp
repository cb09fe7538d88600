// The initial spacing and the search for a plot count.
#include "plot/spacing_solver.h"

#include <gtest/gtest.h>

#include <cmath>

#include "plot/plot_points.h"

namespace tarnwick {
namespace {

platform::Field PlotsField() {
  platform::Field field;
  field.name = "Plots";
  return field;
}

using platform::Geometry;
using platform::SpatialReference;

TEST(FillInitialSpacing, CellAreaIsStandAreaOverTarget) {
  const Geometry square = Geometry::FromWkt("POLYGON((0 0,1000 0,1000 1000,0 1000,0 0))", SpatialReference::FromEpsg(26910));
  const SpacingPair square11 = FillInitialSpacing(square, 1, 1, 100);
  EXPECT_DOUBLE_EQ(square11.x, 100);
  EXPECT_DOUBLE_EQ(square11.y, 100);
  const SpacingPair square12 = FillInitialSpacing(square, 1, 2, 100);
  EXPECT_NEAR(square12.x, 70.7107, 1e-4);
  EXPECT_NEAR(square12.y, 141.4214, 1e-4);
  EXPECT_NEAR(square12.x * square12.y, 10000, 1e-6);
  EXPECT_THROW(FillInitialSpacing(square, 1, 1, -5), std::exception);
}

TEST(FillInitialSpacing, GeographicAreaIsInSquareMetres) {
  // 0.01 by 0.01 degrees at the equator: about 1113 m by 1106 m.
  const Geometry cell = Geometry::FromWkt("POLYGON((10 0,10.01 0,10.01 0.01,10 0.01,10 0))", SpatialReference::FromEpsg(4326));
  const SpacingPair spacing = FillInitialSpacing(cell, 1, 1, 100);
  EXPECT_NEAR(spacing.x, 111, 1.5);
}

struct SearchCase {
  const char* wkt;
  long target;
  SpacingRatioOption ratio;
};

TEST(SearchSpacingForCount, HitsTheTargetOnConcaveStands) {
  const SpatialReference utm = SpatialReference::FromEpsg(26910);
  const char* lShape =
      "POLYGON((500000 4000000,500400 4000000,500400 4000150,500180 4000150,500180 4000330,500260 4000330,"
      "500260 4000420,500000 4000420,500000 4000000))";
  const char* crescent =
      "POLYGON((0 0,300 40,520 210,560 420,470 610,520 420,420 250,260 140,60 90,0 0))";
  const SearchCase cases[] = {
      {lShape, 1, SpacingRatioOption::Square},     {lShape, 12, SpacingRatioOption::Square},
      {lShape, 40, SpacingRatioOption::OneToTwo},  {lShape, 75, SpacingRatioOption::Square},
      {crescent, 10, SpacingRatioOption::Square},  {crescent, 25, SpacingRatioOption::OneToTwoPointFive},
  };
  for (const SearchCase& c : cases) {
    SCOPED_TRACE(std::to_string(c.target) + " in " + c.wkt);
    const Geometry polygon = Geometry::FromWkt(c.wkt, utm);
    const platform::PreparedPolygon prepared(polygon);
    const SpacingRatio ratio = SpacingRatio::Of(c.ratio);
    const SpacingOption spacing = PlotsPerPolygon{c.target, ratio};
    const StandOriginContext origin = PrepareStandOrigin(polygon, NoAnchor{}, nullptr);
    platform::Feature stand;
    StandGrid grid{polygon, prepared, stand, spacing, "Meters", origin, {}, "S1"};
    double orientation = 17;
    long iterations = -1;
    std::vector<platform::XY> points;
    const StandPlots plots = ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points);
    EXPECT_TRUE(plots.produced);
    EXPECT_FALSE(plots.plotCountIsZero);
    EXPECT_EQ(static_cast<long>(points.size()), c.target);
    EXPECT_GE(iterations, 1);
    EXPECT_LE(iterations, 301);
    for (const auto& p : points) EXPECT_TRUE(prepared.Covers(p.x, p.y));
  }
}

TEST(SearchSpacingForCount, ZeroTargetBuildsNothingAndNegativeTargetFails) {
  const SpatialReference utm = SpatialReference::FromEpsg(26910);
  const Geometry polygon = Geometry::FromWkt("POLYGON((0 0,100 0,100 100,0 100,0 0))", utm);
  const platform::PreparedPolygon prepared(polygon);
  const StandOriginContext origin = PrepareStandOrigin(polygon, NoAnchor{}, nullptr);
  platform::Feature stand;
  stand.values = {platform::Value{}, platform::Value{}, platform::Value{std::int64_t{0}}};
  const SpacingOption fromField = PlotsFromField{2, PlotsField(), SpacingRatio::Of(SpacingRatioOption::Square)};
  StandGrid grid{polygon, prepared, stand, fromField, "Meters", origin, {}, "S1"};
  double orientation = 0;
  long iterations = 5;
  std::vector<platform::XY> points{{1, 1}};
  const StandPlots zero = ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points);
  EXPECT_TRUE(zero.plotCountIsZero);
  EXPECT_FALSE(zero.produced);
  EXPECT_TRUE(points.empty());

  stand.values[2] = platform::Value{std::int64_t{-4}};
  EXPECT_THROW(ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points), std::exception);
  stand.values[2] = platform::Value{};
  EXPECT_THROW(ReturnPointCollectionOfPoints(grid, origin.target, orientation, iterations, points), std::exception);
}

}  // namespace
}  // namespace tarnwick
