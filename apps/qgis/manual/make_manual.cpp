// Turns the manual (Markdown) into the PDF the dialogs' "Manual" buttons
// open: make_manual docs/manual.md TNWK_ArcGIS_Tools.pdf
#include <QFile>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextDocument>
#include <cstdio>

int main(int argc, char* argv[]) {
  QGuiApplication app(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_manual MANUAL.md OUT.pdf\n");
    return 2;
  }
  QFile source(QString::fromLocal8Bit(argv[1]));
  if (!source.open(QIODevice::ReadOnly)) {
    std::fprintf(stderr, "make_manual: cannot read %s\n", argv[1]);
    return 1;
  }
  QPdfWriter pdf(QString::fromLocal8Bit(argv[2]));
  pdf.setTitle(QStringLiteral("Tarnwick Tools: user's manual"));
  pdf.setCreator(QStringLiteral("Tarnwick Tools"));
  // QTextDocument::print keeps 2 cm of margin inside the page and numbers the pages.
  pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF()));
  QTextDocument manual;
  manual.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  manual.setMarkdown(QString::fromUtf8(source.readAll()));
  manual.print(&pdf);
  return 0;
}
