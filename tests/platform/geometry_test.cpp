// Geometries: repair, buffers, holes, point tests against polygons, and
// projection with and without a datum transformation.
#include "platform/geometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/errors.h"

namespace tarnwick::platform {
namespace {

const SpatialReference kUtm = SpatialReference::FromEpsg(26910);

TEST(Geometry, SimplifyRepairsABowTieAndBuffersGrowShrinkOrEmpty) {
  const auto bowTie = Geometry::FromWkt("POLYGON ((0 0, 10 10, 10 0, 0 10, 0 0))", kUtm);
  EXPECT_FALSE(bowTie.IsKnownSimple());
  const auto repaired = bowTie.Simplify();
  EXPECT_TRUE(repaired.IsKnownSimple());
  EXPECT_EQ(repaired.Type(), GeometryType::Polygon);
  EXPECT_EQ(repaired.Polygons().size(), 2u);
  EXPECT_DOUBLE_EQ(repaired.Area(), 50.0);
  EXPECT_EQ(repaired.SpatialRef().FactoryCode(), 26910);

  const auto square = Geometry::FromWkt("POLYGON ((0 0, 0 100, 100 100, 100 0, 0 0))", kUtm);
  EXPECT_TRUE(square.IsKnownSimple());
  EXPECT_EQ(square.Simplify().ToWkt(), square.ToWkt());
  const auto shrunk = square.Buffer(-10);
  EXPECT_NEAR(shrunk.GetEnvelope().xMin, 10, 1e-9);
  EXPECT_NEAR(shrunk.GetEnvelope().xMax, 90, 1e-9);
  EXPECT_NEAR(shrunk.Area(), 6400, 1e-6);
  EXPECT_TRUE(square.Buffer(-60).IsEmpty());
  EXPECT_GT(square.Buffer(5).Area(), 100.0 * 100.0 + 4 * 5 * 100);
}

TEST(Geometry, HolesPartsConstructionAndCopies) {
  const auto ring = Geometry::FromWkt(
      "POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0), (2 2, 2 4, 4 4, 4 2, 2 2))", kUtm);
  EXPECT_DOUBLE_EQ(ring.Area(), 96.0);
  // Centroid of the square less the hole: (100*5 - 4*3) / 96 on both axes.
  EXPECT_NEAR(ring.Centroid().PointXY().x, 488.0 / 96.0, 1e-12);
  EXPECT_NEAR(ring.Centroid().PointXY().y, 488.0 / 96.0, 1e-12);
  const auto parts = ring.Polygons();
  ASSERT_EQ(parts.size(), 1u);
  ASSERT_EQ(parts[0].size(), 2u);
  EXPECT_EQ(parts[0][1][0], (XY{2, 2}));
  EXPECT_EQ(ring.PointCount(), 10);

  Geometry null;
  EXPECT_TRUE(null.IsNull() && null.IsEmpty() && null.PointCount() == 0);

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

TEST(PreparedPolygon, PlainValidityAgreesWithGeosOnSingleRings) {
  const struct {
    const char* wkt;
    bool plain;
  } cases[] = {
      {"POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0))", true},
      {"POLYGON ((0 0, 0 5, 0 10, 5 10, 10 10, 10 0, 0 0))", true},         // vertices on straight sides
      {"MULTIPOLYGON (((0 0, 5 2, 10 0, 10 10, 5 3, 0 10, 0 0)))", true},    // concave, one part
      {"POLYGON ((0 0, 10 10, 10 0, 0 10, 0 0))", false},                    // bow tie
      {"POLYGON ((0 0, 0 10, 10 10, 5 5, 10 0, 5 5, 0 0))", false},          // touches itself at a vertex
      {"POLYGON ((0 0, 0 10, 10 10, 10 0, 12 0, 0 0))", false},              // runs back along a side
      {"POLYGON ((0 0, 0 10, 0 10, 10 10, 10 0, 0 0))", true},               // a repeated vertex is harmless
      {"POLYGON ((0 0, 0 10, 10 10, 10 0, 5 10, 2 0, 0 0))", false},         // a vertex on another side
      {"POLYGON ((0 0, 0 9, 9 9, 9 0, 0 0), (1 1, 2 1, 2 2, 1 1))", false},  // a hole: left to GEOS
  };
  for (const auto& c : cases) {
    const auto shape = Geometry::FromWkt(c.wkt, kUtm);
    EXPECT_EQ(PreparedPolygon(shape).PlainlyValid(), c.plain) << c.wkt;
    if (c.plain) EXPECT_TRUE(shape.IsKnownSimple()) << c.wkt;
  }
  // One ring: the two answers must be the same, or stands would be wrongly
  // repaired or wrongly trusted.
  // Random rings on a coarse grid meet every kind of touch and overlap.
  std::uint32_t state = 12345;
  auto next = [&state] { return (state = state * 1664525u + 1013904223u) >> 16; };
  for (int trial = 0; trial < 20000; ++trial) {
    std::vector<XY> ring(4 + next() % 5);
    for (auto& p : ring) p = {static_cast<double>(next() % 5), static_cast<double>(next() % 5)};
    ring.push_back(ring.front());
    const auto shape = Geometry::MakePolygon({{ring}}, kUtm);
    ASSERT_EQ(PreparedPolygon(shape).PlainlyValid(), shape.IsKnownSimple()) << shape.ToWkt();
  }
}

TEST(Project, NoDatumShift) {
  const auto nad27Utm = SpatialReference::FromEpsg(26710);
  const auto nad83Utm = SpatialReference::FromEpsg(26910);
  const auto source = Geometry::MakePoint(500000, 4500000, nad27Utm);

  const auto projected = source.Project(nad83Utm);
  EXPECT_EQ(projected.SpatialRef().FactoryCode(), 26910);

  // Inverse on NAD27, then forward on NAD83 with the same longitude and latitude.
  const XY lonLat = source.Project(SpatialReference::FromEpsg(4267)).PointXY();
  const XY expected = Geometry::MakePoint(lonLat.x, lonLat.y, SpatialReference::FromEpsg(4269)).Project(nad83Utm).PointXY();
  const XY got = projected.PointXY();
  EXPECT_NEAR(got.x, expected.x, 1e-6);
  EXPECT_NEAR(got.y, expected.y, 1e-6);
  // On the central meridian the easting stays; a datum shift would move it about 90 m.
  EXPECT_NEAR(got.x, 500000, 1e-6);
  EXPECT_NEAR(lonLat.x, -123.0, 1e-9);
  // Only the spheroid differs: a couple of hundred metres of northing at most.
  EXPECT_GT(std::abs(got.y - 4500000), 1.0);
  EXPECT_LT(std::abs(got.y - 4500000), 300.0);
}

TEST(Project, RoundTripsThroughUnitsAndEmptyGeometries) {
  const auto utm = SpatialReference::FromEpsg(26910);
  const auto feet = SpatialReference::FromEpsg(2227);
  const auto square = Geometry::FromWkt("POLYGON ((550000 4180000, 550000 4180100, 550100 4180100, 550100 4180000, 550000 4180000))", utm);
  const auto there = square.Project(feet);
  // Within the two projections' scale distortions of each other.
  EXPECT_NEAR(there.Area() / (10000.0 / (0.3048006096 * 0.3048006096)), 1.0, 2e-3);
  const auto back = there.Project(utm);
  EXPECT_NEAR(back.GetEnvelope().xMin, 550000, 1e-6);
  EXPECT_NEAR(back.GetEnvelope().yMax, 4180100, 1e-6);

  Geometry empty = Geometry::MakeMultipoint(std::vector<XY>{}, utm);
  EXPECT_TRUE(empty.Project(feet).IsEmpty());
  EXPECT_EQ(empty.Project(feet).SpatialRef().FactoryCode(), 2227);
}

TEST(Project, PointsInABatchLandWhereEachPointAloneLandsAndAnUnknownTransformationIsRefused) {
  const auto nad27Utm = SpatialReference::FromEpsg(26710);
  const auto wgs84 = SpatialReference::FromEpsg(4326);
  const GeoTransformation shift{"NAD_1927_To_WGS_1984_4", 1173, "EPSG", 4267, 4326};
  std::vector<XY> points;
  for (int i = 0; i < 50; ++i) points.push_back({420000.0 + 1234.5 * i, 4300000.0 + 987.25 * i});

  std::vector<XY> plain = points;
  ProjectPoints(plain, nad27Utm, wgs84);
  std::vector<XY> shifted = points;
  ProjectPoints(shifted, nad27Utm, wgs84, &shift, TransformDirection::Forward);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto alone = Geometry::MakePoint(points[i].x, points[i].y, nad27Utm);
    EXPECT_EQ(plain[i], alone.Project(wgs84).PointXY());
    EXPECT_EQ(shifted[i], alone.ProjectEx(wgs84, shift, TransformDirection::Forward).PointXY());
  }
  EXPECT_NE(plain[0], shifted[0]);

  std::vector<XY> unknown = points;
  ProjectPoints(unknown, SpatialReference(), wgs84);
  EXPECT_EQ(unknown, points);

  // A transformation that cannot be applied is reported.
  const GeoTransformation noSuch{"No_Such_Transformation", 999999};
  const auto line = Geometry::FromWkt("LINESTRING (500000 4500000, 500100 4500100)", nad27Utm);
  EXPECT_THROW(line.ProjectEx(SpatialReference::FromEpsg(26910), noSuch, TransformDirection::Forward), PlatformError);
}

TEST(Project, AzimuthalEquidistantMeasuresMetresFromItsCentre) {
  const auto wgs84 = SpatialReference::FromEpsg(4326);
  const auto ae = SpatialReference::AzimuthalEquidistant(-122, 45);
  const XY centre = Geometry::MakePoint(-122, 45, wgs84).Project(ae).PointXY();
  EXPECT_LT(std::hypot(centre.x, centre.y), 1e-6);
  const XY north = Geometry::MakePoint(-122, 46, wgs84).Project(ae).PointXY();
  EXPECT_NEAR(north.x, 0, 1e-6);
  EXPECT_NEAR(north.y, 111141.5, 5.0);  // one degree of meridian arc near 45.5 N
}

}  // namespace
}  // namespace tarnwick::platform
