#pragma once
// The point the lattice of a stand is generated from: the prepared polygon's
// centroid, or the anchor point walked along the lattice to the cell of the
// centroid.
#include <optional>
#include <string>
#include <string_view>

#include "platform/geometry.h"
#include "platform/workspace.h"
#include "plot/plot_layout_parameters.h"

namespace tarnwick {

namespace platform::host {
class Map;
}

// Marks a spacing not yet known (a count-based run before its search).
inline constexpr double kSpacingNotKnown = -99999;

// What the origin of one stand depends on, settled once per stand: the
// centroid, the anchor in the polygon's coordinate system, and the unit.
struct StandOriginContext {
  platform::XY target;                 // the centroid
  std::optional<platform::XY> anchor;  // none without an anchor
  bool isGeographic = false;
  bool isProjected = false;
  double metersPerUnit = 1;
};

// Reads the anchor (projecting it into the polygon's system when the factory
// codes differ) and the centroid. Removes the anchor tool's marker graphics
// from map when one is given.
StandOriginContext PrepareStandOrigin(const platform::Geometry& polygon, const AnchorOption& anchor,
                                      platform::host::Map* map);

// A spacing in the lattice's unit: made absolute, converted from units to
// metres, and to the projection's unit on a projected system.
double SpacingToLatticeUnits(double spacing, std::string_view units, const StandOriginContext& context);

struct SpacingPair {
  double x = 0;
  double y = 0;
};

// The spacing of the spacing options 2 (typed) and 3 (stand fields), in the
// lattice's unit. A spacing that comes out 0 (or no number) fails with a
// message naming the stand and the value's origin, since the lattice could
// never be walked with it.
SpacingPair ReadGivenSpacing(const SpacingOption& spacing, const platform::Feature& stand, std::string_view units,
                             const StandOriginContext& context, std::string_view standId);

// The origin for the given spacing. With the spacing sentinel and a
// count-based option the unshifted point comes back. orientation is
// normalised in place.
platform::XY ReturnOriginPoint2(const StandOriginContext& context, const platform::Feature& stand,
                                const SpacingOption& spacing, double& orientation, std::string_view units,
                                double xSpacing, double ySpacing, std::string_view standId);

// A stand ID as text for messages; "<Null>" for a Null.
std::string StandIdForMessages(const platform::Value& value);

}  // namespace tarnwick
