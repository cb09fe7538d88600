#pragma once
// A QGIS desktop in miniature for widget tests: a main window with a canvas,
// a layer tree view and a status bar over a project of the test's own, a
// watcher that answers the modal windows a test opens, and the user's ways
// of filling in a form by its controls' names.
#include <QMainWindow>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <qgslayertreemodel.h>
#include <qgslayertreeview.h>
#include <qgsmapcanvas.h>
#include <qgsproject.h>
#include <qgsstatusbar.h>

#include "session/desktop_session.h"

namespace tarnwick::desktop::testing {

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

// Closes each modal window as it opens (by reject) and keeps the texts it
// showed.
class ModalWatcher {
 public:
  ModalWatcher();
  QStringList shown;  // the text of each window closed, in order
  // Called with each modal window before it is closed.
  std::function<void(QWidget*)> inspect;
  // Answers a window itself (returns true), else leaves it to the watcher.
  std::function<bool(QWidget*)> handle;

 private:
  QTimer timer_;
};

// The form's control of that name; throws when there is none.
template <class W>
W& Widget(const QWidget& form, const char* control) {
  W* widget = form.findChild<W*>(control);
  if (!widget) throw std::runtime_error(std::string("no widget ") + control);
  return *widget;
}

// The user picks an entry of a drop-down list, and types over a text box.
void Choose(QWidget& form, const char* combo, const QString& entry);
void Type(QWidget& form, const char* box, const std::string& text);

}  // namespace tarnwick::desktop::testing
