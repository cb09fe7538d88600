#include "plot/plot_texts_common.h"

#include <cstdint>

#include <fmt/core.h>

namespace tarnwick::plot_texts {

std::string Rtf(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      out += static_cast<char>(c);
      ++i;
      continue;
    }
    // Decode one UTF-8 sequence; a stray byte stands for itself.
    int length = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 1;
    std::uint32_t code = length == 1 ? c : c & (0x7F >> length);
    for (int k = 1; k < length; ++k) {
      if (i + k >= text.size()) {
        length = k;
        break;
      }
      code = (code << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    }
    i += length;
    if (code <= 0xFF) {
      out += fmt::format("\\'{:02x}", code);
    } else if (code <= 0xFFFF) {
      out += fmt::format("\\u{}?", static_cast<std::int16_t>(code));
    } else {
      out += '?';
    }
  }
  return out;
}

std::string FixedTenDecimals(double value) { return fmt::format("{:.10f}", value); }

}  // namespace tarnwick::plot_texts
