#pragma once
// A class's metadata document kept as a row of its own in a GeoPackage's
// gpkg_metadata table, referenced to the class's table, so that any reader
// of the file finds a whole XML document there (platform-internal).
#include <gdal_priv.h>

#include <optional>
#include <string>

namespace tarnwick::platform::internal {

std::optional<std::string> ReadGeoPackageDocument(GDALDataset& dataset, const std::string& table);
void WriteGeoPackageDocument(GDALDataset& dataset, const std::string& table, const std::string& xml);
// Removes the documents that refer only to this table (its class is deleted).
void DeleteGeoPackageDocuments(GDALDataset& dataset, const std::string& table);

}  // namespace tarnwick::platform::internal
