#include "plot/plot_layout_references.h"

namespace tarnwick {

namespace {

// A chooser's refusal as the dialog's box: its text's first paragraph is the
// head, the rest the body.
PlotCheckFailure RefusalFailure(const CheckMessage& refusal) {
  PlotCheckFailure failure;
  const auto gap = refusal.text.find("\n\n");
  failure.head = refusal.text.substr(0, gap);
  if (gap != std::string::npos) failure.body = refusal.text.substr(gap + 2);
  failure.title = refusal.title;
  failure.icon = refusal.icon;
  return failure;
}

}  // namespace

PlotCheck SettleExistingOutput(const platform::FeatureLayer& stands, ExistingPlotLayer& existing,
                               const TransformationChooser& choose) {
  PlotCheck failure = CheckStandLayerReference(stands);
  if (!failure) failure = CheckPointLayerReference(existing.layer);
  if (failure) return failure;
  const Checked<TransformationChoice> checked = choose(stands, existing.layer, nullptr);
  if (const CheckMessage* refusal = Refusal(checked)) return RefusalFailure(*refusal);
  const auto& choice = std::get<TransformationChoice>(checked);
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
  const Checked<TransformationChoice> checked = choose(anchorSide, outputSide, &point);
  if (const CheckMessage* refusal = Refusal(checked)) return RefusalFailure(*refusal);
  const auto& choice = std::get<TransformationChoice>(checked);
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
