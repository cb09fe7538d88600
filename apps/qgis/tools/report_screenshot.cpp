// Draws a report window offscreen and saves it as an image, for the
// screenshots in the README: report_screenshot REPORT.rtf OUT.png [CAPTION]
#include <QApplication>
#include <QFile>
#include <cstdio>

#include "views/report_window.h"

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  if (argc < 3) {
    std::fprintf(stderr, "usage: report_screenshot REPORT.rtf OUT.png [CAPTION]\n");
    return 2;
  }
  QFile report(QString::fromLocal8Bit(argv[1]));
  if (!report.open(QIODevice::ReadOnly)) {
    std::fprintf(stderr, "report_screenshot: cannot read %s\n", argv[1]);
    return 1;
  }
  using tarnwick::desktop::ReportWindow;
  ReportWindow window(tarnwick::platform::host::ReportWindow::Modeless, nullptr, {});
  window.Load(report.readAll().toStdString(), argc > 3 ? argv[3] : "Analysis Complete:");
  window.show();
  QApplication::processEvents();
  return window.grab().save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}
