#pragma once
// The two report windows: frmReportDialog, modal and anchored, and
// frmModelessReportDialog, a tool window that stays open beside the map. One
// form (forms/frmReportDialog.ui) serves both; the models decide how each is
// placed and follows its size. The report is shown formatted, copied as RTF
// and plain text, printed, or saved as a PDF of the printed pages.
#include <QDialog>
#include <memory>
#include <string>

#include "host/entry_point.h"
#include "platform/host/application.h"
#include "presentation/report_dialog.h"
#include "views/report_services_qt.h"

namespace Ui {
class frmReportDialog;
}

namespace tarnwick::desktop {

class DialogBinder;

class ReportWindow : public QDialog {
  Q_OBJECT
 public:
  ReportWindow(platform::host::ReportWindow kind, QWidget* parent, ErrorHost errors);
  ~ReportWindow() override;

  // The report's text (RTF or plain) and the window's caption ("" keeps
  // " Report"); then places the window as its model says.
  void Load(const std::string& report, const std::string& caption);
  ReportDialog& Model() { return *model_; }
  const Ui::frmReportDialog& Form() const { return *ui_; }
  // Saves the pages the printer would print (the "Save as PDF" button).
  void SaveAsPdf(const QString& path);

 private:
  void Render();
  void Resized();

  platform::host::ReportWindow kind_;
  ErrorHost errors_;
  std::unique_ptr<Ui::frmReportDialog> ui_;
  QtClipboard clipboard_;
  QtReportPrinter printer_;
  std::unique_ptr<ReportDialog> model_;
  std::unique_ptr<DialogBinder> binder_;
  std::string rendered_;
};

// Shows a report: modal windows return when closed, modeless ones at once
// (they delete themselves when closed).
void ShowReportWindow(const platform::host::ReportRequest& report, QWidget* parent, ErrorHost errors);

}  // namespace tarnwick::desktop
