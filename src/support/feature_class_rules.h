#pragma once
// Rules for new feature classes that need no store: the spatial grid size,
// the class a feature type implies, and numbered names for the system's own
// fields when an extra field already bears their name.
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/geometry.h"

namespace tarnwick {

// Grid size for a new geodatabase class: about 200 features a cell over the
// envelope when there is one and the expected count is positive, limited by
// the width and then the height; 100 otherwise.
double SpatialGridSize(const std::optional<platform::Envelope>& envelope, long expectedCount);

// The class identifier a feature type implies and the geometry type it
// forces (simple features turn a line into a polyline; junctions are points,
// edges polylines). nullopt for annotation (11) and for types outside 1..11;
// types 2 to 6 imply no identifier and keep the geometry type.
struct FeatureTypeClass {
  std::string classIdentifier;
  platform::GeometryType geometryType;
};
std::optional<FeatureTypeClass> ClassForFeatureType(int featureType, platform::GeometryType geometryType);

// `base` when no extra field bears that name (ignoring case); otherwise the
// first of base cut to (width - digits of n) characters followed by n, for
// n = 1, 2, ..., that is free. "Object_ID" uses width 11, "Unique_ID" 10.
std::string NumberedFieldName(const std::string& base, int width, const std::vector<platform::Field>& extraFields);

}  // namespace tarnwick
