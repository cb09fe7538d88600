#pragma once
// The platform's predefined geographic transformations: every operation in
// PROJ's database (EPSG and ESRI authorities) that joins two geographic 2D
// systems, with its ESRI-style name where the database has one.
#include <optional>
#include <string_view>
#include <vector>

#include "platform/spatial_reference.h"
#include "platform/transformation.h"

namespace tarnwick::platform {

// The whole set, in the order of authority (EPSG first) and code. Read once
// from PROJ's database and shared, immutable, afterwards. Throws
// PlatformError when the database cannot be read.
const std::vector<GeoTransformation>& PredefinedGeoTransformations();

// The transformation of that name (ignoring case) or of that code (decimal
// digits), or nullopt when the set has none.
std::optional<GeoTransformation> FindPredefinedGeoTransformation(std::string_view nameOrCode);

// The from and to geographic systems of a transformation. Throws
// PlatformError when either code is unknown to PROJ.
void GetSpatialReferences(const GeoTransformation& transformation, SpatialReference& from, SpatialReference& to);

}  // namespace tarnwick::platform
