#include "views/report_services_qt.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPrintDialog>

#include "host/qt_text.h"
#include "views/report_rendering.h"

namespace tarnwick::desktop {

bool QtClipboard::SetReport(const std::string& plainText, const std::optional<std::string>& rtf) {
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (!clipboard) return false;
  clipboard->clear();
  auto data = std::make_unique<QMimeData>();
  data->setText(ToQString(plainText));
  if (rtf) {
    const QByteArray bytes = QByteArray::fromStdString(*rtf);
    data->setData(QStringLiteral("text/rtf"), bytes);
    data->setData(QStringLiteral("application/rtf"), bytes);
  }
  clipboard->setMimeData(data.release());
  return clipboard->mimeData() && clipboard->mimeData()->hasText();
}

bool QtReportPrinter::ShowPrinterDialog() {
  QPrintDialog dialog(&printer_, parent_);
  dialog.setObjectName(QStringLiteral("ReportPrintDialog"));
  return dialog.exec() == QDialog::Accepted;
}

void QtReportPrinter::PrintReport(const std::string& report, const PageMargins& margins) {
  PrintReportOn(printer_, report, margins);
}

void SaveReportAsPdf(const std::string& report, const QString& path, const PageMargins& margins) {
  QPrinter pdf(QPrinter::HighResolution);
  pdf.setOutputFormat(QPrinter::PdfFormat);
  pdf.setOutputFileName(path);
  pdf.setCreator(QStringLiteral("Tarnwick Tools"));
  PrintReportOn(pdf, report, margins);
}

}  // namespace tarnwick::desktop
