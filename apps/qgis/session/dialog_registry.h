#pragma once
// The tool dialogs' views by their command's ProgID. Each view registers its
// maker in RegisterToolDialogViews (views/tool_dialog_views.cpp); a command
// whose dialog has no view yet tells the user so and runs nothing.
#include <QPointer>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/entry_point.h"
#include "shell/tool_dialogs.h"
#include "transforms/search_types.h"

class QWidget;

namespace tarnwick::desktop {

// What a dialog's view is given when a command opens it.
struct DialogContext {
  QWidget* parent = nullptr;  // the QGIS main window
  ErrorHost errors;
  // To call after each event of the dialog: the toolbar reads its commands'
  // Enabled states again (QGIS does not poll them).
  std::function<void()> refreshCommands;
  // The session's platform transformations, which the transformation
  // search reads and extends.
  TransformationDefaults* transformations = nullptr;
};

using ModalDialogMaker = std::function<std::unique_ptr<ToolDialog>(const DialogContext&)>;
// The view owns itself: it is deleted when its window closes, or with the
// registry (the session) if it is still open then.
using ModelessDialogMaker = std::function<ModelessToolDialog&(const DialogContext&)>;

class MissingModelessDialog;

class DialogRegistry {
 public:
  DialogRegistry();
  ~DialogRegistry();
  void RegisterModal(std::string_view progId, ModalDialogMaker maker) { modal_[std::string(progId)] = std::move(maker); }
  void RegisterModeless(std::string_view progId, ModelessDialogMaker maker) {
    modeless_[std::string(progId)] = std::move(maker);
  }
  // Factories for the commands; they look the maker up at each click.
  ToolDialogFactory ModalFactory(std::string_view progId, DialogContext context) const;
  ModelessToolDialogFactory ModelessFactory(std::string_view progId, DialogContext context) const;

 private:
  std::map<std::string, ModalDialogMaker> modal_;
  std::map<std::string, ModelessDialogMaker> modeless_;
  mutable std::unique_ptr<MissingModelessDialog> missing_;  // the stand-in last shown
  mutable std::vector<QPointer<QWidget>> modelessViews_;    // the views made, while they live
};

// Registers every tool dialog view the plugin has.
void RegisterToolDialogViews(DialogRegistry& registry);

}  // namespace tarnwick::desktop
