// Segment against edge and segment against rectangle tests.
#include <algorithm>
#include <cmath>

#include "support/geometric_operations.h"

namespace tarnwick {
namespace {

// Round half to even at 14 decimals, so that parameters that differ only by
// representation noise compare equal at the segment ends.
double Round14(double value) { return std::nearbyint(value * 1e14) / 1e14; }

bool BoxesOverlap(double a1x, double a1y, double a2x, double a2y, double b1x, double b1y, double b2x,
                  double b2y) {
  return std::min(a1x, a2x) <= std::max(b1x, b2x) && std::min(b1x, b2x) <= std::max(a1x, a2x) &&
         std::min(a1y, a2y) <= std::max(b1y, b2y) && std::min(b1y, b2y) <= std::max(a1y, a2y);
}

}  // namespace

bool CalcSegIntersectsEdge(double a1x, double a1y, double a2x, double a2y, double b1x, double b1y,
                           double b2x, double b2y, bool wantPoints, int& kind, double& x1, double& y1,
                           double& x2, double& y2) {
  kind = 0;
  if (!BoxesOverlap(a1x, a1y, a2x, a2y, b1x, b1y, b2x, b2y)) return false;

  const double d1x = a2x - a1x, d1y = a2y - a1y;
  const double d2x = b2x - b1x, d2y = b2y - b1y;
  const double ex = b1x - a1x, ey = b1y - a1y;
  const double den = d2y * d1x - d2x * d1y;
  const double n = ex * d1y - ey * d1x;

  if (den == 0) {
    if (n != 0) return false;  // parallel, apart
    // On one line. The far parameter is one more than the near one, not
    // derived from the edge's length; callers rely on that reach.
    const double t0 = Round14((ex * d1x + ey * d1y) / (d1x * d1x + d1y * d1y));
    const double t1 = Round14(1.0 + t0);
    const bool hit = t0 <= 1.0 && t1 >= 0.0;
    if (hit && wantPoints) {
      const double from = std::max(0.0, t0);
      const double to = std::min(1.0, t1);
      x1 = a1x + from * d1x;
      y1 = a1y + from * d1y;
      if (from == to) {
        kind = 1;  // they share one end only
      } else {
        kind = 3;
        x2 = a1x + to * d1x;
        y2 = a1y + to * d1y;
      }
    }
    return hit;
  }

  const double u = n / den;                       // along the edge
  const double t = (ex * d2y - d2x * ey) / den;  // along the segment
  if (t < 0 || t > 1 || u < 0 || u > 1) return false;
  if (wantPoints) {
    if (t == 0 || t == 1) {
      kind = 1;
      x1 = t == 0 ? a1x : a2x;
      y1 = t == 0 ? a1y : a2y;
    } else if (u == 0 || u == 1) {
      kind = 1;
      x1 = u == 0 ? b1x : b2x;
      y1 = u == 0 ? b1y : b2y;
    } else {
      kind = 2;
      x1 = a1x + t * d1x;
      y1 = a1y + t * d1y;
    }
  }
  return true;
}

bool SegmentIntersectsRectangle(double x1, double y1, double x2, double y2, double xMin, double xMax,
                                double yMin, double yMax, bool& inside) {
  inside = false;
  const double sxMin = std::min(x1, x2), sxMax = std::max(x1, x2);
  const double syMin = std::min(y1, y2), syMax = std::max(y1, y2);
  if (sxMin > xMax || xMin > sxMax || syMin > yMax || yMin > syMax) return false;

  int kind = 0;
  double px1 = 0, py1 = 0, px2 = 0, py2 = 0;
  // Left, top, right, bottom.
  const double sides[4][4] = {{xMin, yMin, xMin, yMax},
                              {xMin, yMax, xMax, yMax},
                              {xMax, yMax, xMax, yMin},
                              {xMax, yMin, xMin, yMin}};
  for (const auto& s : sides) {
    if (CalcSegIntersectsEdge(x1, y1, x2, y2, s[0], s[1], s[2], s[3], false, kind, px1, py1, px2, py2)) {
      return true;
    }
  }
  if (sxMin >= xMin && sxMax <= xMax && syMin >= yMin && syMax <= yMax) {
    inside = true;
    return true;
  }
  return false;
}

}  // namespace tarnwick
