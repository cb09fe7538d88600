// Angle and plane arithmetic: the exact-axis behaviour, the quadrant table,
// the argument order of the side test, and the segment tests.
#include <gtest/gtest.h>

#include <cmath>

#include "support/geometric_operations.h"

namespace tarnwick {
namespace {

TEST(PlaneOperations, AzimuthRangeWrapsWholeTurnsAndKeepsFractions) {
  const struct { double in, out; } cases[] = {{-720, 0}, {725, 5}, {359.9, 359.9}, {360, 0}, {-90, 270}, {0, 0}};
  for (const auto& c : cases) {
    double azimuth = c.in;
    ForceAzimuthToCorrectRange(azimuth);
    EXPECT_DOUBLE_EQ(azimuth, c.out) << c.in;
  }
  // A tiny negative value must not come out as 360.
  double tiny = -1e-15;
  ForceAzimuthToCorrectRange(tiny);
  EXPECT_LT(tiny, 360.0);
  EXPECT_GE(tiny, 0.0);
}

TEST(PlaneOperations, Atan2UsesTheSystemPiAndGivesZeroAtTheOrigin) {
  EXPECT_EQ(tarnwick::atan2(0, -1), kPi);
  EXPECT_EQ(tarnwick::atan2(0, 0), 0.0);
  EXPECT_EQ(tarnwick::atan2(1, 0), kPi / 2);
  EXPECT_EQ(tarnwick::atan2(-3, 0), -kPi / 2);
  EXPECT_DOUBLE_EQ(tarnwick::atan2(1, 1), std::atan(1.0));
  EXPECT_DOUBLE_EQ(tarnwick::atan2(1, -1), kPi - std::atan(1.0));
  EXPECT_DOUBLE_EQ(tarnwick::atan2(-1, -1), -(kPi - std::atan(1.0)));
  // Degrees round trip through the fifteen-digit pi.
  EXPECT_DOUBLE_EQ(DegToRad(180), kPi);
  EXPECT_DOUBLE_EQ(RadToDeg(kPi), 180);
  EXPECT_DOUBLE_EQ(AsRadians(90), kPi / 2);
  EXPECT_DOUBLE_EQ(ModDouble(-30, 360), 330);
  EXPECT_DOUBLE_EQ(ModDouble(725, 360), 5);
}

TEST(PlaneOperations, PlaneStepIsExactOnTheAxesAndFollowsTheQuadrants) {
  const double h = 10 * std::sqrt(0.5);
  const struct { double azimuth, dx, dy; } cases[] = {
      {0, 0, 10},   {90, 10, 0},  {180, 0, -10}, {270, -10, 0}, {360, 0, 10}, {45, h, h},
      {135, h, -h}, {225, -h, -h}, {315, -h, h},  {450, 10, 0},  {-90, -10, 0}, {30, 5, 10 * std::sqrt(0.75)}};
  for (const auto& c : cases) {
    double x = 0, y = 0;
    CalcPointNumbers(100, 200, 10, c.azimuth, x, y);
    EXPECT_NEAR(x, 100 + c.dx, 1e-9) << c.azimuth;
    EXPECT_NEAR(y, 200 + c.dy, 1e-9) << c.azimuth;
  }
  // The axes carry no rounding at all.
  double x = 0, y = 0;
  CalcPointNumbers(0.1, 0.2, 0.3, 90, x, y);
  EXPECT_EQ(x, 0.1 + 0.3);
  EXPECT_EQ(y, 0.2);
  CalcPointNumbers(0.1, 0.2, 0.3, 180, x, y);
  EXPECT_EQ(x, 0.1);
  EXPECT_EQ(y, 0.2 - 0.3);
}

TEST(PlaneOperations, SideOfLineTakesBothXThenBothY) {
  // Line running east along y = 0.
  EXPECT_EQ(PointRightLeftOfLine(5, 1, 0, 10, 0, 0), 1);
  EXPECT_EQ(PointRightLeftOfLine(5, -1, 0, 10, 0, 0), -1);
  EXPECT_EQ(PointRightLeftOfLine(20, 0, 0, 10, 0, 0), 0);
  // Diagonal (0,0)-(10,10): read in the wrong order it would be a point.
  EXPECT_EQ(PointRightLeftOfLine(0, 5, 0, 10, 0, 10), 1);
  EXPECT_EQ(PointRightLeftOfLine(5, 0, 0, 10, 0, 10), -1);
}

TEST(PlaneOperations, DegreesMinutesSecondsTruncateTowardZero) {
  long d = 0, m = 0;
  double s = 0;
  ConvertDDtoDMS(45.504198, d, m, s);
  EXPECT_EQ(d, 45);
  EXPECT_EQ(m, 30);
  EXPECT_NEAR(s, 15.1128, 1e-6);
  ConvertDDtoDMS(-122.25, d, m, s);
  EXPECT_EQ(d, -122);
  EXPECT_EQ(m, 15);
  EXPECT_NEAR(s, 0, 1e-9);
  ConvertDDtoDMS(-0.5, d, m, s);  // the sign is lost between 0 and -1
  EXPECT_EQ(d, 0);
  EXPECT_EQ(m, 30);
  EXPECT_NEAR(s, 0, 1e-9);
}

TEST(PlaneOperations, InfiniteLinesMeetOrReportParallelAndSameLine) {
  int code = -1;
  double x = -7, y = -7;
  CalcInfiniteLineIntersect(0, 0, 2, 2, 0, 2, 2, 0, code, x, y);
  EXPECT_EQ(code, 1);
  EXPECT_DOUBLE_EQ(x, 1);
  EXPECT_DOUBLE_EQ(y, 1);
  // Beyond the segments: the lines are infinite.
  CalcInfiniteLineIntersect(0, 0, 1, 0, 5, 1, 5, 2, code, x, y);
  EXPECT_EQ(code, 1);
  EXPECT_DOUBLE_EQ(x, 5);
  EXPECT_DOUBLE_EQ(y, 0);
  x = y = -7;
  CalcInfiniteLineIntersect(0, 0, 1, 0, 0, 1, 1, 1, code, x, y);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(x, -7);
  CalcInfiniteLineIntersect(0, 0, 1, 1, 2, 2, 3, 3, code, x, y);
  EXPECT_EQ(code, 2);
  EXPECT_EQ(y, -7);
}

TEST(PlaneOperations, SegmentAgainstEdgeKinds) {
  int kind = -1;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  EXPECT_TRUE(CalcSegIntersectsEdge(0, 0, 2, 2, 0, 2, 2, 0, true, kind, x1, y1, x2, y2));
  EXPECT_EQ(kind, 2);
  EXPECT_DOUBLE_EQ(x1, 1);
  EXPECT_DOUBLE_EQ(y1, 1);
  // Touching at an end counts, as kind 1.
  EXPECT_TRUE(CalcSegIntersectsEdge(0, 0, 2, 0, 2, 0, 2, 5, true, kind, x1, y1, x2, y2));
  EXPECT_EQ(kind, 1);
  EXPECT_DOUBLE_EQ(x1, 2);
  // Collinear overlap.
  EXPECT_TRUE(CalcSegIntersectsEdge(0, 0, 4, 0, 2, 0, 6, 0, true, kind, x1, y1, x2, y2));
  EXPECT_EQ(kind, 3);
  EXPECT_DOUBLE_EQ(x1, 2);
  EXPECT_DOUBLE_EQ(x2, 4);
  // The far parameter is one more than the near one, whatever the edge's
  // direction: an edge running back from beyond the segment is not counted.
  EXPECT_FALSE(CalcSegIntersectsEdge(0, 0, 4, 0, 6, 0, 2, 0, false, kind, x1, y1, x2, y2));
  // Parallel apart, and crossing lines whose segments fall short.
  EXPECT_FALSE(CalcSegIntersectsEdge(0, 0, 4, 0, 0, 0.5, 4, 0.5, true, kind, x1, y1, x2, y2));
  EXPECT_EQ(kind, 0);
  EXPECT_FALSE(CalcSegIntersectsEdge(0, 0, 1, 1, 0, 3, 3, 0, true, kind, x1, y1, x2, y2));
  EXPECT_EQ(kind, 0);
}

TEST(PlaneOperations, SegmentAgainstRectangle) {
  bool inside = true;
  // On the top side.
  EXPECT_TRUE(SegmentIntersectsRectangle(2, 10, 8, 10, 0, 10, 0, 10, inside));
  EXPECT_FALSE(inside);
  // Crossing the left side.
  EXPECT_TRUE(SegmentIntersectsRectangle(-5, 5, 5, 5, 0, 10, 0, 10, inside));
  EXPECT_FALSE(inside);
  // Wholly inside.
  EXPECT_TRUE(SegmentIntersectsRectangle(2, 2, 8, 8, 0, 10, 0, 10, inside));
  EXPECT_TRUE(inside);
  // Touching a corner from outside.
  EXPECT_TRUE(SegmentIntersectsRectangle(10, 10, 12, 12, 0, 10, 0, 10, inside));
  // Clear of the box, and inside the box but passing outside the corner.
  EXPECT_FALSE(SegmentIntersectsRectangle(11, 0, 12, 10, 0, 10, 0, 10, inside));
  EXPECT_FALSE(SegmentIntersectsRectangle(9, 11.5, 11.5, 9, 0, 10, 0, 10, inside));
  EXPECT_FALSE(inside);
}

}  // namespace
}  // namespace tarnwick
