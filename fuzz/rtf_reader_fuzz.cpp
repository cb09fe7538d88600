// Fuzz target: the report reader on any bytes. Reading must end, within
// time and memory in proportion to the input, with at most one paragraph
// per byte and every run holding text in a style a view can show.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "presentation/rtf_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const tarnwick::RtfDocument document = tarnwick::ReadReport(text);
  if (document.paragraphs.empty() || document.paragraphs.size() > size + 1) std::abort();
  for (const auto& paragraph : document.paragraphs) {
    if (paragraph.tabStops.size() > 64) std::abort();
    for (const auto& run : paragraph.runs) {
      if (run.text.empty() || run.style.fontSize < 1 || run.style.fontSize > 32767) std::abort();
      if (run.style.font.size() > 64 * 4) std::abort();
      if (const auto& c = run.style.color) {
        if (c->red < 0 || c->red > 255 || c->green < 0 || c->green > 255 || c->blue < 0 || c->blue > 255) std::abort();
      }
    }
  }
  return 0;
}
