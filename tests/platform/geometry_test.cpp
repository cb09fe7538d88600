#include "platform/geometry.h"

#include <gtest/gtest.h>


namespace tarnwick::platform {
namespace {

const SpatialReference kUtm = SpatialReference::FromEpsg(26910);

TEST(Geometry, SimplifyRepairsABowTie) {
  const auto bowTie = Geometry::FromWkt("POLYGON ((0 0, 10 10, 10 0, 0 10, 0 0))", kUtm);
  EXPECT_FALSE(bowTie.IsKnownSimple());
  const auto repaired = bowTie.Simplify();
  EXPECT_TRUE(repaired.IsKnownSimple());
  EXPECT_EQ(repaired.Type(), GeometryType::Polygon);
  EXPECT_EQ(repaired.Polygons().size(), 2u);
  EXPECT_DOUBLE_EQ(repaired.Area(), 50.0);
  EXPECT_EQ(repaired.SpatialRef().FactoryCode(), 26910);

  const auto square = Geometry::FromWkt("POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0))", kUtm);
  EXPECT_TRUE(square.IsKnownSimple());
  EXPECT_EQ(square.Simplify().ToWkt(), square.ToWkt());
}

TEST(Geometry, NegativeBufferShrinksAndCanEmpty) {
  const auto square = Geometry::FromWkt("POLYGON ((0 0, 0 100, 100 100, 100 0, 0 0))", kUtm);
  const auto shrunk = square.Buffer(-10);
  const Envelope e = shrunk.GetEnvelope();
  EXPECT_NEAR(e.xMin, 10, 1e-9);
  EXPECT_NEAR(e.xMax, 90, 1e-9);
  EXPECT_NEAR(shrunk.Area(), 6400, 1e-6);
  EXPECT_TRUE(square.Buffer(-60).IsEmpty());
  EXPECT_GT(square.Buffer(5).Area(), 100.0 * 100.0 + 4 * 5 * 100);
}

TEST(Geometry, PolygonWithHole) {
  const auto ring = Geometry::FromWkt(
      "POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0), (2 2, 2 4, 4 4, 4 2, 2 2))", kUtm);
  EXPECT_DOUBLE_EQ(ring.Area(), 96.0);
  const XY c = ring.Centroid().PointXY();
  // Centroid of the square less the hole: (100*5 - 4*3) / 96 on both axes.
  EXPECT_NEAR(c.x, 488.0 / 96.0, 1e-12);
  EXPECT_NEAR(c.y, 488.0 / 96.0, 1e-12);
  const auto parts = ring.Polygons();
  ASSERT_EQ(parts.size(), 1u);
  ASSERT_EQ(parts[0].size(), 2u);
  EXPECT_EQ(parts[0][1][0], (XY{2, 2}));
  EXPECT_EQ(ring.PointCount(), 10);
}

TEST(Geometry, IntersectPointsKeepsOrderAndBoundary) {
  const auto square = Geometry::FromWkt("POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0))", kUtm);
  const std::vector<XY> points{{5, 5}, {11, 5}, {10, 3}, {0, 0}, {-1, -1}, {2, 9}};
  const auto inside = square.IntersectPoints(Geometry::MakeMultipoint(points, kUtm));
  EXPECT_EQ(inside.Points(), (std::vector<XY>{{5, 5}, {10, 3}, {0, 0}, {2, 9}}));

  const auto none = square.IntersectPoints(Geometry::MakeMultipoint(std::vector<XY>{{20, 20}}, kUtm));
  EXPECT_TRUE(none.IsEmpty());
  EXPECT_EQ(none.Type(), GeometryType::Multipoint);
}

TEST(Geometry, ConstructionCopiesAndAwareness) {
  Geometry null;
  EXPECT_TRUE(null.IsNull());
  EXPECT_TRUE(null.IsEmpty());
  EXPECT_EQ(null.PointCount(), 0);

  auto point = Geometry::MakePoint(3, 4, kUtm);
  auto copy = point;
  point.SetZAware(true);
  EXPECT_TRUE(point.HasZ());
  EXPECT_FALSE(copy.HasZ());
  EXPECT_EQ(copy.PointXY(), (XY{3, 4}));

  const auto two = Geometry::MakePolygon(
      {{{{0, 0}, {0, 1}, {1, 1}, {1, 0}}}, {{{5, 5}, {5, 6}, {6, 6}, {6, 5}}}}, kUtm);
  EXPECT_EQ(two.Type(), GeometryType::Polygon);
  EXPECT_DOUBLE_EQ(two.Area(), 2.0);
  EXPECT_EQ(two.Polygons().size(), 2u);
  EXPECT_EQ(two.Polygons()[0][0].size(), 5u);  // rings are closed
}

TEST(PreparedPolygon, BoundariesHolesAndParts) {
  // A diamond with a square hole, and a separate thin triangle.
  const auto shape = Geometry::FromWkt(
      "MULTIPOLYGON (((0 10, 10 20, 20 10, 10 0, 0 10), (8 8, 12 8, 12 12, 8 12, 8 8)),"
      " ((30 0, 40 0, 30 0.3, 30 0)))",
      kUtm);
  const PreparedPolygon prepared(shape);
  const struct {
    double x, y;
    bool covered;
  } cases[] = {{5, 15, true},   {0, 10, true},    {3, 10, true},    {10, 10, false},  // edge, vertex, inside, hole
               {12, 10, true},  {8, 8, true},     {1, 1, false},                      // hole's edge and corner, outside
               {35, 0, true},   {35, 0.1, true},  {35, 0.2, false}, {25, 5, false}};  // triangle, between the parts
  for (const auto& c : cases) EXPECT_EQ(prepared.Covers(c.x, c.y), c.covered) << c.x << "," << c.y;
  std::vector<XY> points{{3, 10}, {10, 10}, {5, 15}, {50, 50}, {12, 10}};
  prepared.KeepCovered(points);
  EXPECT_EQ(points, (std::vector<XY>{{3, 10}, {5, 15}, {12, 10}}));
  EXPECT_FALSE(PreparedPolygon{Geometry()}.Covers(0, 0));
}

}  // namespace
}  // namespace tarnwick::platform
