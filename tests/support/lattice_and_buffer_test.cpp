// Walking an anchor along its lattice to a target, and buffers in metres on
// a geographic system.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "platform/geometry.h"
#include "platform/spatial_reference.h"
#include "support/geographic_buffer.h"
#include "support/lattice_shift.h"

namespace tarnwick {
namespace {

struct Shifted {
  double x = 0, y = 0;
  long columns = 0, rows = 0;
};

Shifted Shift(double x, double y, double targetX, double targetY, double xSpacing, double ySpacing,
              bool geographic = false, double rotation = 0) {
  Shifted s;
  ShiftPointBasedOnXYIncrements(x, y, targetX, targetY, xSpacing, ySpacing, 90 + rotation, rotation, 270 + rotation,
                                180 + rotation, s.x, s.y, geographic, s.columns, s.rows);
  return s;
}

TEST(LatticeShift, PlaneWalkLandsOnTheAnchorLatticeNorthWestOfTheTarget) {
  const struct {
    double x, y, xSpacing, ySpacing;
    Shifted expected;
  } cases[] = {
      // From the south-west and from the north-east the walk ends at the
      // north-west corner of the target's cell.
      {0, 0, 10, 10, {50, 50, 5, 5}},
      {100, 100, 10, 10, {50, 50, -5, -5}},
      // An anchor on the target's lines stays put.
      {53, 47, 10, 10, {53, 47, 0, 0}},
      // X spacing 20, Y spacing 10: from the west the walk overshoots to
      // x = 60 and steps back by the Y spacing, off the anchor's columns;
      // from the east no step back is needed.
      {0, 0, 20, 10, {50, 50, 2, 5}},
      {100, 0, 20, 10, {40, 50, -3, 5}},
  };
  for (const auto& c : cases) {
    const Shifted s = Shift(c.x, c.y, 53, 47, c.xSpacing, c.ySpacing);
    EXPECT_EQ((std::vector<double>{s.x, s.y, double(s.columns), double(s.rows)}),
              (std::vector<double>{c.expected.x, c.expected.y, double(c.expected.columns), double(c.expected.rows)}))
        << c.x << "," << c.y << " by " << c.xSpacing;
  }
}

TEST(LatticeShift, RotatedLatticeKeepsWholeStepsFromTheAnchor) {
  const double rotation = 30;
  const Shifted s = Shift(1000, 2000, 1437, 1712, 25, 25, false, rotation);
  // Express the result in lattice coordinates about the anchor.
  const double r = rotation * 3.14159265358979 / 180;
  const double dx = s.x - 1000, dy = s.y - 2000;
  const double east = dx * std::cos(r) - dy * std::sin(r);
  const double north = dx * std::sin(r) + dy * std::cos(r);
  EXPECT_NEAR(east / 25, std::round(east / 25), 1e-9);
  EXPECT_NEAR(north / 25, std::round(north / 25), 1e-9);
  EXPECT_NEAR(east / 25, s.columns, 1e-9);
  EXPECT_NEAR(north / 25, s.rows, 1e-9);
  // And it sits within one cell diagonal of the target.
  EXPECT_LT(std::hypot(s.x - 1437, s.y - 1712), 25 * std::sqrt(2.0) + 1e-9);
}

TEST(LatticeShift, GeographicWalkCountsMetresAroundTheAnchor) {
  const double anchorLon = -123, anchorLat = 45;
  const Shifted s = Shift(anchorLon, anchorLat, -122.99, 45.005, 100, 100, true);
  // In the projection centred on the anchor the result is whole steps away.
  const auto projection = platform::SpatialReference::AzimuthalEquidistant(anchorLon, anchorLat);
  const auto geographic = projection.GeographicCoordinateSystem();
  const platform::XY p = platform::Geometry::MakePoint(s.x, s.y, geographic).Project(projection).PointXY();
  const platform::XY t = platform::Geometry::MakePoint(-122.99, 45.005, geographic).Project(projection).PointXY();
  EXPECT_NEAR(p.x, 100.0 * s.columns, 1e-4);
  EXPECT_NEAR(p.y, 100.0 * s.rows, 1e-4);
  EXPECT_GT(s.columns, 5);  // about 788 m east
  EXPECT_GT(s.rows, 4);     // about 556 m north
  EXPECT_LE(p.x, t.x);
  EXPECT_GE(p.y, t.y);
  EXPECT_LT(t.x - p.x, 100);
  EXPECT_LT(p.y - t.y, 100);
}

TEST(GeographicBuffer, ShrinksAPolygonByMetresAndRefusesAProjectedOne) {
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  const auto square = platform::Geometry::FromWkt("POLYGON ((10 45, 10.01 45, 10.01 45.01, 10 45.01, 10 45))", wgs84);
  bool errorFlag = true;
  std::string errorText = "stale";
  const platform::Geometry shrunk = BufferGeographic(square, -100, errorFlag, errorText);
  EXPECT_FALSE(errorFlag);
  EXPECT_EQ(errorText, "");
  ASSERT_FALSE(shrunk.IsEmpty());
  EXPECT_EQ(shrunk.SpatialRef().FactoryCode(), 4326);
  const platform::Envelope before = square.GetEnvelope();
  const platform::Envelope after = shrunk.GetEnvelope();
  // 200 m less across: in degrees of longitude at 45° and of latitude.
  const double lonShrink = (before.Width() - after.Width()) * 111319.49 * std::cos(45.005 * 3.14159265358979 / 180);
  const double latShrink = (before.Height() - after.Height()) * 111132.95;
  EXPECT_NEAR(lonShrink, 200, 2);
  EXPECT_NEAR(latShrink, 200, 2);

  // Growing an envelope taken as a polygon.
  const platform::Envelope box{10, 45, 10.01, 45.01, false};
  const platform::Geometry grown = BufferGeographic(box, wgs84, 50, errorFlag, errorText);
  EXPECT_FALSE(errorFlag);
  EXPECT_NEAR((grown.GetEnvelope().Height() - box.Height()) * 111132.95, 100, 1);

  const auto utm = platform::SpatialReference::FromEpsg(26910);
  const auto projected = platform::Geometry::FromWkt("POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0))", utm);
  const platform::Geometry none = BufferGeographic(projected, 5, errorFlag, errorText);
  EXPECT_TRUE(errorFlag);
  EXPECT_EQ(errorText, "Spatial Reference Not Geographic");
  EXPECT_TRUE(none.IsNull());
}

}  // namespace
}  // namespace tarnwick
