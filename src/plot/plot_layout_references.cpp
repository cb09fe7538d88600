#include "plot/plot_layout_references.h"

namespace tarnwick {

PlotCheck SettleExistingOutput(const platform::FeatureLayer& stands, ExistingPlotLayer& existing,
                               const TransformationChooser& choose) {
  PlotCheck failure = CheckStandLayerReference(stands);
  if (!failure) failure = CheckPointLayerReference(existing.layer);
  if (failure) return failure;
  const TransformationChoice choice = choose(stands, existing.layer, nullptr);
  existing.transformation = choice.transformation;
  existing.direction = choice.direction;
  return std::nullopt;
}

PlotCheck SettleAnchor(const AnchorEntries& entries, const std::optional<platform::FeatureLayer>& anchorLayer,
                       const platform::FeatureLayer& stands, const OutputOption& output,
                       const TransformationChooser& choose, AnchorOption& anchor) {
  const auto* existing = std::get_if<ExistingPlotLayer>(&output);
  PlotCheck failure = CheckAnchorEntries(entries);
  if (!failure) failure = CheckAnchorReference(entries.reference);
  if (!failure && !existing) {
    failure = CheckNewOutputReference(stands.name, stands.featureClass->GetSpatialReference());
  }
  if (!failure && existing) {
    failure = CheckExistingOutputReference(existing->layer.name, existing->layer.featureClass->GetSpatialReference());
  }
  if (failure) return failure;

  const double x = NumberOfText(entries.xText).value_or(0);
  const double y = NumberOfText(entries.yText).value_or(0);
  const platform::Geometry point = platform::Geometry::MakePoint(x, y, entries.reference);
  const SearchObject anchorSide = anchorLayer ? SearchObject(*anchorLayer) : SearchObject(entries.reference);
  const SearchObject outputSide = existing ? SearchObject(existing->layer) : SearchObject(stands);
  const TransformationChoice choice = choose(anchorSide, outputSide, &point);
  if (anchorLayer) {
    anchor = LayerAnchor{*anchorLayer, entries.layerOptionCaption, x,
                         y,            entries.reference,          choice.transformation,
                         choice.direction};
  } else {
    anchor = ClickedAnchor{x, y, entries.reference, choice.transformation, choice.direction};
  }
  return std::nullopt;
}

}  // namespace tarnwick
