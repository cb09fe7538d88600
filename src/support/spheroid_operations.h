#pragma once
// Steps and distances on the spheroid and the sphere, on plain numbers.
// Longitudes and latitudes in degrees.

namespace tarnwick {

// One Vincenty direct step of `distance` metres along `azimuth` on the
// spheroid (semiMajor, semiMinor). backAzimuth receives the azimuth of travel
// at the arrival point, in 0 up to 360. Distance 0 returns the start point
// and hands the azimuth on unchanged.
void PointLineVincentyPerPoint2_by_Numbers(double longitude, double latitude, double distance, double azimuth,
                                           double& outLongitude, double& outLatitude, double& backAzimuth,
                                           double semiMajor, double semiMinor);

// Great-circle distance on a sphere of the given radius. With wantBearing the
// initial bearing is written to `bearing` in degrees, 360 higher than the
// usual value (a long-standing quirk: only the distance is ever used).
double DistanceHaversineNumbers(double latitude1, double longitude1, double latitude2, double longitude2,
                                double radius, bool wantBearing, double& bearing);

// A point on a sphere of `radius` in 3-D cartesian coordinates and back.
void SphericalLatLongToCart(double longitude, double latitude, double& x, double& y, double& z, double radius);
void SphericalCartToLatLong(double& longitude, double& latitude, double x, double y, double z);

// Mean of three 3-D points.
void TriangleCentroid3D(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                        double z3, double& x, double& y, double& z);

}  // namespace tarnwick
