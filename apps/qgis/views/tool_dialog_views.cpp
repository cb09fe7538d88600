// The tool dialogs' views, each registered under its command's ProgID:
//   registry.RegisterModal(kTransferStandIDsCommand.progId, MakeTransferStandIDsView);
//   registry.RegisterModeless(kPlotLayoutCommand.progId, MakePlotLayoutView);
#include "session/dialog_registry.h"
#include "shell/command_table.h"
#include "views/modal_tool_views.h"
#include "views/plot_layout_view.h"

namespace tarnwick::desktop {

void RegisterToolDialogViews(DialogRegistry& registry) {
  registry.RegisterModeless(kPlotLayoutCommand.progId, MakePlotLayoutView);
  registry.RegisterModal(kTransferStandIDsCommand.progId, MakeTransferStandIDsView);
  registry.RegisterModal(kWaypointConverterCommand.progId, MakeWaypointConverterView);
}

}  // namespace tarnwick::desktop
