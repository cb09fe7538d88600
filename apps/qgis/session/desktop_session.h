#pragma once
// One desktop session of the tools inside QGIS: the extension object with its
// settings kept in the project, the host services on QGIS, and the toolbar
// and menu that start the commands. The plugin makes one when QGIS starts its
// GUI; tests make one over their own window, canvas and project.
#include <memory>
#include <string>

#include "host/qgis_application.h"
#include "host/qgis_map_document.h"
#include "host/settings_in_project.h"
#include "session/dialog_registry.h"
#include "shell/extension.h"
#include "shell/host_array.h"

class QMainWindow;
class QgsLayerTreeView;
class QgsMapCanvas;
class QgsProject;
class QgsStatusBar;

namespace tarnwick::desktop {

class TarnwickToolbar;

// The parts of QGIS a session works with (QgisInterface gives them in QGIS).
struct DesktopWindows {
  QMainWindow* mainWindow = nullptr;
  QgsMapCanvas* canvas = nullptr;
  QgsLayerTreeView* layerTreeView = nullptr;  // may be null: no table-of-contents selection
  QgsStatusBar* statusBar = nullptr;          // may be null: no progress shown
  QgsProject* project = nullptr;
  std::string programFolder;  // where the plugin and its manual are installed
};

class DesktopSession {
 public:
  explicit DesktopSession(const DesktopWindows& windows);
  ~DesktopSession();
  DesktopSession(const DesktopSession&) = delete;
  DesktopSession& operator=(const DesktopSession&) = delete;

  clsExtension& Extension() { return extension_; }
  QgisApplication& Application() { return application_; }
  QgisMapDocument& Document() { return document_; }
  HostArray Hosts() { return {application_, document_, extension_}; }
  ErrorHost Errors() { return {&application_, &document_}; }
  TarnwickToolbar& Toolbar() { return *toolbar_; }
  // The views of the tool dialogs, by their command's ProgID.
  DialogRegistry& Dialogs() { return dialogs_; }

 private:
  clsExtension extension_;
  TransformationDefaults transformations_;
  QgisApplication application_;
  QgisMapDocument document_;
  SettingsInProject settings_;
  DialogRegistry dialogs_;
  std::unique_ptr<TarnwickToolbar> toolbar_;
};

}  // namespace tarnwick::desktop
