#pragma once
// Angle and plane arithmetic on plain numbers. These routines sit in the
// inner loops of the plot lattice: they take doubles, write results through
// references, allocate nothing and touch no platform object.
//
// Angles are degrees unless a name says radians. Azimuths are compass
// azimuths: 0 north, clockwise. Pi is the fifteen-digit kPi throughout.
#include <cmath>

#include "support/constants.h"

namespace tarnwick {

inline double DegToRad(double degrees) { return degrees * kPi / 180.0; }
inline double RadToDeg(double radians) { return radians * 180.0 / kPi; }
// Like DegToRad with the other order of rounding; the plane step uses it.
inline double AsRadians(double degrees) { return degrees / 180.0 * kPi; }

// Quadrant-aware arctangent of y / x, in radians, with (0, 0) giving 0.
// Hides std::atan2 inside this namespace on purpose: the system's angles go
// through this one.
double atan2(double y, double x);

// a - floor(a / b) * b: the remainder with the sign of b.
inline double ModDouble(double a, double b) { return a - std::floor(a / b) * b; }
inline double MinDouble(double a, double b) { return a < b ? a : b; }
inline double MaxDouble(double a, double b) { return a > b ? a : b; }
inline long MaxLong(long a, long b) { return a > b ? a : b; }

// Brings an azimuth into 0 up to but not including 360. A value that is no
// finite number becomes 0 (callers refuse such values before they get here).
void ForceAzimuthToCorrectRange(double& azimuth);

// Decimal degrees to degrees and minutes truncated toward zero and seconds
// as a real number. Minutes and seconds are never negative; degrees keep the
// sign, so a value between 0 and -1 loses it.
void ConvertDDtoDMS(double decimalDegrees, long& degrees, long& minutes, double& seconds);

// One step of `distance` along `azimuth` on a plane. Exact axes (0, 90, 180,
// 270, 360 as passed) move along one coordinate only, without rounding.
void CalcPointNumbers(double x, double y, double distance, double azimuth, double& outX, double& outY);

// Side of point p against the line from a to b: 1 left, -1 right, 0 on it.
// Note the argument order: both X of the line, then both Y.
inline int PointRightLeftOfLine(double px, double py, double ax, double bx, double ay, double by) {
  const double c = (bx - ax) * (py - ay) - (px - ax) * (by - ay);
  return c > 0 ? 1 : (c < 0 ? -1 : 0);
}

// Meeting point of the infinite lines a-b and c-d. code 1: they meet at
// (x, y); 2: the same line; 0: parallel. For 0 and 2, x and y are untouched.
void CalcInfiniteLineIntersect(double ax, double ay, double bx, double by, double cx, double cy, double dx,
                               double dy, int& code, double& x, double& y);

// Whether segment a (a1-a2) meets edge b (b1-b2), ends included. With
// wantPoints, kind says how: 1 one shared end point (x1, y1), 2 a crossing
// (x1, y1), 3 a collinear overlap from (x1, y1) to (x2, y2); 0 no meeting.
bool CalcSegIntersectsEdge(double a1x, double a1y, double a2x, double a2y, double b1x, double b1y,
                           double b2x, double b2y, bool wantPoints, int& kind, double& x1, double& y1,
                           double& x2, double& y2);

// Whether the segment touches or lies in the rectangle; `inside` is set when
// it lies wholly within it without meeting a side.
bool SegmentIntersectsRectangle(double x1, double y1, double x2, double y2, double xMin, double xMax,
                                double yMin, double yMax, bool& inside);

}  // namespace tarnwick
