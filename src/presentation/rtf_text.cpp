#include "presentation/rtf_text.h"

#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {
namespace {

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
  c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

struct GroupState {
  bool skip = false;  // a destination whose text is not shown
  long unicodeFallback = 1;  // characters after \uN that stand in for it
};

class Renderer {
 public:
  explicit Renderer(std::string_view rtf) : rtf_(rtf) { groups_.push_back({}); }

  std::string Run() {
    while (pos_ < rtf_.size()) {
      const char c = rtf_[pos_];
      if (c == '{') {
        ++pos_;
        groups_.push_back(groups_.back());
      } else if (c == '}') {
        ++pos_;
        if (groups_.size() > 1) groups_.pop_back();
        pendingFallback_ = 0;
      } else if (c == '\\') {
        ++pos_;
        ControlSymbolOrWord();
      } else if (c == '\r' || c == '\n') {
        ++pos_;  // line ends in RTF source carry no meaning
      } else {
        ++pos_;
        if (ConsumeFallback()) continue;
        if (!Skipping()) out_ += c;
      }
    }
    FlushSurrogate();
    return out_;
  }

 private:
  bool Skipping() const { return groups_.back().skip; }

  // True when this character is the stand-in after a \uN and is dropped.
  bool ConsumeFallback() {
    if (pendingFallback_ <= 0) return false;
    --pendingFallback_;
    return true;
  }

  void Emit(char32_t cp) {
    if (Skipping()) return;
    FlushSurrogate();
    AppendUtf8(out_, cp);
  }
  void EmitText(std::string_view text) {
    if (Skipping()) return;
    FlushSurrogate();
    out_ += text;
  }

  void EmitUnicode(long value) {
    if (value < 0) value += 65536;
    const auto cp = static_cast<char32_t>(value);
    if (Skipping()) return;
    if (cp >= 0xD800 && cp < 0xDC00) {
      FlushSurrogate();
      highSurrogate_ = cp;
      return;
    }
    if (cp >= 0xDC00 && cp < 0xE000 && highSurrogate_) {
      const char32_t full = 0x10000 + ((highSurrogate_ - 0xD800) << 10) + (cp - 0xDC00);
      highSurrogate_ = 0;
      AppendUtf8(out_, full);
      return;
    }
    Emit(cp);
  }

  void FlushSurrogate() {
    if (highSurrogate_) {
      highSurrogate_ = 0;
      AppendUtf8(out_, U'\uFFFD');
    }
  }

  void ControlSymbolOrWord() {
    if (pos_ >= rtf_.size()) return;
    const char c = rtf_[pos_];
    if (std::isalpha(static_cast<unsigned char>(c))) {
      ControlWord();
      return;
    }
    ++pos_;
    switch (c) {
      case '\\':
      case '{':
      case '}':
        if (!ConsumeFallback()) EmitText(std::string(1, c));
        break;
      case '~':
        if (!ConsumeFallback()) Emit(U'\u00A0');
        break;
      case '_':
        if (!ConsumeFallback()) EmitText("-");
        break;
      case '\'': {
        int hi = pos_ < rtf_.size() ? HexValue(rtf_[pos_]) : -1;
        int lo = pos_ + 1 < rtf_.size() ? HexValue(rtf_[pos_ + 1]) : -1;
        if (hi < 0 || lo < 0) break;
        pos_ += 2;
        if (!ConsumeFallback()) Emit(FromCp1252(static_cast<unsigned>(hi * 16 + lo)));
        break;
      }
      case '*':
        groups_.back().skip = true;
        break;
      case '\r':
      case '\n':
        EmitText("\n");  // a backslash before a line end is a paragraph mark
        break;
      default:
        break;  // "\-" optional hyphen, "\|" and the like show nothing
    }
  }

  void ControlWord() {
    std::size_t start = pos_;
    while (pos_ < rtf_.size() && std::isalpha(static_cast<unsigned char>(rtf_[pos_]))) ++pos_;
    const std::string_view word = rtf_.substr(start, pos_ - start);
    bool hasParam = false;
    long param = 0;
    bool negative = false;
    if (pos_ < rtf_.size() && rtf_[pos_] == '-' && pos_ + 1 < rtf_.size() &&
        std::isdigit(static_cast<unsigned char>(rtf_[pos_ + 1]))) {
      negative = true;
      ++pos_;
    }
    while (pos_ < rtf_.size() && std::isdigit(static_cast<unsigned char>(rtf_[pos_]))) {
      hasParam = true;
      param = param * 10 + (rtf_[pos_] - '0');
      ++pos_;
    }
    if (negative) param = -param;
    if (pos_ < rtf_.size() && rtf_[pos_] == ' ') ++pos_;  // the delimiter belongs to the word

    if (word == "u" && hasParam) {
      EmitUnicode(param);
      pendingFallback_ = groups_.back().unicodeFallback;
      return;
    }
    if (word == "uc" && hasParam) {
      groups_.back().unicodeFallback = param;
      return;
    }
    if (word == "fonttbl" || word == "colortbl" || word == "stylesheet" || word == "info" ||
        word == "pict" || word == "header" || word == "footer") {
      groups_.back().skip = true;
      return;
    }
    pendingFallback_ = 0;
    if (word == "par" || word == "line" || word == "page" || word == "sect") {
      EmitText("\n");
    } else if (word == "tab") {
      EmitText("\t");
    } else if (word == "emdash") {
      Emit(U'\u2014');
    } else if (word == "endash") {
      Emit(U'\u2013');
    } else if (word == "bullet") {
      Emit(U'\u2022');
    } else if (word == "lquote") {
      Emit(U'\u2018');
    } else if (word == "rquote") {
      Emit(U'\u2019');
    } else if (word == "ldblquote") {
      Emit(U'\u201C');
    } else if (word == "rdblquote") {
      Emit(U'\u201D');
    }
    // Every other word (\b, \i, \ul, \fs24, \cf1, \pard, ...) only formats.
  }

  std::string_view rtf_;
  std::size_t pos_ = 0;
  std::vector<GroupState> groups_;
  long pendingFallback_ = 0;
  char32_t highSurrogate_ = 0;
  std::string out_;
};

}  // namespace

std::string RtfToPlainText(std::string_view rtf) { return Renderer(rtf).Run(); }

}  // namespace tarnwick
