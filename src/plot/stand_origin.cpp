#include "plot/stand_origin.h"

#include <cmath>

#include "platform/errors.h"
#include "platform/host/map_document.h"
#include "plot/lattice_directions.h"
#include "plot/plot_module.h"
#include "plot/plot_units.h"
#include "presentation/error_handling.h"
#include "support/lattice_shift.h"
#include "support/host_operations.h"

namespace tarnwick {

namespace {

template <class Anchor>
platform::XY AnchorInPolygonSystem(const Anchor& anchor, const platform::SpatialReference& polygonReference) {
  platform::Geometry point = platform::Geometry::MakePoint(anchor.x, anchor.y, anchor.spatialReference);
  if (polygonReference.FactoryCode() != anchor.spatialReference.FactoryCode()) {
    point = anchor.transformation ? point.ProjectEx(polygonReference, *anchor.transformation, anchor.direction)
                                  : point.Project(polygonReference);
  }
  return point.PointXY();
}

double CheckedSpacing(double raw, std::string_view units, const StandOriginContext& context,
                      std::string_view standId, const std::string& what) {
  const double converted = SpacingToLatticeUnits(raw, units, context);
  if (std::isfinite(converted) && converted > 0) return converted;
  std::string reason;
  if (raw == 0) {
    reason = "is 0";
  } else if (!std::isfinite(raw)) {
    reason = "is no number";
  } else {
    reason = "cannot be used with the plot units '" + std::string(units) + "' (Feet, Meters or Chains)";
  }
  RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule),
             "Stand '" + std::string(standId) + "': " + what + " " + reason +
                 "; plots cannot be laid out with a spacing of 0");
}

}  // namespace

std::string StandIdForMessages(const platform::Value& value) {
  return platform::IsNull(value) ? std::string("<Null>") : platform::ValueToText(value);
}

StandOriginContext PrepareStandOrigin(const platform::Geometry& polygon, const AnchorOption& anchor,
                                      platform::host::Map* map) {
  return Guarded("ReturnOriginPoint2", kPlotModule, [&] {
    if (map) DeleteGraphicsByName(*map, "Delete_Me_Tarnwick");
    StandOriginContext context;
    const platform::SpatialReference& reference = polygon.SpatialRef();
    context.isGeographic = reference.IsGeographic();
    context.isProjected = reference.IsProjected();
    context.metersPerUnit = reference.MetersPerUnit();
    context.target = polygon.Centroid().PointXY();
    if (const auto* clicked = std::get_if<ClickedAnchor>(&anchor)) {
      context.anchor = AnchorInPolygonSystem(*clicked, reference);
    } else if (const auto* fromLayer = std::get_if<LayerAnchor>(&anchor)) {
      context.anchor = AnchorInPolygonSystem(*fromLayer, reference);
    }
    return context;
  });
}

double SpacingToLatticeUnits(double spacing, std::string_view units, const StandOriginContext& context) {
  double value = DistanceToMeters(std::fabs(spacing), units);
  if (context.isProjected) value /= context.metersPerUnit;
  return value;
}

SpacingPair ReadGivenSpacing(const SpacingOption& spacing, const platform::Feature& stand, std::string_view units,
                             const StandOriginContext& context, std::string_view standId) {
  if (const auto* manual = std::get_if<ManualSpacing>(&spacing)) {
    return {CheckedSpacing(manual->x, units, context, standId, "the X spacing entered"),
            CheckedSpacing(manual->y, units, context, standId, "the Y spacing entered")};
  }
  const auto& fields = std::get<SpacingFromFields>(spacing);
  const double x = platform::ValueToDouble(stand.values.at(fields.xFieldIndex));
  const double y = platform::ValueToDouble(stand.values.at(fields.yFieldIndex));
  return {CheckedSpacing(x, units, context, standId, "the X spacing in field [" + fields.xField.name + "]"),
          CheckedSpacing(y, units, context, standId, "the Y spacing in field [" + fields.yField.name + "]")};
}

platform::XY ReturnOriginPoint2(const StandOriginContext& context, const platform::Feature& stand,
                                const SpacingOption& spacing, double& orientation, std::string_view units,
                                double xSpacing, double ySpacing, std::string_view standId) {
  return Guarded("ReturnOriginPoint2", kPlotModule, [&] {
    const platform::XY working = context.anchor.value_or(context.target);
    const int option = SpacingOptionNumber(spacing);
    const bool spacingGiven = option == 2 || option == 3;
    if ((xSpacing == kSpacingNotKnown || ySpacing == kSpacingNotKnown) && !spacingGiven) return working;

    // A solver's spacing is converted by the units text too, although it is
    // already in the lattice's unit: the origin only lands on the lattice
    // when the plot units are the map's own.
    SpacingPair steps;
    if (spacingGiven) {
      steps = ReadGivenSpacing(spacing, stand, units, context, standId);
    } else {
      steps = {SpacingToLatticeUnits(xSpacing, units, context), SpacingToLatticeUnits(ySpacing, units, context)};
    }

    const LatticeDirections d = ReturnLatticeDirections(orientation);
    double outX = working.x;
    double outY = working.y;
    long columns = 0;
    long rows = 0;
    ShiftPointBasedOnXYIncrements(working.x, working.y, context.target.x, context.target.y, steps.x, steps.y,
                                  d.east, d.north, d.west, d.south, outX, outY, context.isGeographic, columns, rows);
    return platform::XY{outX, outY};
  });
}

}  // namespace tarnwick
