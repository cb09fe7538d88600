#pragma once
// The "Tarnwick Tools" toolbar and menu: one action per command of the
// command table, in the toolbar's order, with the separator before the map
// tool. QGIS does not ask an action whether it is enabled, so the actions
// read their commands' Enabled again whenever the host refreshes a command
// and after every dialog event. The map tool's button makes the anchor tool
// the canvas's map tool.
#include <QObject>
#include <QPointer>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/entry_point.h"
#include "shell/commands.h"
#include "transforms/search_types.h"

class QAction;
class QMenu;
class QToolBar;
class QWidget;
class QgsMapCanvas;

namespace tarnwick::desktop {

class AnchorMapTool;
class DialogRegistry;
class QgisApplication;

// The toolbar image of a command's bitmap resource (101 to 104), and its
// path among Qt's resources.
QIcon CommandIcon(int bitmap);
QString CommandIconPath(int bitmap);

class TarnwickToolbar : public QObject {
  Q_OBJECT
 public:
  TarnwickToolbar(HostArray host, QgisApplication& application, QgsMapCanvas* canvas, const DialogRegistry& dialogs,
                  ErrorHost errors, TransformationDefaults& transformations, QWidget* parent);
  ~TarnwickToolbar() override;

  QToolBar* Toolbar() const { return toolbar_; }
  QMenu* Menu() const { return menu_; }
  // The action of a command by ProgID; null for one that is not ours.
  QAction* Action(std::string_view progId) const;
  // Reads Enabled (and the tool's pressed state) again: of one command, or
  // of all for an empty or unknown ProgID.
  void Refresh(std::string_view progId = {});

 private:
  void Trigger(const CommandInfo& info);

  QgisApplication& application_;
  ErrorHost errors_;
  clsExtension& extension_;
  std::vector<std::unique_ptr<TarnwickCommand>> commands_;
  QPointer<AnchorMapTool> anchorTool_;  // the canvas's child; deleted here
  std::vector<std::pair<const CommandInfo*, QPointer<QAction>>> actions_;
  QPointer<QToolBar> toolbar_;  // owned by the main window once added; deleted here
  QPointer<QMenu> menu_;
};

}  // namespace tarnwick::desktop
