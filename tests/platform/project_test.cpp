#include <gtest/gtest.h>

#include <cmath>

#include "platform/errors.h"
#include "platform/geometry.h"

namespace tarnwick::platform {
namespace {

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

TEST(Project, ProjectExReportsATransformationThatCannotBeApplied) {
  const auto source = Geometry::FromWkt("LINESTRING (500000 4500000, 500100 4500100)", SpatialReference::FromEpsg(26710));
  GeoTransformation unknown;
  unknown.name = "No_Such_Transformation";
  unknown.code = 999999;
  EXPECT_THROW(source.ProjectEx(SpatialReference::FromEpsg(26910), unknown, TransformDirection::Forward), PlatformError);
}

TEST(Project, PointsInABatchLandWhereEachPointAloneLands) {
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
}

TEST(Project, AzimuthalEquidistantMeasuresMetresFromItsCentre) {
  const auto wgs84 = SpatialReference::FromEpsg(4326);
  const auto ae = SpatialReference::AzimuthalEquidistant(-122, 45);
  const XY centre = Geometry::MakePoint(-122, 45, wgs84).Project(ae).PointXY();
  EXPECT_NEAR(centre.x, 0, 1e-6);
  EXPECT_NEAR(centre.y, 0, 1e-6);
  const XY north = Geometry::MakePoint(-122, 46, wgs84).Project(ae).PointXY();
  EXPECT_NEAR(north.x, 0, 1e-6);
  EXPECT_NEAR(north.y, 111141.5, 5.0);  // one degree of meridian arc near 45.5 N
}

}  // namespace
}  // namespace tarnwick::platform
