#pragma once
// GDAL alone doing the I/O a tool does: the floor a tool's figures are
// compared with. Each returns the seconds it took.
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace tarnwick::bench {

// Creates a GeoPackage point class and writes the points with a text stand
// ID and a numeric plot ID, in one transaction.
double GdalWritePoints(const std::string& gpkgPath, const std::string& layer, const std::vector<platform::XY>& points,
                       int epsg);
// Reads every feature of the class with its geometry and attributes.
double GdalReadPoints(const std::string& gpkgPath, const std::string& layer);
// Reads every feature and writes one text field of each, in one transaction.
double GdalReadAndWriteField(const std::string& gpkgPath, const std::string& layer, const std::string& field);

}  // namespace tarnwick::bench
