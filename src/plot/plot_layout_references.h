#pragma once
// The spatial references of a plot layout request and the geographic
// transformations between its layers, settled the same way for the Plot
// Layout dialog and the command line: the checks first (24 to 35), then the
// transformation, which each front end chooses in its own way (the dialog by
// the Selection sequence, the command line by its --transform option).
#include <functional>
#include <optional>

#include "plot/plot_layout_checks.h"
#include "plot/plot_layout_parameters.h"
#include "transforms/selection_sequence.h"

namespace tarnwick {

// Chooses the transformation from one side to the other, or refuses one the
// run could not use (its grid files are missing); `at` (may be nullptr) is
// where the candidates are judged.
using TransformationChooser = std::function<Checked<TransformationChoice>(
    const SearchObject& from, const SearchObject& to, const platform::Geometry* at)>;

// Adding to an existing layer: the stand and point layers' references, then
// the transformation from the stands to the points, set in `existing`.
PlotCheck SettleExistingOutput(const platform::FeatureLayer& stands, ExistingPlotLayer& existing,
                               const TransformationChooser& choose);

// The anchor's entries and the references of the anchor and the output,
// then the transformation from the anchor to the output, judged at the
// anchor. anchorLayer is the point layer the anchor was read from (option 1);
// the coordinates are read from the entries' texts.
PlotCheck SettleAnchor(const AnchorEntries& entries, const std::optional<platform::FeatureLayer>& anchorLayer,
                       const platform::FeatureLayer& stands, const OutputOption& output,
                       const TransformationChooser& choose, AnchorOption& anchor);

}  // namespace tarnwick
