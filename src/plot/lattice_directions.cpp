#include "plot/lattice_directions.h"

#include "support/geometric_operations.h"

namespace tarnwick {

LatticeDirections ReturnLatticeDirections(double& orientation) {
  ForceAzimuthToCorrectRange(orientation);
  const double a = orientation;
  LatticeDirections d;
  // Each class includes its upper bound and excludes its lower one, which
  // keeps the east azimuth in (45, 135]: a row is never parallel to the
  // vertical sides of an envelope.
  if (a <= 45 || a > 315) {
    d = {a + 90, a, a - 90, a + 180};
  } else if (a <= 135) {
    d = {a, a - 90, a + 180, a + 90};
  } else if (a <= 225) {
    d = {a - 90, a + 180, a + 90, a};
  } else {
    d = {a + 180, a + 90, a, a - 90};
  }
  ForceAzimuthToCorrectRange(d.east);
  ForceAzimuthToCorrectRange(d.north);
  ForceAzimuthToCorrectRange(d.west);
  ForceAzimuthToCorrectRange(d.south);
  return d;
}

}  // namespace tarnwick
