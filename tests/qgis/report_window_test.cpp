// The report windows on Qt: a real run's report shown formatted, copied in
// both forms, printed page after page inside one-inch margins, and its
// controls following the window's size.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextEdit>
#include <filesystem>

#include "desktop_fixture.h"
#include "shell/extension.h"
#include "testkit/temp_dir.h"
#include "toolbar/tarnwick_toolbar.h"
#include "ui_frmReportDialog.h"
#include "views/report_services_qt.h"
#include "views/report_window.h"
#include "waypoints/create_waypoint_file.h"

namespace tarnwick::desktop::testing {
namespace {

TEST(ReportWindow, ShowsARealRunsReportFormattedAndCopiesBothForms) {
  testkit::TempDir dir;
  WaypointParameters parameters;
  parameters.pointLayer = WritePlotPoints(dir / "plots.gpkg", "Plots", 3);
  parameters.plotIdField = parameters.pointLayer.featureClass->Fields().at(2);
  parameters.outputPath = dir / "plots.way";
  MiniDesktop desktop;
  DesktopSession session(desktop.Windows());
  session.Dialogs().RegisterModal("Tarnwick.cmdTNWKWPConverter", [&](const DialogContext&) {
    return std::make_unique<AnsweringDialog>([&](HostArray& host) {
      host.extension.frmLayerIDReturn = parameters;
      host.extension.ShouldContinue = true;
    });
  });

  bool inspected = false;
  ModalWatcher watcher;
  watcher.inspect = [&](QWidget* modal) {
    auto* window = qobject_cast<ReportWindow*>(modal);
    if (!window) return;
    inspected = true;
    EXPECT_EQ(window->windowTitle(), " Report");
    // "Point layer: " plain, the layer's name bold and coloured.
    bool plainLabel = false, boldColouredName = false;
    for (QTextBlock block = window->Form().txtReport->document()->begin(); block.isValid(); block = block.next()) {
      for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QTextCharFormat format = fragment.charFormat();
        if (fragment.text().contains("Point layer:")) plainLabel = format.fontWeight() == QFont::Normal;
        if (fragment.text().trimmed() == "Plots") {
          boldColouredName = format.fontWeight() == QFont::Bold && format.foreground().color() != QColor(Qt::black);
        }
      }
    }
    EXPECT_TRUE(plainLabel);
    EXPECT_TRUE(boldColouredName);
    window->Form().cmdCopy->click();
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->data("text/rtf").toStdString(), window->Model().TextRTF());
    EXPECT_EQ(copied->text().toStdString(), window->Model().Text());
    EXPECT_TRUE(copied->text().contains("Point layer:"));
    window->Form().cmdOK->click();
  };
  session.Toolbar().Action("Tarnwick.cmdTNWKWPConverter")->trigger();
  EXPECT_TRUE(inspected);
  EXPECT_TRUE(std::filesystem::exists(dir / "plots.way"));
  EXPECT_TRUE(desktop.project->isDirty());
}

TEST(ReportWindow, APlainTextReportIsShownAndCopiedAsPlainText) {
  ReportWindow window(platform::host::ReportWindow::Modal, nullptr, {});
  window.Load("Plot 7: 2 points\nPlot 9: 3 points", " Problems with Plot ID Values:");
  EXPECT_EQ(window.windowTitle(), " Problems with Plot ID Values:");
  EXPECT_EQ(window.Form().txtReport->toPlainText(), "Plot 7: 2 points\nPlot 9: 3 points");
  window.Form().cmdCopy->click();
  const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
  EXPECT_FALSE(copied->hasFormat("text/rtf"));
  EXPECT_EQ(copied->text(), "Plot 7: 2 points\nPlot 9: 3 points");
}

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

TEST(ReportWindow, ControlsFollowTheWindowsSize) {
  ReportWindow modal(platform::host::ReportWindow::Modal, nullptr, {});
  modal.Load("{\\rtf1 Short report\\par}", "");
  modal.show();
  const QSize before = modal.size();
  const QRect report = Geometry(modal, "txtReport"), ok = Geometry(modal, "cmdOK"), copy = Geometry(modal, "cmdCopy"),
              corner = Geometry(modal, "imgCornerBars");
  modal.resize(before + QSize(200, 100));
  EXPECT_EQ(Geometry(modal, "txtReport").size(), report.size() + QSize(200, 100));  // stretches
  EXPECT_EQ(Geometry(modal, "txtReport").topLeft(), report.topLeft());
  EXPECT_EQ(Geometry(modal, "cmdOK").top(), ok.top() + 100);  // follows the bottom
  EXPECT_NEAR(Geometry(modal, "cmdOK").left(), ok.left() * (before.width() + 200.0) / before.width(), 1.0);
  EXPECT_EQ(Geometry(modal, "cmdSavePdf").left(), Geometry(modal, "cmdPrint").right() + 9);
  // The buttons' places and widths scale with the width, their heights stay.
  const double widthRatio = (before.width() + 200.0) / before.width();
  EXPECT_NEAR(Geometry(modal, "cmdCopy").width(), copy.width() * widthRatio, 1.0);
  EXPECT_EQ(Geometry(modal, "cmdCopy").height(), copy.height());
  EXPECT_EQ(Geometry(modal, "imgCornerBars").topLeft(), corner.topLeft() + QPoint(200, 100));
  EXPECT_EQ(Geometry(modal, "cmdSavePdf").top(), ok.top() + 100);

  auto* modeless = new ReportWindow(platform::host::ReportWindow::Modeless, nullptr, {});
  modeless->Load("{\\rtf1 Plots laid out\\par}", "Analysis Complete:");
  modeless->show();
  EXPECT_EQ(modeless->windowTitle(), "Analysis Complete:");
  const QRect text = Geometry(*modeless, "txtReport");
  modeless->resize(modeless->size() + QSize(120, 60));
  EXPECT_EQ(Geometry(*modeless, "txtReport").size(), text.size() + QSize(120, 60));
  // Narrower than 2000 twips the widths stay; the heights still follow.
  const QRect wide = Geometry(*modeless, "txtReport");
  modeless->resize(120, modeless->height() + 40);
  EXPECT_EQ(Geometry(*modeless, "txtReport").width(), wide.width());
  EXPECT_EQ(Geometry(*modeless, "txtReport").height(), wide.height() + 40);
  modeless->findChild<QPushButton*>("cmdOK")->click();
  EXPECT_FALSE(modeless->isVisible());
}

}  // namespace
}  // namespace tarnwick::desktop::testing
