#pragma once
// Reads the RTF subset the reports are written in into paragraphs of styled
// runs, for a view to render (the desktop's report windows) or to flatten
// into plain text (the terminal, the clipboard's plain form).
//
// Understood: groups; \par, \line, \tab, \page, \sect; \b, \i, \ul, \ulnone,
// \fs, \f with the font table, \cf with the colour table, \plain; \pard,
// \ql, \qc, \qr, \qj, \tx; \'hh (code page 1252), \uN with \ucN; \binN;
// the escaped symbols \\ \{ \} \~ \_; the quote and dash words. Destinations
// without text (\*..., \info, \stylesheet, \pict, headers, footers) are
// skipped; every other word (\lang, \viewkind, \sl, ...) is read and has no
// effect here. Reading takes time and memory in proportion to the text,
// whatever its nesting.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/map_document.h"

namespace tarnwick {

using platform::host::Rgb;

struct RtfStyle {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  int fontSize = 24;          // half-points
  std::optional<Rgb> color;   // none: the view's default text colour
  std::string font;           // the font table's name; "" when unknown
  friend bool operator==(const RtfStyle&, const RtfStyle&) = default;
};

// Text in UTF-8, "\t" for a tab and "\n" for a line break inside the
// paragraph.
struct RtfRun {
  std::string text;
  RtfStyle style;
};

enum class RtfAlignment { Left, Center, Right, Justified };

struct RtfParagraph {
  std::vector<RtfRun> runs;  // none for an empty line
  RtfAlignment alignment = RtfAlignment::Left;
  std::vector<int> tabStops;  // twips from the left edge, as given
  std::string PlainText() const;
};

// Every paragraph break ends one paragraph and starts the next, so a text
// that ends with \par ends with an empty paragraph. There is always at least
// one paragraph.
struct RtfDocument {
  std::vector<RtfParagraph> paragraphs;
  // The paragraphs' text joined by "\n".
  std::string PlainText() const;
};

// Whether a report text is RTF: it starts with "{\rtf".
bool IsRtf(std::string_view text);

// Reads text as RTF, whatever its start.
RtfDocument ReadRtf(std::string_view rtf);

// A report as a report window shows it: RTF when IsRtf, else plain text
// with one paragraph per line (lines end with "\r\n", "\n" or "\r").
RtfDocument ReadReport(std::string_view text);

}  // namespace tarnwick
