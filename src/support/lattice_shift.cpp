#include "support/lattice_shift.h"

#include "errors/error_road.h"
#include "platform/geometry.h"
#include "platform/spatial_reference.h"
#include "support/geometric_operations.h"

namespace tarnwick {
namespace {

constexpr long kMaxSteps = 1000000;

struct Line {
  double ax, ay, bx, by;
  int Side(double px, double py) const { return PointRightLeftOfLine(px, py, ax, bx, ay, by); }
};

void Step(double& x, double& y, double distance, double azimuth) { CalcPointNumbers(x, y, distance, azimuth, x, y); }

}  // namespace

void ShiftPointBasedOnXYIncrements(double x, double y, double targetX, double targetY, double xSpacing,
                                   double ySpacing, double eastAzimuth, double northAzimuth, double westAzimuth,
                                   double southAzimuth, double& outX, double& outY,
                                   bool isGeographic, long& columns, long& rows) {
  Guarded("ShiftPointBasedOnXYIncrements", "MyGeometricOperations", [&] {
    platform::SpatialReference projection;
    platform::SpatialReference geographic;
    if (isGeographic) {
      // The points are read on the projection's own geographic system, not
      // the data's: only distances in metres around (x, y) matter here.
      projection = platform::SpatialReference::AzimuthalEquidistant(x, y);
      geographic = projection.GeographicCoordinateSystem();
      const platform::XY start = platform::Geometry::MakePoint(x, y, geographic).Project(projection).PointXY();
      const platform::XY target =
          platform::Geometry::MakePoint(targetX, targetY, geographic).Project(projection).PointXY();
      outX = start.x;
      outY = start.y;
      targetX = target.x;
      targetY = target.y;
    } else {
      outX = x;
      outY = y;
    }

    Line eastLine{targetX, targetY, 0, 0};
    CalcPointNumbers(targetX, targetY, xSpacing, eastAzimuth, eastLine.bx, eastLine.by);
    Line northLine{targetX, targetY, 0, 0};
    CalcPointNumbers(targetX, targetY, ySpacing, northAzimuth, northLine.bx, northLine.by);

    // Rows: across the east line.
    long steps = 0;
    int side = eastLine.Side(outX, outY);
    if (side == -1) {
      do {
        Step(outX, outY, ySpacing, northAzimuth);
        ++steps;
        side = eastLine.Side(outX, outY);
      } while (side == -1 && steps <= kMaxSteps);
      rows = steps;
    } else if (side == 1) {
      do {
        Step(outX, outY, ySpacing, southAzimuth);
        ++steps;
        side = eastLine.Side(outX, outY);
      } while (side == 1 && steps <= kMaxSteps);
      if (side == -1) {
        Step(outX, outY, ySpacing, northAzimuth);
        rows = 1 - steps;
      } else {
        rows = -steps;
      }
    } else {
      rows = 0;
    }

    // Columns: across the north line.
    steps = 0;
    side = northLine.Side(outX, outY);
    if (side == -1) {
      do {
        Step(outX, outY, xSpacing, westAzimuth);
        ++steps;
        side = northLine.Side(outX, outY);
      } while (side == -1 && steps <= kMaxSteps);
      columns = -steps;
    } else if (side == 1) {
      do {
        Step(outX, outY, xSpacing, eastAzimuth);
        ++steps;
        side = northLine.Side(outX, outY);
      } while (side == 1 && steps <= kMaxSteps);
      if (side == -1) {
        // The step back uses the Y spacing (see the header).
        Step(outX, outY, ySpacing, westAzimuth);
        columns = steps - 1;
      } else {
        columns = steps;
      }
    } else {
      columns = 0;
    }

    if (isGeographic) {
      const platform::XY back = platform::Geometry::MakePoint(outX, outY, projection).Project(geographic).PointXY();
      outX = back.x;
      outY = back.y;
    }
  });
}

}  // namespace tarnwick
