#pragma once
// A QGIS desktop in miniature for widget tests: a main window with a canvas,
// a layer tree view and a status bar over a project of the test's own, and a
// watcher that answers the modal windows a test opens.
#include <QMainWindow>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>

#include <qgslayertreemodel.h>
#include <qgslayertreeview.h>
#include <qgsmapcanvas.h>
#include <qgsproject.h>
#include <qgsstatusbar.h>

#include "platform/workspace.h"
#include "session/desktop_session.h"
#include "shell/tool_dialogs.h"

namespace tarnwick::desktop::testing {

// Writes plot points numbered 1..count (field PlotID) at (i, 2i), in UTM
// zone 10N, as a new class of the workspace; returns the class's layer.
platform::FeatureLayer WritePlotPoints(const std::string& workspacePath, const std::string& name, int count);

struct MiniDesktop {
  MiniDesktop();
  ~MiniDesktop();
  DesktopWindows Windows();

  std::unique_ptr<QgsProject> project;
  std::unique_ptr<QMainWindow> window;
  QgsMapCanvas* canvas;            // owned by window
  QgsLayerTreeView* layerTree;     // owned by window
  QgsStatusBar* statusBar;         // owned by window
};

// A modal tool dialog that answers at once, as its user would: answer runs
// in place of the user's OK or Cancel.
class AnsweringDialog : public ToolDialog {
 public:
  explicit AnsweringDialog(std::function<void(HostArray&)> answer) : answer_(std::move(answer)) {}
  void ArcApplication(HostArray& host) override { host_ = &host; }
  void ShowModal() override { answer_(*host_); }

 private:
  std::function<void(HostArray&)> answer_;
  HostArray* host_ = nullptr;
};

// Closes each modal window as it opens (by reject, or by a click on the
// button a test names) and keeps the texts it showed.
class ModalWatcher {
 public:
  ModalWatcher();
  QStringList shown;  // the text of each window closed, in order
  QString answer;     // the text of the button to click; empty rejects
  // Called with each modal window before it is closed.
  std::function<void(QWidget*)> inspect;
  // Answers a window itself (returns true), else leaves it to the watcher.
  std::function<bool(QWidget*)> handle;

 private:
  QTimer timer_;
};

}  // namespace tarnwick::desktop::testing
