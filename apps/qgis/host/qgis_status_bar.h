#pragma once
// The status bar of a run on QGIS's status bar: the message on the left and a
// progress bar at its right end while a run counts its steps.
#include <QPointer>
#include <QProgressBar>

#include "platform/host/application.h"

class QgsStatusBar;

namespace tarnwick::desktop {

class QgisStatusBar : public platform::host::StatusBar {
 public:
  explicit QgisStatusBar(QgsStatusBar* bar);
  ~QgisStatusBar() override;
  QgisStatusBar(const QgisStatusBar&) = delete;
  QgisStatusBar& operator=(const QgisStatusBar&) = delete;

  void ShowProgressBar(const std::string& message, long min, long max, long step, bool onePanel) override;
  void HideProgressBar() override;
  void SetMessage(const std::string& message) override;
  void Step() override;
  void SetPosition(long position) override;
  void SetStatusText(const std::string& text) override;

  // What a user sees now: the message and the bar (for tests and screenshots).
  QString Message() const;
  const QProgressBar* ProgressBar() const { return progress_; }

 private:
  QPointer<QgsStatusBar> bar_;
  QPointer<QProgressBar> progress_;  // owned by the status bar
  long step_ = 1;
};

}  // namespace tarnwick::desktop
