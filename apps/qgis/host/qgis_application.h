#pragma once
// The host services on QGIS: its status bar, Qt message boxes and file
// dialogs, the canvas's map tool, the report windows and the desktop's
// document viewer.
#include <QPointer>
#include <functional>

#include "host/map_tool_registry.h"
#include "host/qgis_status_bar.h"
#include "platform/host/application.h"

class QWidget;
class QgsMapCanvas;
class QgsStatusBar;

namespace tarnwick::desktop {

class QgisApplication : public platform::host::Application {
 public:
  QgisApplication(QWidget* mainWindow, QgsMapCanvas* canvas, QgsStatusBar* statusBar, std::string programFolder);

  platform::host::StatusBar& GetStatusBar() override { return statusBar_; }
  platform::host::MessageResult MessageBox(const std::string& text, const std::string& title,
                                           platform::host::MessageButtons buttons,
                                           platform::host::MessageIcon icon) override;
  void ShowMessageWindow(const std::string& text) override;
  void DoEvents() override;
  platform::host::Version GetVersion() const override;
  int VersionNumber() const override { return -1; }  // the metadata's version list has none for QGIS

  std::string CurrentTool() const override;
  void SetCurrentTool(const std::string& progId) override;
  void RefreshCommandItem(const std::string& progId) override;
  std::optional<platform::host::DatasetSaveChoice> BrowseForNewDataset(const std::string& title,
                                                                      const std::string& suggestedName) override;
  std::optional<std::string> BrowseForSaveFile(const platform::host::FileSaveRequest& request) override;
  void ShowReport(const platform::host::ReportRequest& report) override;
  void OpenDocument(const std::string& path) override;
  std::string ProgramFolder() const override { return programFolder_; }
  void RefreshWindow() override;

  MapToolRegistry& MapTools() { return mapTools_; }
  // Wired by the session: the report windows and the toolbar's refresh.
  std::function<void(const platform::host::ReportRequest&)> reportPresenter;
  std::function<void(const std::string& progId)> commandRefresher;

 private:
  QPointer<QWidget> mainWindow_;
  QPointer<QgsMapCanvas> canvas_;
  QgisStatusBar statusBar_;
  MapToolRegistry mapTools_;
  std::string programFolder_;
};

}  // namespace tarnwick::desktop
