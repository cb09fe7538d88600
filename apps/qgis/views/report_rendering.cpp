#include "views/report_rendering.h"

#include <QAbstractTextDocumentLayout>
#include <cmath>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include "host/qt_text.h"

namespace tarnwick::desktop {

namespace {

constexpr double kLayoutDpi = 96;
constexpr double kTwipsPerLayoutPixel = 1440 / kLayoutDpi;

Qt::Alignment AlignmentOf(RtfAlignment alignment) {
  switch (alignment) {
    case RtfAlignment::Center: return Qt::AlignHCenter;
    case RtfAlignment::Right: return Qt::AlignRight;
    case RtfAlignment::Justified: return Qt::AlignJustify;
    case RtfAlignment::Left: break;
  }
  return Qt::AlignLeft;
}

QTextCharFormat FormatOf(const RtfStyle& style) {
  QTextCharFormat format;
  format.setFontWeight(style.bold ? QFont::Bold : QFont::Normal);
  format.setFontItalic(style.italic);
  format.setFontUnderline(style.underline);
  format.setFontPointSize(style.fontSize / 2.0);
  if (!style.font.empty()) format.setFontFamily(ToQString(style.font));
  if (style.color) format.setForeground(QColor(style.color->red, style.color->green, style.color->blue));
  return format;
}

QTextBlockFormat BlockFormatOf(const RtfParagraph& paragraph) {
  QTextBlockFormat format;
  format.setAlignment(AlignmentOf(paragraph.alignment));
  QList<QTextOption::Tab> tabs;
  for (const int stop : paragraph.tabStops) tabs << QTextOption::Tab(stop / kTwipsPerLayoutPixel, QTextOption::LeftTab);
  format.setTabPositions(tabs);
  return format;
}

// A paint device of 96 dots to the inch, so that a printed page is laid out
// in the same pixels whatever the screen.
QImage LayoutDevice() {
  QImage image(1, 1, QImage::Format_RGB32);
  const int dotsPerMeter = qRound(kLayoutDpi / 0.0254);
  image.setDotsPerMeterX(dotsPerMeter);
  image.setDotsPerMeterY(dotsPerMeter);
  return image;
}

}  // namespace

void RenderReport(const RtfDocument& report, QTextDocument& document) {
  document.clear();
  QTextCursor cursor(&document);
  bool first = true;
  for (const RtfParagraph& paragraph : report.paragraphs) {
    if (first) {
      cursor.setBlockFormat(BlockFormatOf(paragraph));
    } else {
      cursor.insertBlock(BlockFormatOf(paragraph));
    }
    // An empty paragraph keeps the height of the style it would have had.
    const RtfStyle blockStyle = paragraph.runs.empty() ? RtfStyle{} : paragraph.runs.front().style;
    cursor.setBlockCharFormat(FormatOf(blockStyle));
    for (const RtfRun& run : paragraph.runs) {
      QString text = ToQString(run.text);
      text.replace(QLatin1Char('\n'), QChar::LineSeparator);
      cursor.insertText(text, FormatOf(run.style));
    }
    first = false;
  }
}

int PrintReportOn(QPrinter& printer, const std::string& report, const PageMargins& margins) {
  printer.setFullPage(false);
  printer.setPageMargins(QMarginsF(margins.left / 1440.0, margins.top / 1440.0, margins.right / 1440.0,
                                   margins.bottom / 1440.0),
                         QPageLayout::Inch);
  QImage layoutDevice = LayoutDevice();
  QTextDocument document;
  RenderReport(ReadReport(report), document);
  document.documentLayout()->setPaintDevice(&layoutDevice);
  document.setDocumentMargin(0);
  // The page inside the margins, in whole layout pixels; the document breaks
  // its lines and pages to it, and a line it moved to the next page starts
  // exactly where that page does.
  const QRectF inches = printer.pageLayout().paintRect(QPageLayout::Inch);
  const QSizeF page(std::floor(inches.width() * kLayoutDpi), std::floor(inches.height() * kLayoutDpi));
  document.setPageSize(page);
  const int pages = document.pageCount();

  QPainter painter(&printer);
  painter.scale(printer.resolution() / kLayoutDpi, printer.resolution() / kLayoutDpi);
  for (int i = 0; i < pages; ++i) {
    if (i > 0) printer.newPage();
    painter.save();
    painter.translate(0, -i * page.height());
    // Only the lines that start on this page: the clip ends just short of the next.
    document.drawContents(&painter, QRectF(0, i * page.height(), page.width(), page.height() - 0.01));
    painter.restore();
  }
  painter.end();
  return pages;
}

}  // namespace tarnwick::desktop
