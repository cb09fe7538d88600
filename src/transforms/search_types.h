#pragma once
// What the transformation search works on: a layer (its dataset) or a
// spatial reference on each side, transformation lists, and the sets of
// transformations a map and the platform keep between runs.
#include <string>
#include <variant>
#include <vector>

#include "platform/host/map_document.h"
#include "platform/spatial_reference.h"
#include "platform/transformation.h"
#include "platform/workspace.h"

namespace tarnwick {

// One side of a search: a layer, a spatial reference, or neither (monostate).
using SearchObject = std::variant<std::monostate, platform::FeatureLayer, platform::SpatialReference>;

// A list of transformations; an empty list means none.
using TransformList = std::vector<platform::GeoTransformation>;

// Stored transformations, each with the direction it is meant for (the map's
// set and the platform's defaults have the same form).
using TransformationSet = std::vector<platform::host::TransformationUse>;

// The platform's default transformations. They live as long as the process
// that runs the tools, owned by that process's top level (the command-line
// run, the desktop session) and handed to the search.
struct TransformationDefaults {
  TransformationSet set;
};

// Whether the set holds the transformation for that direction.
bool FindInSet(const TransformationSet& set, platform::TransformDirection direction,
               const platform::GeoTransformation& transformation);
// Stores the transformation for that direction.
void SetInSet(TransformationSet& set, platform::TransformDirection direction,
              const platform::GeoTransformation& transformation);

}  // namespace tarnwick
