// Angle and plane arithmetic: the exact-axis behaviour, the quadrant table,
// the argument order of the side test, and the segment tests.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/geometric_operations.h"

namespace tarnwick {
namespace {

TEST(PlaneOperations, AzimuthsWrapAndAtan2UsesTheSystemPi) {
  const struct { double in, out; } cases[] = {{-720, 0}, {725, 5}, {359.9, 359.9}, {360, 0}, {-90, 270}, {0, 0}};
  for (const auto& c : cases) {
    double azimuth = c.in;
    ForceAzimuthToCorrectRange(azimuth);
    EXPECT_DOUBLE_EQ(azimuth, c.out) << c.in;
  }
  // A tiny negative value must not come out as 360.
  double tiny = -1e-15;
  ForceAzimuthToCorrectRange(tiny);
  EXPECT_TRUE(tiny >= 0 && tiny < 360.0) << tiny;

  EXPECT_EQ(tarnwick::atan2(0, -1), kPi);
  EXPECT_EQ(tarnwick::atan2(0, 0), 0.0);
  EXPECT_EQ(tarnwick::atan2(-3, 0), -kPi / 2);
  EXPECT_DOUBLE_EQ(tarnwick::atan2(-1, -1), -(kPi - std::atan(1.0)));
}

TEST(PlaneOperations, PlaneStepIsExactOnTheAxesAndFollowsTheQuadrants) {
  const double h = 10 * std::sqrt(0.5);
  const struct { double azimuth, dx, dy; } cases[] = {
      {0, 0, 10},   {90, 10, 0},  {180, 0, -10}, {270, -10, 0}, {360, 0, 10}, {45, h, h},
      {135, h, -h}, {225, -h, -h}, {315, -h, h},  {450, 10, 0},  {-90, -10, 0}, {30, 5, 10 * std::sqrt(0.75)}};
  double x = 0, y = 0;
  for (const auto& c : cases) {
    CalcPointNumbers(100, 200, 10, c.azimuth, x, y);
    EXPECT_NEAR(x, 100 + c.dx, 1e-9) << c.azimuth;
    EXPECT_NEAR(y, 200 + c.dy, 1e-9) << c.azimuth;
  }
  // The axes carry no rounding at all.
  CalcPointNumbers(0.1, 0.2, 0.3, 90, x, y);
  EXPECT_TRUE(x == 0.1 + 0.3 && y == 0.2);
  CalcPointNumbers(0.1, 0.2, 0.3, 180, x, y);
  EXPECT_TRUE(x == 0.1 && y == 0.2 - 0.3);
}

TEST(PlaneOperations, SideOfLineTakesBothXThenBothYAndDmsTruncates) {
  // Line running east along y = 0, then the diagonal (0,0)-(10,10), which
  // read in the wrong order would be a point.
  EXPECT_EQ(PointRightLeftOfLine(5, 1, 0, 10, 0, 0), 1);
  EXPECT_EQ(PointRightLeftOfLine(5, -1, 0, 10, 0, 0), -1);
  EXPECT_EQ(PointRightLeftOfLine(20, 0, 0, 10, 0, 0), 0);
  EXPECT_EQ(PointRightLeftOfLine(0, 5, 0, 10, 0, 10), 1);
  EXPECT_EQ(PointRightLeftOfLine(5, 0, 0, 10, 0, 10), -1);

  // Degrees, minutes, seconds truncate toward zero; the sign is lost between 0 and -1.
  const struct { double in; long d, m; double s; } dms[] = {
      {45.504198, 45, 30, 15.1128}, {-122.25, -122, 15, 0}, {-0.5, 0, 30, 0}};
  for (const auto& c : dms) {
    long d = 0, m = 0;
    double s = 0;
    ConvertDDtoDMS(c.in, d, m, s);
    EXPECT_EQ(d, c.d) << c.in;
    EXPECT_EQ(m, c.m) << c.in;
    EXPECT_NEAR(s, c.s, 1e-6) << c.in;
  }
}

TEST(PlaneOperations, InfiniteLinesMeetOrReportParallelAndSameLine) {
  int code = -1;
  double x = -7, y = -7;
  CalcInfiniteLineIntersect(0, 0, 2, 2, 0, 2, 2, 0, code, x, y);
  EXPECT_TRUE(code == 1 && x == 1 && y == 1) << code << " " << x << "," << y;
  // Beyond the segments: the lines are infinite.
  CalcInfiniteLineIntersect(0, 0, 1, 0, 5, 1, 5, 2, code, x, y);
  EXPECT_TRUE(code == 1 && x == 5 && y == 0) << code << " " << x << "," << y;
  // Parallel (0) and the same line (2) leave the point alone.
  x = y = -7;
  CalcInfiniteLineIntersect(0, 0, 1, 0, 0, 1, 1, 1, code, x, y);
  EXPECT_EQ(code, 0);
  CalcInfiniteLineIntersect(0, 0, 1, 1, 2, 2, 3, 3, code, x, y);
  EXPECT_TRUE(code == 2 && x == -7 && y == -7) << code << " " << x << "," << y;
}

TEST(PlaneOperations, SegmentAgainstEdgeAndRectangle) {
  // Crossing at (1, 1) is kind 2, touching at an end kind 1, a collinear
  // overlap (from 2 to 4) kind 3; parallel segments apart, and crossing lines
  // whose segments fall short, miss.
  const struct { double a[4], b[4]; int kind; double x1, y1, x2; } edges[] = {
      {{0, 0, 2, 2}, {0, 2, 2, 0}, 2, 1, 1, 0},   {{0, 0, 2, 0}, {2, 0, 2, 5}, 1, 2, 0, 0},
      {{0, 0, 4, 0}, {2, 0, 6, 0}, 3, 2, 0, 4},   {{0, 0, 4, 0}, {0, 0.5, 4, 0.5}, 0, 0, 0, 0},
      {{0, 0, 1, 1}, {0, 3, 3, 0}, 0, 0, 0, 0}};
  for (const auto& c : edges) {
    int kind = -1;
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    EXPECT_EQ(CalcSegIntersectsEdge(c.a[0], c.a[1], c.a[2], c.a[3], c.b[0], c.b[1], c.b[2], c.b[3], true, kind, x1,
                                    y1, x2, y2),
              c.kind != 0);
    EXPECT_EQ((std::vector<double>{double(kind), x1, y1, c.kind == 3 ? x2 : 0}),
              (std::vector<double>{double(c.kind), c.x1, c.y1, c.x2}));
  }
  // The far parameter is one more than the near one, whatever the edge's
  // direction: an edge running back from beyond the segment is not counted.
  int kind = -1;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  EXPECT_FALSE(CalcSegIntersectsEdge(0, 0, 4, 0, 6, 0, 2, 0, false, kind, x1, y1, x2, y2));

  // Against the box 0..10: on the top side, crossing the left side, wholly
  // inside, touching a corner from outside; clear of the box, and passing
  // outside the corner.
  const struct { double x1, y1, x2, y2; bool hit, inside; } segments[] = {
      {2, 10, 8, 10, true, false},   {-5, 5, 5, 5, true, false},   {2, 2, 8, 8, true, true},
      {10, 10, 12, 12, true, false}, {11, 0, 12, 10, false, false}, {9, 11.5, 11.5, 9, false, false}};
  for (const auto& c : segments) {
    bool inside = !c.inside;
    EXPECT_EQ(SegmentIntersectsRectangle(c.x1, c.y1, c.x2, c.y2, 0, 10, 0, 10, inside), c.hit) << c.x1 << "," << c.y1;
    if (c.hit || c.y1 == 11.5) { EXPECT_EQ(inside, c.inside) << c.x1 << "," << c.y1; }
  }
}

}  // namespace
}  // namespace tarnwick
