#pragma once
// Envelopes as polygons, and buffers in metres on a geographic system.
#include <string>

#include "platform/geometry.h"
#include "platform/spatial_reference.h"

namespace tarnwick {

// The envelope's four corners, in turn round it (clockwise from the lower
// left) and closed, as a polygon in the given reference.
platform::Geometry EnvelopeToPolygon(const platform::Envelope& envelope, const platform::SpatialReference& sr);

// A copy of the geometry buffered by `distance` metres (negative shrinks),
// worked on an azimuthal equidistant projection centred on the geometry's
// middle and brought back to its own geographic reference. When that
// reference is not geographic, errorFlag is set, errorText says so and a
// null geometry comes back.
platform::Geometry BufferGeographic(const platform::Geometry& geometry, double distance, bool& errorFlag,
                                    std::string& errorText);
// The same for an envelope, taken as its polygon.
platform::Geometry BufferGeographic(const platform::Envelope& envelope, const platform::SpatialReference& sr,
                                    double distance, bool& errorFlag, std::string& errorText);

}  // namespace tarnwick
