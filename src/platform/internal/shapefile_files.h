#pragma once
// A shapefile's files on disk: which belong to a class, and whether they
// agree with one another (platform-internal).
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarnwick::platform::internal {

// The files of class name in folder that the shapefile driver treats as
// the class's own (.shp, .shx, .dbf, .prj, .cpg, indexes, the metadata
// document), as full paths.
std::vector<std::string> ShapefileCompanions(const std::string& folder, const std::string& name);

// "" when the .shp, .shx and .dbf of folder/name agree with their headers
// and with one another (and hold expectedRecords records when given);
// otherwise what is wrong, naming the file.
std::string ShapefileDamage(const std::string& folder, const std::string& name,
                            std::optional<std::int64_t> expectedRecords = std::nullopt);

}  // namespace tarnwick::platform::internal
