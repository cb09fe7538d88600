#pragma once
// Making a stand polygon ready for the lattice, and fitting a finished plot
// point to the output's Z and M settings.
#include <optional>
#include <string>

#include "platform/geometry.h"
#include "platform/transformation.h"

namespace tarnwick {

// Repairs the polygon's topology, brings it into the output's coordinate
// system (through the transformation when one was chosen) and shrinks it by
// the buffer distance. The buffer is always internal: -10 and 10 give the
// same polygon. An empty polygon comes back as it is; so can a polygon the
// buffer eliminates, which the caller reports.
platform::Geometry ReturnPreparedPolygon(platform::Geometry polygon, double bufferDistance,
                                         const std::string& bufferUnits, bool reproject, bool hasTransformation,
                                         const platform::SpatialReference& outputReference,
                                         platform::TransformDirection direction,
                                         const std::optional<platform::GeoTransformation>& transformation);

// Sets the point's Z and M awareness to the output's, with 0 values.
platform::Geometry& FixShapeZandM(platform::Geometry& point, bool hasZ, bool hasM);

}  // namespace tarnwick
