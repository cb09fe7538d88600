#include "presentation/rtf_reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>

namespace tarnwick {
namespace {

// Nesting beyond this depth is counted but keeps the state of the deepest
// group, so a text of braces alone cannot make the group stack grow with it.
constexpr std::size_t kMaxDepth = 256;
// Font names are short (31 characters on the platform the reports come
// from); a longer one is cut so that no run carries a long copy of it.
constexpr std::size_t kMaxFontName = 64;
constexpr std::size_t kMaxTabStops = 64;
constexpr int kDefaultFontSize = 24;

// Windows-1252 code points for bytes 0x80..0x9F (0 where the code page has
// no character); every other byte is its Latin-1 code point.
constexpr char32_t kCp1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

char32_t FromCp1252(unsigned byte) {
  if (byte >= 0x80 && byte < 0xA0) return kCp1252High[byte - 0x80] ? kCp1252High[byte - 0x80] : U'?';
  return byte;
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Where the text of a group goes.
enum class Destination { Body, Skipped, FontTable, ColorTable };

// What a group inherits from its parent and gets back at its end.
struct GroupState {
  Destination destination = Destination::Body;
  long unicodeFallback = 1;  // characters after \uN that stand in for it
  bool bold = false;
  bool italic = false;
  bool underline = false;
  int fontSize = kDefaultFontSize;
  int font = -1;   // font table number; -1 the document's default font
  long color = 0;  // colour table index; 0 the default colour
  RtfAlignment alignment = RtfAlignment::Left;
  std::vector<int> tabStops;
};

struct ControlWord {
  std::string_view word;
  bool hasParam = false;
  long param = 0;
};

class Reader {
 public:
  explicit Reader(std::string_view rtf) : rtf_(rtf) {
    groups_.emplace_back();
    document_.paragraphs.emplace_back();
  }

  RtfDocument Run() {
    while (pos_ < rtf_.size()) {
      const char c = rtf_[pos_++];
      if (c == '{') {
        OpenGroup();
      } else if (c == '}') {
        CloseGroup();
      } else if (c == '\\') {
        ControlSymbolOrWord();
      } else if (c == '\r' || c == '\n') {
        // line ends in RTF source carry no meaning
      } else if (!ConsumeFallback()) {
        if (InBody()) {
          PlainSpan();
        } else {
          Character(c);
        }
      }
    }
    FlushSurrogate();
    if (groups_.size() > 1) CloseParagraph();  // a document left open
    return std::move(document_);
  }

 private:
  GroupState& State() { return groups_.back(); }
  bool InBody() const { return groups_.back().destination == Destination::Body; }

  void OpenGroup() {
    if (groups_.size() >= kMaxDepth) {
      ++overflowDepth_;
      return;
    }
    groups_.push_back(groups_.back());
  }

  void CloseGroup() {
    pendingFallback_ = 0;
    if (overflowDepth_ > 0) {
      --overflowDepth_;
    } else if (groups_.size() > 1) {
      if (groups_.back().destination == Destination::FontTable) CommitFont();
      // The document's own group ends: its last paragraph keeps the
      // properties in force inside it.
      if (groups_.size() == 2) CloseParagraph();
      groups_.pop_back();
    }
    styleStale_ = true;
  }

  // True when this character is the stand-in after a \uN and is dropped.
  bool ConsumeFallback() {
    if (pendingFallback_ <= 0) return false;
    --pendingFallback_;
    return true;
  }

  // Text of the body from the character just read up to the next one that
  // means more than itself, appended at once.
  void PlainSpan() {
    const std::size_t start = pos_ - 1;
    while (pos_ < rtf_.size() && !IsSpecial(rtf_[pos_])) ++pos_;
    FlushSurrogate();
    Append(rtf_.substr(start, pos_ - start));
  }
  static bool IsSpecial(char c) { return c == '{' || c == '}' || c == '\\' || c == '\r' || c == '\n'; }

  // A plain character of the source, by where its group's text goes.
  void Character(char c) {
    switch (State().destination) {
      case Destination::Body:
        FlushSurrogate();
        Append(std::string_view(&c, 1));
        break;
      case Destination::FontTable:
        if (c == ';') {
          CommitFont();
        } else if (fontName_.size() < kMaxFontName) {
          fontName_ += c;
        }
        break;
      case Destination::ColorTable:
        if (c == ';') CommitColor();
        break;
      case Destination::Skipped:
        break;
    }
  }

  void Emit(char32_t cp) {
    if (State().destination == Destination::FontTable) {
      if (fontName_.size() < kMaxFontName) AppendUtf8(fontName_, cp);
      return;
    }
    if (!InBody()) return;
    FlushSurrogate();
    std::string utf8;
    AppendUtf8(utf8, cp);
    Append(utf8);
  }

  void EmitUnicode(long value) {
    if (value < 0) value += 65536;
    if (!InBody()) return;
    if (value < 0 || value > 0x10FFFF) {
      Emit(U'\uFFFD');
      return;
    }
    const auto cp = static_cast<char32_t>(value);
    if (cp >= 0xD800 && cp < 0xDC00) {
      FlushSurrogate();
      highSurrogate_ = cp;
      return;
    }
    if (cp >= 0xDC00 && cp < 0xE000) {
      if (!highSurrogate_) {
        Emit(U'\uFFFD');
        return;
      }
      const char32_t full = 0x10000 + ((highSurrogate_ - 0xD800) << 10) + (cp - 0xDC00);
      highSurrogate_ = 0;
      Emit(full);
      return;
    }
    Emit(cp);
  }

  void FlushSurrogate() {
    if (highSurrogate_) {
      highSurrogate_ = 0;
      Emit(U'\uFFFD');
    }
  }

  void Append(std::string_view text) {
    auto& runs = document_.paragraphs.back().runs;
    if (styleStale_) {
      style_ = CurrentStyle();
      styleStale_ = false;
      lastRunMatches_ = !runs.empty() && runs.back().style == style_;
    }
    if (runs.empty() || !lastRunMatches_) {
      runs.push_back({std::string(text), style_});
      lastRunMatches_ = true;
    } else {
      runs.back().text += text;
    }
  }

  RtfStyle CurrentStyle() const {
    const GroupState& s = groups_.back();
    RtfStyle style{.bold = s.bold, .italic = s.italic, .underline = s.underline, .fontSize = s.fontSize};
    if (s.color > 0 && static_cast<std::size_t>(s.color) < colors_.size()) style.color = colors_[s.color];
    const auto font = fonts_.find(s.font < 0 ? defaultFont_ : s.font);
    if (font != fonts_.end()) style.font = font->second;
    return style;
  }

  // Ends the current paragraph with the paragraph properties in force.
  void CloseParagraph() {
    RtfParagraph& paragraph = document_.paragraphs.back();
    paragraph.alignment = State().alignment;
    paragraph.tabStops = State().tabStops;
  }

  void BreakParagraph() {
    if (!InBody()) return;
    FlushSurrogate();
    CloseParagraph();
    document_.paragraphs.emplace_back();
  }

  void CommitFont() {
    if (fontNumber_ >= 0) {
      const auto first = fontName_.find_first_not_of(' ');
      const auto last = fontName_.find_last_not_of(' ');
      fonts_[fontNumber_] = first == std::string::npos ? std::string() : fontName_.substr(first, last - first + 1);
      styleStale_ = true;
    }
    fontNumber_ = -1;
    fontName_.clear();
  }

  void CommitColor() {
    colors_.push_back(colorGiven_ ? std::optional<Rgb>(color_) : std::nullopt);
    color_ = {};
    colorGiven_ = false;
    styleStale_ = true;
  }

  void ControlSymbolOrWord() {
    if (pos_ >= rtf_.size()) return;
    if (IsLetter(rtf_[pos_])) {
      Word(ReadControlWord());
      return;
    }
    const char c = rtf_[pos_++];
    switch (c) {
      case '\\':
      case '{':
      case '}':
        if (!ConsumeFallback()) Character(c);
        break;
      case '~':
        if (!ConsumeFallback()) Emit(U'\u00A0');
        break;
      case '_':
        if (!ConsumeFallback()) Emit(U'-');
        break;
      case '\'': {
        const int hi = pos_ < rtf_.size() ? HexValue(rtf_[pos_]) : -1;
        const int lo = pos_ + 1 < rtf_.size() ? HexValue(rtf_[pos_ + 1]) : -1;
        if (hi < 0 || lo < 0) break;
        pos_ += 2;
        if (!ConsumeFallback()) Emit(FromCp1252(static_cast<unsigned>(hi * 16 + lo)));
        break;
      }
      case '*':
        State().destination = Destination::Skipped;
        break;
      case '\r':
      case '\n':
        BreakParagraph();  // a backslash before a line end is a paragraph mark
        break;
      default:
        break;  // "\-" optional hyphen, "\|" and the like show nothing
    }
  }

  ControlWord ReadControlWord() {
    ControlWord w;
    const std::size_t start = pos_;
    while (pos_ < rtf_.size() && IsLetter(rtf_[pos_])) ++pos_;
    w.word = rtf_.substr(start, pos_ - start);
    bool negative = false;
    if (pos_ + 1 < rtf_.size() && rtf_[pos_] == '-' && IsDigit(rtf_[pos_ + 1])) {
      negative = true;
      ++pos_;
    }
    // Parameters are 32-bit at most; longer digit runs saturate.
    constexpr long kLimit = std::numeric_limits<std::int32_t>::max();
    while (pos_ < rtf_.size() && IsDigit(rtf_[pos_])) {
      w.hasParam = true;
      w.param = std::min(kLimit, w.param * 10 + (rtf_[pos_] - '0'));
      ++pos_;
    }
    if (negative) w.param = -w.param;
    if (pos_ < rtf_.size() && rtf_[pos_] == ' ') ++pos_;  // the delimiter belongs to the word
    return w;
  }

  void Word(const ControlWord& w) {
    const std::string_view word = w.word;
    if (word == "u" && w.hasParam) {
      EmitUnicode(w.param);
      pendingFallback_ = State().unicodeFallback;
      return;
    }
    if (word == "uc" && w.hasParam) {
      State().unicodeFallback = std::max(0L, w.param);
      return;
    }
    if (Destinations(word)) return;
    pendingFallback_ = 0;
    if (Breaks(w) || Characters(word) || CharacterFormat(w) || ParagraphFormat(w) || Tables(w)) return;
    if (word == "bin" && w.hasParam) {
      // Raw bytes that are no text.
      pos_ += std::min(static_cast<std::size_t>(std::max(0L, w.param)), rtf_.size() - pos_);
    }
  }

  bool Destinations(std::string_view word) {
    if (word == "fonttbl") {
      State().destination = Destination::FontTable;
      fontNumber_ = -1;
      fontName_.clear();
      return true;
    }
    if (word == "colortbl") {
      State().destination = Destination::ColorTable;
      return true;
    }
    static constexpr std::string_view kSkipped[] = {"stylesheet", "info",    "pict",    "header",  "footer",
                                                    "headerl",    "headerr", "headerf", "footerl", "footerr",
                                                    "footerf",    "object",  "listtable", "listoverridetable"};
    if (std::find(std::begin(kSkipped), std::end(kSkipped), word) != std::end(kSkipped)) {
      State().destination = Destination::Skipped;
      return true;
    }
    return false;
  }

  bool Breaks(const ControlWord& w) {
    if (w.word == "par" || w.word == "page" || w.word == "sect") {
      BreakParagraph();
    } else if (w.word == "line") {
      Emit(U'\n');
    } else if (w.word == "tab") {
      Emit(U'\t');
    } else {
      return false;
    }
    return true;
  }

  bool Characters(std::string_view word) {
    static constexpr std::pair<std::string_view, char32_t> kWords[] = {
        {"emdash", U'\u2014'},    {"endash", U'\u2013'}, {"bullet", U'\u2022'},    {"lquote", U'\u2018'},
        {"rquote", U'\u2019'},    {"ldblquote", U'\u201C'}, {"rdblquote", U'\u201D'}};
    for (const auto& [name, cp] : kWords) {
      if (word == name) {
        Emit(cp);
        return true;
      }
    }
    return false;
  }

  // A toggle word: on without a parameter or with one other than 0.
  static bool On(const ControlWord& w) { return !w.hasParam || w.param != 0; }

  bool CharacterFormat(const ControlWord& w) {
    GroupState& s = State();
    const std::string_view word = w.word;
    if (word == "b") {
      s.bold = On(w);
    } else if (word == "i") {
      s.italic = On(w);
    } else if (word == "ul" || word == "uld" || word == "uldb" || word == "ulw" || word == "ulth") {
      s.underline = On(w);
    } else if (word == "ulnone") {
      s.underline = false;
    } else if (word == "fs") {
      s.fontSize = w.hasParam && w.param > 0 ? static_cast<int>(std::min(w.param, 32767L)) : kDefaultFontSize;
    } else if (word == "cf") {
      s.color = w.hasParam ? std::max(0L, w.param) : 0;
    } else if (word == "f" && w.hasParam) {
      if (s.destination == Destination::FontTable) {
        CommitFontIfNamed();
        fontNumber_ = static_cast<int>(w.param);
        return true;
      }
      s.font = static_cast<int>(std::max(0L, w.param));
    } else if (word == "plain") {
      s.bold = s.italic = s.underline = false;
      s.fontSize = kDefaultFontSize;
      s.font = -1;
      s.color = 0;
    } else if (word == "deff" && w.hasParam) {
      defaultFont_ = static_cast<int>(w.param);
    } else {
      return false;
    }
    styleStale_ = true;
    return true;
  }

  // A font table without inner groups lists "\f0 Arial;\f1 Courier;".
  void CommitFontIfNamed() {
    if (fontNumber_ >= 0 && !fontName_.empty()) CommitFont();
  }

  bool ParagraphFormat(const ControlWord& w) {
    GroupState& s = State();
    const std::string_view word = w.word;
    if (word == "pard") {
      s.alignment = RtfAlignment::Left;
      s.tabStops.clear();
    } else if (word == "ql") {
      s.alignment = RtfAlignment::Left;
    } else if (word == "qc") {
      s.alignment = RtfAlignment::Center;
    } else if (word == "qr") {
      s.alignment = RtfAlignment::Right;
    } else if (word == "qj") {
      s.alignment = RtfAlignment::Justified;
    } else if (word == "tx" && w.hasParam) {
      if (s.tabStops.size() < kMaxTabStops) s.tabStops.push_back(static_cast<int>(w.param));
    } else {
      return false;
    }
    return true;
  }

  bool Tables(const ControlWord& w) {
    if (State().destination != Destination::ColorTable) return false;
    const int component = static_cast<int>(std::clamp(w.param, 0L, 255L));
    if (w.word == "red") {
      color_.red = component;
    } else if (w.word == "green") {
      color_.green = component;
    } else if (w.word == "blue") {
      color_.blue = component;
    } else {
      return false;
    }
    colorGiven_ = true;
    return true;
  }

  std::string_view rtf_;
  std::size_t pos_ = 0;
  std::vector<GroupState> groups_;
  std::size_t overflowDepth_ = 0;
  long pendingFallback_ = 0;
  char32_t highSurrogate_ = 0;

  std::map<int, std::string> fonts_;
  int defaultFont_ = 0;
  int fontNumber_ = -1;  // the font table entry being read
  std::string fontName_;
  std::vector<std::optional<Rgb>> colors_;
  Rgb color_;
  bool colorGiven_ = false;

  RtfDocument document_;
  RtfStyle style_;
  bool styleStale_ = true;
  bool lastRunMatches_ = false;
};

}  // namespace

std::string RtfParagraph::PlainText() const {
  std::string text;
  for (const auto& run : runs) text += run.text;
  return text;
}

std::string RtfDocument::PlainText() const {
  std::string text;
  for (std::size_t i = 0; i < paragraphs.size(); ++i) {
    if (i > 0) text += '\n';
    for (const auto& run : paragraphs[i].runs) text += run.text;
  }
  return text;
}

bool IsRtf(std::string_view text) { return text.starts_with("{\\rtf"); }

RtfDocument ReadRtf(std::string_view rtf) { return Reader(rtf).Run(); }

RtfDocument ReadReport(std::string_view text) {
  if (IsRtf(text)) return ReadRtf(text);
  RtfDocument document;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = text.find_first_of("\r\n", start);
    RtfParagraph paragraph;
    const std::string_view line = text.substr(start, end == std::string_view::npos ? end : end - start);
    if (!line.empty()) paragraph.runs.push_back({std::string(line), {}});
    document.paragraphs.push_back(std::move(paragraph));
    if (end == std::string_view::npos) break;
    start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return document;
}

}  // namespace tarnwick
