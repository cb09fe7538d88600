#include "shell/command_table.h"

#include "shell/extension.h"

namespace tarnwick {

bool CommandEnabled(const CommandInfo& command, const clsExtension* extension) {
  switch (command.enabled) {
    case EnabledRule::Always: return true;
    case EnabledRule::WhileSelToolEnabled: return extension != nullptr && extension->SelToolEnabled;
  }
  return false;
}

const CommandInfo* FindCommand(std::string_view progId) {
  for (const CommandInfo* command : kToolbarCommands) {
    if (command->progId == progId) return command;
  }
  return nullptr;
}

void clsTarnwickToolbar::GetItemInfo(long pos, ItemDef& itemDef) {
  if (pos < 0 || pos >= ItemCount) return;
  const CommandInfo& command = *kToolbarCommands[static_cast<std::size_t>(pos)];
  itemDef.ID = std::string(command.progId);
  // Only the map tool stands behind a separator; the others leave Group as
  // they found it.
  if (&command == &kSelPointToolCommand) itemDef.Group = true;
}

}  // namespace tarnwick
