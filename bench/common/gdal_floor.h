#pragma once
// GDAL alone doing the I/O a tool does: the floor a tool's figures are
// compared with. Each returns the seconds it took.
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/geometry.h"

namespace tarnwick::bench {

// Creates a GeoPackage point class and writes the points with a text stand
// ID and a numeric plot ID, in one transaction.
double GdalWritePoints(const std::string& gpkgPath, const std::string& layer, const std::vector<platform::XY>& points,
                       int epsg);
// Reads every feature of the class with its geometry and attributes.
double GdalReadPoints(const std::string& gpkgPath, const std::string& layer);
// What an attribute update of every point cannot avoid: GDAL reading each
// point (its fid and shape) and one text field written per point. The field
// (text, 16 wide) is added first when the class lacks it, as a tool that
// clones a field must. A GeoPackage takes one prepared UPDATE per point in
// one transaction; a shapefile's .dbf gets the field's bytes written into
// its records, a window of records at a time.
double GeoPackageAttributeFloor(const std::string& gpkgPath, const std::string& layer, const std::string& field);
double ShapefileAttributeFloor(const std::string& folder, const std::string& layer, const std::string& field);

// Helpers for checking what a tool wrote (not timed).
std::vector<platform::XY> GdalReadPointXY(const std::string& gpkgPath, const std::string& layer);
// Number of features per value of a field (read as text).
std::unordered_map<std::string, long> GdalCountByField(const std::string& gpkgPath, const std::string& layer,
                                                       const std::string& field);
// The integer valueField of every feature, keyed by keyField (read as text).
std::unordered_map<std::string, long> GdalReadKeyedIntegers(const std::string& gpkgPath, const std::string& layer,
                                                            const std::string& keyField,
                                                            const std::string& valueField);

}  // namespace tarnwick::bench
