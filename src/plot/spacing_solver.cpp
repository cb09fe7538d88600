#include "plot/spacing_solver.h"

#include <cmath>
#include <string>

#include "platform/errors.h"
#include "plot/plot_module.h"
#include "presentation/error_handling.h"
#include "support/spherical_area.h"

namespace tarnwick {

namespace {
constexpr int kPasses = 10;
constexpr long kTrialsPerPass = 300;  // tested before each trial: 301 trials at most
}  // namespace

SpacingPair FillInitialSpacing(const platform::Geometry& polygon, double xRatio, double yRatio, long target) {
  return Guarded("FillInitialSpacing", kPlotModule, [&] {
    const platform::SpatialReference& reference = polygon.SpatialRef();
    double area = 0;
    if (reference.IsGeographic()) {
      double centroidX = 0;
      double centroidY = 0;
      area = SphericalPolygonArea2(polygon, false, centroidX, centroidY, reference.SemiMajorAxis(),
                                   reference.SemiMinorAxis());
    } else {
      area = polygon.Area();
    }
    const double cells = area / (xRatio * yRatio);
    const double perCell = cells / static_cast<double>(target);
    if (perCell < 0) {
      RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule),
                 "Invalid procedure call or argument: no spacing gives " + std::to_string(target) +
                     " plots (the square root of " + std::to_string(perCell) + ")");
    }
    const double s = std::sqrt(perCell);
    return SpacingPair{s * xRatio, s * yRatio};
  });
}

void SearchSpacingForCount(const StandGrid& grid, platform::XY origin, double& orientation, long target,
                           double xRatio, double yRatio, long& iterations, std::vector<platform::XY>& points) {
  auto test = [&](platform::XY from, double x, double y) {
    ReturnTestPointCollection2(from, grid.prepared, x, y, grid.frame, points);
    return static_cast<long>(points.size());
  };

  bool found = false;
  const SpacingPair start = FillInitialSpacing(grid.polygon, xRatio, yRatio, target);
  double lowX = start.x, lowY = start.y;
  double highX = 0, highY = 0;
  double x = start.x, y = start.y;
  long count = 0;
  int pass = 0;

  while (!found && pass < kPasses) {
    x = (1 - pass / 20.0) * start.x;
    y = (1 - pass / 20.0) * start.y;
    iterations = 0;
    ++pass;

    // Shrink until too many plots (or the hit); each trial with its own origin.
    while (iterations <= kTrialsPerPass) {
      const platform::XY shifted = ReturnOriginPoint2(grid.originContext, grid.stand, grid.spacing, orientation,
                                                      grid.units, x, y, grid.standId);
      ++iterations;
      count = test(shifted, x, y);
      if (count == target) {
        found = true;
        break;
      }
      if (count > target) break;
      highX = x, highY = y;
      x *= 0.9, y *= 0.9;
      lowX = x, lowY = y;
    }

    // Grow until too few, from the caller's origin.
    if (!found) {
      x *= 1.1, y *= 1.1;
      highX = x, highY = y;
      while (iterations <= kTrialsPerPass) {
        ++iterations;
        count = test(origin, x, y);
        if (count == target) {
          found = true;
          break;
        }
        if (count < target) break;
        lowX = x, lowY = y;
        x *= 1.1, y *= 1.1;
        highX = x, highY = y;
      }
    }

    // Halve the bracket.
    while (iterations <= kTrialsPerPass && !found) {
      ++iterations;
      if (count == target) {
        found = true;
        break;
      }
      x = (highX - lowX) / 2 + lowX;
      y = (highY - lowY) / 2 + lowY;
      count = test(origin, x, y);
      if (count > target) {
        lowX = x, lowY = y;
      } else if (count < target) {
        highX = x, highY = y;
      }
    }
  }
}

}  // namespace tarnwick
