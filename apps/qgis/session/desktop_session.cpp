#include "session/desktop_session.h"

#include <QMainWindow>

#include "host/entry_point.h"
#include "toolbar/tarnwick_toolbar.h"
#include "views/report_window.h"

namespace tarnwick::desktop {

namespace {
constexpr const char* kModule = "..\\clsExtension.cls";
}

DesktopSession::DesktopSession(const DesktopWindows& windows)
    : application_(windows.mainWindow, windows.canvas, windows.statusBar, windows.programFolder),
      document_(*windows.project, windows.canvas, windows.layerTreeView),
      settings_(*windows.project, extension_, document_.FocusMap(), {&application_, &document_}) {
  extension_.SetErrorHost(&application_, &document_);
  RunAsEntryPoint("IExtension_Startup ", kModule, Errors(), [this] { extension_.Startup(); });
  RegisterToolDialogViews(dialogs_);
  application_.reportPresenter = [this, parent = windows.mainWindow](const platform::host::ReportRequest& report) {
    ShowReportWindow(report, parent, Errors());
  };
  toolbar_ = std::make_unique<TarnwickToolbar>(Hosts(), application_, windows.canvas, dialogs_, Errors(),
                                               transformations_, windows.mainWindow);
}

DesktopSession::~DesktopSession() {
  toolbar_.reset();
  application_.reportPresenter = nullptr;
  RunAsEntryPoint("IExtension_Shutdown ", kModule, Errors(), [this] { extension_.Shutdown(); });
}

}  // namespace tarnwick::desktop
