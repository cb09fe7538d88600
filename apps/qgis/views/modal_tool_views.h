#pragma once
// The modal tool dialogs on Qt: Import Stand IDs (frmTransferStandIDs), the
// Waypoint Converter (frmLayerID), the transformation chooser (frmTransform)
// and the two layers it is opened over (TransformationPairDialog), each a
// Designer form of its model's name (forms/NAME.ui) bound to the model. A
// view stays on top, opens where its model places it, keeps its controls
// anchored as the user resizes it, and returns once the model has unloaded.
#include <memory>

#include "presentation/tool_dialog_model.h"
#include "session/dialog_registry.h"
#include "shell/host_array.h"

namespace tarnwick::desktop {

// Shows any of the models above modally in its form.
ShowModalDialog ModalToolViews(const DialogContext& context);

// The makers registered for "Tarnwick.clsTransferStandIDs" and
// "Tarnwick.cmdTNWKWPConverter".
std::unique_ptr<ToolDialog> MakeTransferStandIDsView(const DialogContext& context);
std::unique_ptr<ToolDialog> MakeWaypointConverterView(const DialogContext& context);

// The menu's "Geographic Transformation..." entry: two layers, the chooser
// over their candidates, and the choice kept in the project.
void RunGeographicTransformationEntry(HostArray host, const DialogContext& context);

}  // namespace tarnwick::desktop
