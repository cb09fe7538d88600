#pragma once
// The report windows' clipboard and printer on Qt.
#include <QPointer>
#include <QPrinter>
#include <QWidget>

#include "presentation/report_services.h"


namespace tarnwick::desktop {

// Puts the plain text and, beside it, the RTF ("text/rtf") on the clipboard.
class QtClipboard : public Clipboard {
 public:
  bool SetReport(const std::string& plainText, const std::optional<std::string>& rtf) override;
};

// The system's printer dialog, then the report page after page.
class QtReportPrinter : public ReportPrinter {
 public:
  explicit QtReportPrinter(QWidget* parent) : parent_(parent), printer_(QPrinter::HighResolution) {}
  bool ShowPrinterDialog() override;
  void PrintReport(const std::string& report, const PageMargins& margins) override;
  QPrinter& Printer() { return printer_; }

 private:
  QPointer<QWidget> parent_;
  QPrinter printer_;
};

// Writes the report as a PDF file of the pages the printer would print.
void SaveReportAsPdf(const std::string& report, const QString& path, const PageMargins& margins = {});

}  // namespace tarnwick::desktop
