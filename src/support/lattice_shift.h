#pragma once
// Walks a point along a rotated lattice to the cell of a target point.

namespace tarnwick {

// Moves (x, y) by whole steps of the spacings along the lattice's azimuths
// into the lattice cell next to (targetX, targetY): on or just north of the
// line through the target along the east azimuth, and on or just west of the
// line through it along the north azimuth. columns and rows count the net
// steps (east and north positive). On a
// geographic system the walk runs in metres on an azimuthal equidistant
// projection centred on (x, y) and the result is brought back to degrees.
//
// Two long-standing traits are kept: stepping back after overshooting the
// north line uses the Y spacing, so a lattice with an X:Y ratio other than
// 1:1 lands off the anchor's columns by the difference of the spacings; and
// each walk stops after a million steps.
void ShiftPointBasedOnXYIncrements(double x, double y, double targetX, double targetY, double xSpacing,
                                   double ySpacing, double eastAzimuth, double northAzimuth, double westAzimuth,
                                   double southAzimuth, double& outX, double& outY,
                                   bool isGeographic, long& columns, long& rows);

}  // namespace tarnwick
