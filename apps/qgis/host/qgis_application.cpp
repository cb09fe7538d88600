#include "host/qgis_application.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QUrl>
#include <QVBoxLayout>

#include <qgsmapcanvas.h>

#include "host/qt_text.h"
#include "host/save_dialogs.h"
#include "platform/version.h"

namespace tarnwick::desktop {

namespace {

using platform::host::MessageButtons;
using platform::host::MessageIcon;
using platform::host::MessageResult;

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information: return QMessageBox::Information;
    case MessageIcon::Exclamation: return QMessageBox::Warning;
    case MessageIcon::Critical: return QMessageBox::Critical;
    case MessageIcon::Question: return QMessageBox::Question;
    case MessageIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageButtons::OK: break;
  }
  return QMessageBox::Ok;
}

MessageResult ResultOf(int button) {
  switch (button) {
    case QMessageBox::Yes: return MessageResult::Yes;
    case QMessageBox::No: return MessageResult::No;
    case QMessageBox::Cancel: return MessageResult::Cancel;
    default: return MessageResult::OK;
  }
}

}  // namespace

QgisApplication::QgisApplication(QWidget* mainWindow, QgsMapCanvas* canvas, QgsStatusBar* statusBar,
                                 std::string programFolder)
    : mainWindow_(mainWindow), canvas_(canvas), statusBar_(statusBar), programFolder_(std::move(programFolder)) {}

MessageResult QgisApplication::MessageBox(const std::string& text, const std::string& title, MessageButtons buttons,
                                          MessageIcon icon) {
  QMessageBox box(IconOf(icon), ToQString(title), ToQString(text), ButtonsOf(buttons), mainWindow_);
  box.setObjectName(QStringLiteral("TarnwickMessageBox"));
  if (buttons == MessageButtons::YesNo) box.setEscapeButton(QMessageBox::No);
  return ResultOf(box.exec());
}

// The error road's window: the whole stack, selectable, in a box that can grow.
void QgisApplication::ShowMessageWindow(const std::string& text) {
  QDialog window(mainWindow_);
  window.setObjectName(QStringLiteral("TarnwickMessageWindow"));
  window.setWindowTitle(QStringLiteral("Tarnwick Tools"));
  auto* layout = new QVBoxLayout(&window);
  auto* view = new QPlainTextEdit(ToQString(text));
  view->setReadOnly(true);
  view->setLineWrapMode(QPlainTextEdit::NoWrap);
  layout->addWidget(view);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &window, &QDialog::accept);
  layout->addWidget(buttons);
  window.resize(720, 420);
  window.exec();
}

void QgisApplication::DoEvents() { QCoreApplication::processEvents(); }

platform::host::Version QgisApplication::GetVersion() const {
  return {platform::kVersionMajor, platform::kVersionMinor, platform::kVersionRevision};
}

std::string QgisApplication::CurrentTool() const {
  return canvas_ ? mapTools_.ProgIdOf(canvas_->mapTool()) : std::string();
}

void QgisApplication::SetCurrentTool(const std::string& progId) {
  if (!canvas_) return;
  if (progId.empty()) {
    if (QgsMapTool* current = canvas_->mapTool(); current && !mapTools_.ProgIdOf(current).empty()) {
      canvas_->unsetMapTool(current);
    }
  } else if (QgsMapTool* tool = mapTools_.Find(progId)) {
    canvas_->setMapTool(tool);
  }
}

void QgisApplication::RefreshCommandItem(const std::string& progId) {
  if (commandRefresher) commandRefresher(progId);
}

std::optional<platform::host::DatasetSaveChoice> QgisApplication::BrowseForNewDataset(const std::string& title,
                                                                                     const std::string& suggestedName) {
  return desktop::BrowseForNewDataset(mainWindow_, title, suggestedName);
}

std::optional<std::string> QgisApplication::BrowseForSaveFile(const platform::host::FileSaveRequest& request) {
  return desktop::BrowseForSaveFile(mainWindow_, request);
}

void QgisApplication::ShowReport(const platform::host::ReportRequest& report) {
  if (reportPresenter) reportPresenter(report);
}

void QgisApplication::OpenDocument(const std::string& path) {
  QDesktopServices::openUrl(QUrl::fromLocalFile(ToQString(path)));
}

void QgisApplication::RefreshWindow() {
  if (mainWindow_) {
    mainWindow_->raise();
    mainWindow_->update();
  }
  DoEvents();
}

}  // namespace tarnwick::desktop
