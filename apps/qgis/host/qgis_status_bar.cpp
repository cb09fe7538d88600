#include "host/qgis_status_bar.h"

#include <qgsstatusbar.h>

#include <algorithm>
#include <limits>

#include "host/qt_text.h"

namespace tarnwick::desktop {

namespace {

int Clamped(long value) {
  return static_cast<int>(std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace

QgisStatusBar::QgisStatusBar(QgsStatusBar* bar) : bar_(bar) {
  if (!bar_) return;
  progress_ = new QProgressBar();
  progress_->setObjectName(QStringLiteral("TarnwickProgress"));
  progress_->setMaximumWidth(220);
  progress_->setMaximumHeight(18);
  progress_->setTextVisible(true);
  progress_->hide();
  bar_->addPermanentWidget(progress_, 0, QgsStatusBar::AnchorRight);
}

QgisStatusBar::~QgisStatusBar() {
  if (bar_ && progress_) bar_->removeWidget(progress_);
  delete progress_.data();
}

void QgisStatusBar::ShowProgressBar(const std::string& message, long min, long max, long step, bool) {
  step_ = step == 0 ? 1 : step;
  if (progress_) {
    progress_->setRange(Clamped(min), Clamped(std::max(min, max)));
    progress_->setValue(Clamped(min));
    progress_->show();
  }
  SetMessage(message);
}

void QgisStatusBar::HideProgressBar() {
  if (progress_) progress_->hide();
  if (bar_) bar_->clearMessage();
}

void QgisStatusBar::SetMessage(const std::string& message) {
  if (bar_) bar_->showMessage(ToQString(message));
}

void QgisStatusBar::Step() {
  if (progress_) progress_->setValue(std::min(progress_->maximum(), progress_->value() + Clamped(step_)));
}

void QgisStatusBar::SetPosition(long position) {
  if (progress_) progress_->setValue(std::clamp(Clamped(position), progress_->minimum(), progress_->maximum()));
}

void QgisStatusBar::SetStatusText(const std::string& text) { SetMessage(text); }

QString QgisStatusBar::Message() const { return bar_ ? bar_->currentMessage() : QString(); }

}  // namespace tarnwick::desktop
