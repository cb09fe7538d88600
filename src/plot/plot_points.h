#pragma once
// The plot points of one stand: the lattice at the given spacing, or at the
// spacing the search finds for a plot count.
#include <vector>

#include "platform/geometry.h"
#include "plot/spacing_solver.h"

namespace tarnwick {

struct StandPlots {
  bool produced = false;         // false: no collection (count 0, or an unknown option)
  bool plotCountIsZero = false;  // the stand asked for no plots
};

// Fills points (northern row first, west to east) for the stand of grid.
// orientation is normalised in place. iterations is set by the count-based
// options and left as it stood by the spacing options. A Null plot count or
// spacing fails here.
StandPlots ReturnPointCollectionOfPoints(StandGrid& grid, platform::XY origin, double& orientation,
                                         long& iterations, std::vector<platform::XY>& points);

// The frame of the lattice over polygon (envelope, spheroid) for orientation,
// normalised in place.
LatticeFrame MakeLatticeFrame(const platform::Geometry& polygon, double& orientation);

}  // namespace tarnwick
