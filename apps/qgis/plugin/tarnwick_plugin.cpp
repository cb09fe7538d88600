#include "plugin/tarnwick_plugin.h"

#include <dlfcn.h>

#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <qgisinterface.h>
#include <qgsproject.h>

#include "host/entry_point.h"
#include "host/qt_text.h"
#include "session/desktop_session.h"
#include "toolbar/tarnwick_toolbar.h"

namespace tarnwick::desktop {

namespace {

const QString kName = QStringLiteral("Tarnwick Tools");
const QString kDescription =
    QStringLiteral("Forest inventory tools: plot layout over stands, stand IDs onto plots, waypoint files");
const QString kCategory = QStringLiteral("Vector");
const QString kVersion = QStringLiteral("0.1.0");

// The folder this plugin was loaded from: the manual sits beside it.
std::string PluginFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&PluginFolder), &info) == 0 || !info.dli_fname) return {};
  return ToStdString(QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath());
}

}  // namespace

TarnwickPlugin::TarnwickPlugin(QgisInterface* iface)
    : QgisPlugin(kName, kDescription, kCategory, kVersion, QgisPlugin::UI), iface_(iface) {}

TarnwickPlugin::~TarnwickPlugin() = default;

void TarnwickPlugin::initGui() {
  RunAsEntryPoint("initGui ", "TarnwickPlugin", {}, [this] { StartSession(); });
}

void TarnwickPlugin::StartSession() {
  DesktopWindows windows;
  windows.mainWindow = qobject_cast<QMainWindow*>(iface_->mainWindow());
  windows.canvas = iface_->mapCanvas();
  windows.layerTreeView = iface_->layerTreeView();
  windows.statusBar = iface_->statusBarIface();
  windows.project = QgsProject::instance();
  windows.programFolder = PluginFolder();
  session_ = std::make_unique<DesktopSession>(windows);
  iface_->addToolBar(session_->Toolbar().Toolbar());
  // The menu stands before QGIS's own menus on the right (Help).
  if (windows.mainWindow) {
    QMenu* help = iface_->firstRightStandardMenu();
    windows.mainWindow->menuBar()->insertMenu(help ? help->menuAction() : nullptr, session_->Toolbar().Menu());
  }
}

void TarnwickPlugin::unload() {
  RunAsEntryPoint("unload ", "TarnwickPlugin", {}, [this] { session_.reset(); });
}

}  // namespace tarnwick::desktop

// The entry points QGIS looks up in the library by name.
QGISEXTERN QgisPlugin* classFactory(QgisInterface* iface) { return new tarnwick::desktop::TarnwickPlugin(iface); }
QGISEXTERN const QString* name() { return &tarnwick::desktop::kName; }
QGISEXTERN const QString* description() { return &tarnwick::desktop::kDescription; }
QGISEXTERN const QString* category() { return &tarnwick::desktop::kCategory; }
QGISEXTERN int type() { return QgisPlugin::UI; }
QGISEXTERN const QString* version() { return &tarnwick::desktop::kVersion; }
// The plugin manager asks for the icon before the plugin starts.
QGISEXTERN const QString* icon() {
  static const QString path = tarnwick::desktop::CommandIconPath(102);
  return &path;
}
QGISEXTERN void unload(QgisPlugin* plugin) { delete plugin; }
