#pragma once
// Areas on the sphere whose radius is the spheroid's geometric mean radius
// (a² b)^(1/3), for polygons on a geographic coordinate system.
#include "platform/geometry.h"

namespace tarnwick {

// Signed area, in square metres when the axes are metres, of the spherical
// triangle p1, p2, p3 (x longitude, y latitude, degrees). sign is +1 when
// p3 lies clockwise of p2 as seen from p1 (the triangle runs clockwise), -1
// otherwise, 0 for a degenerate triangle (two points coinciding, or two on a
// pole), whose area is 0.
double SphericalTriangleArea2(const platform::XY& p1, const platform::XY& p2, const platform::XY& p3, int& sign,
                              double semiMajor, double semiMinor);

// Signed area of a geographic polygon: for each part, the triangles from
// each segment to the part's centroid. Exterior rings count positive and
// holes negative. With wantCentroid the area-weighted centroid on the sphere
// is written to centroidX, centroidY (longitude, latitude); when the area is
// not positive both are -9999.
double SphericalPolygonArea2(const platform::Geometry& polygon, bool wantCentroid, double& centroidX,
                             double& centroidY, double semiMajor, double semiMinor);

}  // namespace tarnwick
