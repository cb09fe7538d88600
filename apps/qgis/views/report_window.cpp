#include "views/report_window.h"

#include <QFileDialog>

#include "host/qt_text.h"
#include "ui_frmReportDialog.h"
#include "views/dialog_binder.h"
#include "views/report_rendering.h"
#include "views/screen_twips.h"

namespace tarnwick::desktop {

ReportWindow::ReportWindow(platform::host::ReportWindow kind, QWidget* parent, ErrorHost errors)
    : QDialog(parent), kind_(kind), errors_(errors), ui_(std::make_unique<Ui::frmReportDialog>()), printer_(this) {
  ui_->setupUi(this);
  const ReportServices services{clipboard_, printer_, errors.application, errors.document};
  if (kind_ == platform::host::ReportWindow::Modal) {
    model_ = std::make_unique<frmReportDialog>(services);
  } else {
    model_ = std::make_unique<frmModelessReportDialog>(services);
    setWindowFlag(Qt::Tool);
    // However it ends (Exit, the title bar, Escape), the window goes.
    connect(this, &QDialog::finished, this, &QObject::deleteLater);
  }
  binder_ = std::make_unique<DialogBinder>(*model_, *this, errors_);
  binder_->refreshed = [this] { Render(); };
  binder_->resized = [this] { Resized(); };
  connect(ui_->cmdSavePdf, &QPushButton::clicked, this, [this] {
    RunAsEntryPoint("cmdSavePdf_Click ", "frmReportDialog", errors_, [this] {
      const QString path = QFileDialog::getSaveFileName(this, tr("Save the report as PDF"), tr("report.pdf"),
                                                        tr("PDF files (*.pdf)"));
      if (!path.isEmpty()) SaveAsPdf(path);
    });
  });
}

ReportWindow::~ReportWindow() = default;

void ReportWindow::Load(const std::string& report, const std::string& caption) {
  model_->SetReport(report);
  const ScreenSize screen = ScreenTwips(this);
  if (auto* modal = dynamic_cast<frmReportDialog*>(model_.get())) {
    if (!caption.empty()) modal->caption = caption;
    modal->Form_Load(screen, kBottomMarginTwips);
    setWindowFlag(Qt::WindowStaysOnTopHint, modal->topmost);
    resize(static_cast<int>(modal->formBounds.width / kTwipsPerPixel),
           static_cast<int>(modal->formBounds.height / kTwipsPerPixel));
    move(static_cast<int>(modal->formBounds.left / kTwipsPerPixel),
         static_cast<int>(modal->formBounds.top / kTwipsPerPixel));
  } else {
    auto& modeless = dynamic_cast<frmModelessReportDialog&>(*model_);
    modeless.Frame.caption = caption.empty() ? modeless.caption : caption;
    modeless.caption = modeless.Frame.caption;  // the frame's title is the one shown
    modeless.Form_Load(screen);
    modeless.Frame.visible = true;
    resize(static_cast<int>(modeless.Frame.width), static_cast<int>(modeless.Frame.height));
    move(static_cast<int>(modeless.Frame.left), static_cast<int>(modeless.Frame.top));
  }
  binder_->Refresh();
}

// The report is drawn again only when its text changed.
void ReportWindow::Render() {
  if (model_->TextRTF() != rendered_) {
    rendered_ = model_->TextRTF();
    RenderReport(ReadReport(rendered_), *ui_->txtReport->document());
    ui_->txtReport->moveCursor(QTextCursor::Start);  // a report is read from its head
  }
  // The view's own button stays beside Print, as wide as Print and the gap
  // before Exit allow.
  const QRect print = ui_->cmdPrint->geometry();
  const int width = std::min(print.width() * 110 / 97, ui_->cmdOK->x() - print.right() - 16);
  ui_->cmdSavePdf->setGeometry(print.right() + 9, print.top(), std::max(width, 40), print.height());
  if (auto* modeless = dynamic_cast<frmModelessReportDialog*>(model_.get()); modeless && !modeless->Frame.visible) {
    hide();
  }
}

void ReportWindow::Resized() {
  if (auto* modal = dynamic_cast<frmReportDialog*>(model_.get())) {
    modal->Form_Resize();
  } else {
    auto& modeless = dynamic_cast<frmModelessReportDialog&>(*model_);
    modeless.Frame.width = width();
    modeless.Frame.height = height();
    modeless.Form_Resize();
  }
}

void ReportWindow::SaveAsPdf(const QString& path) { SaveReportAsPdf(model_->TextRTF(), path); }

void ShowReportWindow(const platform::host::ReportRequest& report, QWidget* parent, ErrorHost errors) {
  if (report.window == platform::host::ReportWindow::Modal) {
    ReportWindow window(report.window, parent, errors);
    window.Load(report.text, report.caption);
    window.exec();
    return;
  }
  auto* window = new ReportWindow(report.window, parent, errors);  // deletes itself when it ends
  window->Load(report.text, report.caption);
  window->show();
}

}  // namespace tarnwick::desktop
