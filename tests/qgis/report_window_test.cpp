// The report windows on Qt: a plain report shown and copied as it is, a
// report printed page after page inside one-inch margins, and the controls
// following the window's size. (A real run's report, formatted and copied,
// is checked with the waypoint dialog's run.)
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>

#include "testkit/temp_dir.h"
#include "ui_frmReportDialog.h"
#include "views/report_services_qt.h"
#include "views/report_window.h"

namespace tarnwick::desktop::testing {
namespace {

struct PdfWord {
  double xMin, yMin, yMax;
  QString text;
};
struct PdfPage {
  double height = 0;
  std::vector<PdfWord> words;
};

// The words of each page with their boxes, in points, as poppler reads them.
std::vector<PdfPage> ReadPdfWords(const QString& path) {
  QProcess pdftotext;
  pdftotext.start("pdftotext", {"-bbox", path, "-"});
  if (!pdftotext.waitForFinished(30000)) return {};
  const QString html = QString::fromUtf8(pdftotext.readAllStandardOutput());
  std::vector<PdfPage> pages;
  const QRegularExpression element(
      R"re(<page width="[\d.]+" height="([\d.]+)">|<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="[\d.]+" yMax="([\d.]+)">([^<]*)</word>)re");
  for (auto match = element.globalMatch(html); match.hasNext();) {
    const auto m = match.next();
    if (!m.captured(1).isEmpty()) {
      pages.push_back({m.captured(1).toDouble(), {}});
    } else if (!pages.empty()) {
      pages.back().words.push_back({m.captured(2).toDouble(), m.captured(3).toDouble(), m.captured(4).toDouble(),
                                    m.captured(5)});
    }
  }
  return pages;
}

TEST(ReportWindow, PrintsEveryLineOncePageAfterPageInsideOneInchMargins) {
  if (QProcess::execute("pdftotext", {"-v"}) < 0) GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
  std::string report = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}{\colortbl;\red0\green0\blue255;}\f0\fs24 )";
  for (int i = 1; i <= 150; ++i) report += "\\b Line\\b0  \\cf1 " + std::to_string(i) + "\\cf0\\par ";
  report += "}";
  testkit::TempDir dir;
  const QString path = QString::fromStdString(dir / "report.pdf");
  SaveReportAsPdf(report, path);

  const auto pages = ReadPdfWords(path);
  ASSERT_GE(pages.size(), 3u);
  int expected = 1;
  std::vector<int> linesPerPage;
  for (const PdfPage& page : pages) {
    int lines = 0;
    for (std::size_t i = 0; i + 1 < page.words.size(); i += 2) {
      EXPECT_EQ(page.words[i].text, "Line");
      EXPECT_EQ(page.words[i + 1].text.toInt(), expected++);
      EXPECT_NEAR(page.words[i].xMin, 72, 1.5);  // one inch from the left edge
      EXPECT_LE(page.words[i].yMax, page.height - 72 + 0.5);
      ++lines;
    }
    ASSERT_FALSE(page.words.empty());
    EXPECT_GE(page.words.front().yMin, 72 - 0.5);  // the first line starts at the top margin
    EXPECT_LE(page.words.front().yMin, 76);
    linesPerPage.push_back(lines);
  }
  EXPECT_EQ(expected, 151);  // every line once, in order
  // Full pages but the last, which holds the rest.
  EXPECT_EQ(static_cast<int>(pages.size()), (150 + linesPerPage[0] - 1) / linesPerPage[0]);
}

QRect Geometry(const ReportWindow& window, const char* control) {
  return window.findChild<QWidget*>(control)->geometry();
}

// A plain report is shown and copied as it is. The layout's arithmetic is the
// report models' own; here a resized window reaches them, and their places
// reach the widgets (Save as PDF beside Print).
TEST(ReportWindow, APlainReportIsCopiedAsItIsAndTheControlsFollowTheWindowsSize) {
  ReportWindow modal(platform::host::ReportWindow::Modal, nullptr, {});
  modal.Load("Plot 7: 2 points\nPlot 9: 3 points", " Problems with Plot ID Values:");
  EXPECT_EQ(modal.windowTitle(), " Problems with Plot ID Values:");
  EXPECT_EQ(modal.Form().txtReport->toPlainText(), "Plot 7: 2 points\nPlot 9: 3 points");
  modal.Form().cmdCopy->click();
  const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
  EXPECT_FALSE(copied->hasFormat("text/rtf"));
  EXPECT_EQ(copied->text(), "Plot 7: 2 points\nPlot 9: 3 points");

  modal.show();
  const QRect report = Geometry(modal, "txtReport");
  modal.resize(modal.size() + QSize(200, 100));
  EXPECT_EQ(Geometry(modal, "txtReport"), report.adjusted(0, 0, 200, 100));
  EXPECT_EQ(Geometry(modal, "cmdSavePdf").topLeft(), Geometry(modal, "cmdPrint").topRight() + QPoint(9, 0));

  auto* modeless = new ReportWindow(platform::host::ReportWindow::Modeless, nullptr, {});
  modeless->Load("{\\rtf1 Plots laid out\\par}", "Analysis Complete:");
  modeless->show();
  const QRect text = Geometry(*modeless, "txtReport");
  modeless->resize(modeless->size() + QSize(120, 60));
  EXPECT_EQ(Geometry(*modeless, "txtReport"), text.adjusted(0, 0, 120, 60));
  modeless->findChild<QPushButton*>("cmdOK")->click();
  EXPECT_FALSE(modeless->isVisible());
}

}  // namespace
}  // namespace tarnwick::desktop::testing
