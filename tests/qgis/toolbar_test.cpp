// The "Tarnwick Tools" toolbar in a QGIS main window: its buttons, their
// states, and the commands they start.
#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QToolBar>

#include "desktop_fixture.h"
#include "shell/extension.h"
#include "toolbar/anchor_map_tool.h"
#include "toolbar/tarnwick_toolbar.h"

namespace tarnwick::desktop::testing {
namespace {

TEST(TarnwickToolbar, ListsTheCommandsWithTheToolBehindASeparatorAndStartsThem) {
  MiniDesktop desktop;
  DesktopSession session(desktop.Windows());
  QToolBar* toolbar = session.Toolbar().Toolbar();
  EXPECT_EQ(toolbar->windowTitle(), "Tarnwick Tools");
  EXPECT_EQ(toolbar->objectName(), "Tarnwick_Toolbar");
  QStringList items;
  for (QAction* action : toolbar->actions()) {
    items << (action->isSeparator() ? QString("|") : action->text());
    if (!action->isSeparator()) {
      EXPECT_FALSE(action->icon().pixmap(24).isNull()) << action->text().toStdString();
    }
  }
  EXPECT_EQ(items, QStringList({"&TNWK Waypoint Converter", "TNWK &Plot Layout Tool", "TNWK &Import Stand IDs", "|",
                                "Select Anchor Point"}));
  EXPECT_EQ(session.Toolbar().Menu()->title(), "Tarnwick Tools");
  const QList<QAction*> menu = session.Toolbar().Menu()->actions();
  ASSERT_EQ(menu.size(), 7);
  EXPECT_TRUE(menu[3]->isSeparator());
  EXPECT_EQ(menu.mid(0, 3), toolbar->actions().mid(0, 3));
  EXPECT_EQ(menu[4], toolbar->actions()[4]);
  EXPECT_TRUE(menu[5]->isSeparator());
  EXPECT_EQ(menu[6]->text(), "Geographic Transformation...");
  QAction* tool = session.Toolbar().Action("Tarnwick.clsSelPointTool");
  EXPECT_EQ(tool->toolTip(), "Specify an anchor point for plot array");
  EXPECT_EQ(session.Toolbar().Action("Tarnwick.clsPlotLayout")->statusTip(),
            "Generate Plot Layout within Stand boundaries...");

  // The tool is greyed until the Plot Layout dialog enables it and refreshes it.
  EXPECT_FALSE(tool->isEnabled());
  session.Extension().SelToolEnabled = true;
  session.Application().RefreshCommandItem("Tarnwick.clsSelPointTool");
  EXPECT_TRUE(tool->isEnabled());

  // Pressed, the anchor tool becomes the canvas's map tool.
  tool->trigger();
  EXPECT_NE(dynamic_cast<AnchorMapTool*>(desktop.canvas->mapTool()), nullptr);
  EXPECT_EQ(session.Application().CurrentTool(), "Tarnwick.clsSelPointTool");
  EXPECT_TRUE(tool->isChecked());
  session.Application().SetCurrentTool("");
  EXPECT_EQ(desktop.canvas->mapTool(), nullptr);
  EXPECT_FALSE(tool->isChecked());

  // A build without a dialog's view says so and runs nothing.
  ModalWatcher watcher;
  auto missing = DialogRegistry().ModalFactory("Tarnwick.clsTransferStandIDs", {})();
  HostArray host = session.Hosts();
  missing->ArcApplication(host);
  missing->ShowModal();
  ASSERT_EQ(watcher.shown.size(), 1);
  EXPECT_TRUE(watcher.shown[0].contains("not part of this build")) << watcher.shown[0].toStdString();
  EXPECT_FALSE(session.Extension().ShouldContinue);
}

}  // namespace
}  // namespace tarnwick::desktop::testing
