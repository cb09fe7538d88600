#include "support/geometric_operations.h"

#include <cmath>

namespace tarnwick {

double atan2(double y, double x) {
  const double signY = y > 0 ? 1.0 : (y < 0 ? -1.0 : 0.0);
  if (x > 0) return std::atan(y / x);
  if (x == 0) return y == 0 ? 0.0 : signY * kPi / 2.0;
  if (y == 0) return kPi;
  return (kPi - std::atan(std::fabs(y / x))) * signY;
}

void ForceAzimuthToCorrectRange(double& azimuth) {
  // Turns are taken off one at a time, as the host did; a value so large
  // that a turn no longer changes it (or infinity, or NaN) would never
  // come into range that way, so it is reduced in one step first.
  constexpr double kStepwiseLimit = 360.0 * 1048576;
  if (!std::isfinite(azimuth)) {
    azimuth = 0.0;
    return;
  }
  if (std::fabs(azimuth) > kStepwiseLimit) azimuth = std::fmod(azimuth, 360.0);
  while (azimuth < 0) azimuth += 360.0;
  while (azimuth >= 360.0) azimuth -= 360.0;
  // Adding 360 to a tiny negative value can round to exactly 360.
  if (azimuth == 360.0) azimuth = 0.0;
}

void ConvertDDtoDMS(double decimalDegrees, long& degrees, long& minutes, double& seconds) {
  degrees = static_cast<long>(std::trunc(decimalDegrees));
  const double m = std::fabs(decimalDegrees - static_cast<double>(degrees)) * 60.0;
  minutes = static_cast<long>(std::trunc(m));
  seconds = std::fabs(m - static_cast<double>(minutes)) * 60.0;
}

void CalcPointNumbers(double x, double y, double distance, double azimuth, double& outX, double& outY) {
  const double m = ModDouble(azimuth, 360.0);
  double dX = 0;
  double dY = 0;
  // The exact tests look at the azimuth as passed, so 450 still goes through
  // the quadrant table below.
  if (azimuth == 360.0 || m == 0.0) {
    dY = distance;
  } else if (azimuth == 180.0) {
    dY = -distance;
  } else if (azimuth == 90.0) {
    dX = distance;
  } else if (azimuth == 270.0) {
    dX = -distance;
  } else if (m < 90.0) {
    dY = std::cos(AsRadians(m)) * distance;
    dX = std::sin(AsRadians(m)) * distance;
  } else if (m < 180.0) {
    dY = -std::sin(AsRadians(m - 90.0)) * distance;
    dX = std::cos(AsRadians(m - 90.0)) * distance;
  } else if (m < 270.0) {
    dY = -std::cos(AsRadians(m - 180.0)) * distance;
    dX = -std::sin(AsRadians(m - 180.0)) * distance;
  } else {
    dY = std::sin(AsRadians(m - 270.0)) * distance;
    dX = -std::cos(AsRadians(m - 270.0)) * distance;
  }
  outX = x + dX;
  outY = y + dY;
}

void CalcInfiniteLineIntersect(double ax, double ay, double bx, double by, double cx, double cy, double dx,
                               double dy, int& code, double& x, double& y) {
  const double d1x = bx - ax, d1y = by - ay;
  const double d2x = dx - cx, d2y = dy - cy;
  const double ex = cx - ax, ey = cy - ay;
  const double den = d1x * d2y - d1y * d2x;
  if (den != 0) {
    code = 1;
    const double t = (ex * d2y - ey * d2x) / den;
    x = ax + t * d1x;
    y = ay + t * d1y;
    return;
  }
  code = (d1y * ex - d1x * ey == 0) ? 2 : 0;
}

}  // namespace tarnwick
