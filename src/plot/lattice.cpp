#include "plot/lattice.h"

#include <cmath>
#include <string>

#include "platform/errors.h"
#include "plot/plot_module.h"
#include "presentation/error_handling.h"
#include "support/geometric_operations.h"
#include "support/spheroid_operations.h"

namespace tarnwick {

namespace {

// No legitimate walk over an envelope takes this many steps; a walk that
// does has met a spacing or a coordinate it cannot leave the envelope with.
constexpr long kMaxWalkSteps = 50'000'000;

// One lattice step of distance along azimuth, written back to (x, y).
inline void Step(const LatticeFrame& frame, double& x, double& y, double distance, double azimuth) {
  double nextX = x;
  double nextY = y;
  if (frame.isGeographic) {
    double backAzimuth = 0;
    PointLineVincentyPerPoint2_by_Numbers(x, y, distance, azimuth, nextX, nextY, backAzimuth, frame.semiMajor,
                                          frame.semiMinor);
  } else {
    CalcPointNumbers(x, y, distance, azimuth, nextX, nextY);
  }
  x = nextX;
  y = nextY;
}

void CountStep(long& steps, const char* walk) {
  if (++steps > kMaxWalkSteps) {
    RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule),
               std::string("The lattice walk ") + walk + " did not leave the stand's envelope after " +
                   std::to_string(kMaxWalkSteps) + " steps");
  }
}

void CheckSpacing(double spacing, const char* axis) {
  if (!std::isfinite(spacing) || spacing <= 0) {
    RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule),
               std::string("The ") + axis + " spacing of the lattice is " + std::to_string(spacing) +
                   "; a spacing must be a number greater than 0");
  }
}

}  // namespace

bool FillEastWestLineData(const LatticeFrame& frame, double x, double y, double spacing) {
  return Guarded("FillEastWestLineData", kPlotModule, [&] {
    double secondX = x;
    double secondY = y;
    Step(frame, secondX, secondY, spacing, frame.directions.east);
    // Where the row line meets the envelope's left and right sides. The east
    // azimuth never runs north-south, so both meetings exist.
    double leftX = 0, leftY = 0, rightX = 0, rightY = 0;
    int code = 0;
    CalcInfiniteLineIntersect(x, y, secondX, secondY, frame.xMin, frame.yMin, frame.xMin, frame.yMax, code, leftX,
                              leftY);
    CalcInfiniteLineIntersect(x, y, secondX, secondY, frame.xMax, frame.yMin, frame.xMax, frame.yMax, code, rightX,
                              rightY);
    bool inside = false;
    return SegmentIntersectsRectangle(leftX, leftY, rightX, rightY, frame.xMin, frame.xMax, frame.yMin, frame.yMax,
                                      inside);
  });
}

void ReturnTestPointCollection2(platform::XY origin, const platform::PreparedPolygon& polygon, double xSpacing,
                                double ySpacing, const LatticeFrame& frame, std::vector<platform::XY>& points) {
  Guarded("ReturnTestPointCollection2", kPlotModule, [&] {
    CheckSpacing(xSpacing, "X");
    CheckSpacing(ySpacing, "Y");
    points.clear();
    const LatticeDirections& d = frame.directions;
    double x = origin.x;
    double y = origin.y;

    // The centre line: through the envelope's centre along the row direction,
    // always as a plane step (only its direction matters).
    const double midX = (frame.xMax - frame.xMin) / 2 + frame.xMin;
    const double midY = (frame.yMax - frame.yMin) / 2 + frame.yMin;
    double centreX2 = midX;
    double centreY2 = midY;
    CalcPointNumbers(midX, midY, xSpacing, d.east, centreX2, centreY2);
    auto side = [&] { return PointRightLeftOfLine(x, y, midX, centreX2, midY, centreY2); };

    // North of the centre line, then north until the row misses the envelope.
    long steps = 0;
    while (side() != 1) {
      CountStep(steps, "north of the centre line");
      Step(frame, x, y, ySpacing, d.north);
    }
    bool crossing = FillEastWestLineData(frame, x, y, ySpacing);
    steps = 0;
    while (crossing) {
      CountStep(steps, "north of the envelope");
      Step(frame, x, y, ySpacing, d.north);
      crossing = FillEastWestLineData(frame, x, y, ySpacing);
    }

    // Sweep south row by row until a row south of the centre line misses the
    // envelope. Each row is walked west past the envelope, then east past it.
    bool passedCentre = false;
    long rows = 0;
    while (!(passedCentre && !crossing)) {
      CountStep(rows, "south over the envelope");
      const bool newPassedCentre = side() == -1;
      crossing = FillEastWestLineData(frame, x, y, ySpacing);
      steps = 0;
      while (x >= frame.xMin) {
        CountStep(steps, "west along a row");
        Step(frame, x, y, xSpacing, d.west);
      }
      steps = 0;
      while (x <= frame.xMax) {
        CountStep(steps, "east along a row");
        Step(frame, x, y, xSpacing, d.east);
        if (PointInExtent(x, y, frame.xMin, frame.yMin, frame.xMax, frame.yMax)) points.push_back({x, y});
      }
      if (points.size() > frame.pointLimit) {
        RaiseError(platform::kErrOverflow, std::string(kPlotModule),
                   "The lattice over the stand's envelope has more than " + std::to_string(frame.pointLimit) +
                       " points; the spacing is far too small for the stand");
      }
      Step(frame, x, y, ySpacing, d.south);
      passedCentre = newPassedCentre;
    }

    // The one exact in-polygon test, keeping the order of adding.
    polygon.KeepCovered(points);
  });
}

}  // namespace tarnwick
