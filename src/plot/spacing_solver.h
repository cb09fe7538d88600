#pragma once
// The search for the spacing that puts a requested number of lattice points
// into a stand. X and Y spacing always change by the same factor, so the
// requested X:Y ratio holds throughout.
#include <cstdint>
#include <vector>

#include "platform/geometry.h"
#include "plot/lattice.h"
#include "plot/stand_origin.h"

namespace tarnwick {

// The spacing whose cell area is the polygon's area divided by target, in the
// proportion xRatio:yRatio. Metres on a geographic system (spheroidal area),
// the projection's unit otherwise. A negative target fails.
SpacingPair FillInitialSpacing(const platform::Geometry& polygon, double xRatio, double yRatio, long target);

// Everything a trial of one stand needs; built once per stand.
struct StandGrid {
  const platform::Geometry& polygon;            // the prepared polygon
  const platform::PreparedPolygon& prepared;    // the same, ready for point tests
  const platform::Feature& stand;
  const SpacingOption& spacing;
  std::string_view units;
  const StandOriginContext& originContext;
  LatticeFrame frame;
  std::string standId;  // for messages
  std::size_t pointLimit = SIZE_MAX;  // for the frame (see LatticeFrame)
};

// Searches the spacing for target points (target > 0). The trials stop at
// an exact hit or after ten passes of at most 301 trials; points holds the
// last trial's points either way and iterations the trials of the last pass.
void SearchSpacingForCount(const StandGrid& grid, platform::XY origin, double& orientation, long target,
                           double xRatio, double yRatio, long& iterations, std::vector<platform::XY>& points);

}  // namespace tarnwick
