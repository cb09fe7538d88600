#include "plot/plot_points.h"

#include "plot/plot_module.h"
#include "presentation/error_handling.h"

namespace tarnwick {

LatticeFrame MakeLatticeFrame(const platform::Geometry& polygon, double& orientation) {
  LatticeFrame frame;
  const platform::Envelope envelope = polygon.GetEnvelope();
  frame.xMin = envelope.xMin;
  frame.yMin = envelope.yMin;
  frame.xMax = envelope.xMax;
  frame.yMax = envelope.yMax;
  const platform::SpatialReference& reference = polygon.SpatialRef();
  frame.isGeographic = reference.IsGeographic();
  if (frame.isGeographic) {
    frame.semiMinor = reference.SemiMinorAxis();
    frame.semiMajor = reference.SemiMajorAxis();
  }
  frame.directions = ReturnLatticeDirections(orientation);
  return frame;
}

StandPlots ReturnPointCollectionOfPoints(StandGrid& grid, platform::XY origin, double& orientation,
                                         long& iterations, std::vector<platform::XY>& points) {
  return Guarded("ReturnPointCollectionOfPoints", kPlotModule, [&] {
    points.clear();
    const SpacingOption& spacing = grid.spacing;
    grid.frame = MakeLatticeFrame(grid.polygon, orientation);
    grid.frame.pointLimit = grid.pointLimit;
    StandPlots result;

    if (std::holds_alternative<ManualSpacing>(spacing) || std::holds_alternative<SpacingFromFields>(spacing)) {
      const SpacingPair given = ReadGivenSpacing(spacing, grid.stand, grid.units, grid.originContext, grid.standId);
      ReturnTestPointCollection2(origin, grid.prepared, given.x, given.y, grid.frame, points);
      result.produced = true;
      return result;
    }

    iterations = 0;
    long target = 0;
    SpacingRatio ratio;
    if (const auto* perPolygon = std::get_if<PlotsPerPolygon>(&spacing)) {
      target = perPolygon->plotsPerStand;
      ratio = perPolygon->ratio;
    } else {
      const auto& fromField = std::get<PlotsFromField>(spacing);
      target = static_cast<long>(platform::ValueToLong(grid.stand.values.at(fromField.fieldIndex)));
      ratio = fromField.ratio;
    }
    if (target == 0) {
      result.plotCountIsZero = true;
      return result;
    }
    SearchSpacingForCount(grid, origin, orientation, target, ratio.x, ratio.y, iterations, points);
    result.produced = true;
    return result;
  });
}

}  // namespace tarnwick
