#include "support/text_operations.h"

#include <algorithm>
#include <cctype>

#include "errors/error_road.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "aml_func_mod";
}

std::string TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(' ');
  return std::string(text.substr(first, last - first + 1));
}

std::string ToLowerAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
         });
}

std::vector<std::string> ParseString(std::string_view text, std::string_view separator) {
  return Guarded("ParseString", kModule, [&] {
    std::vector<std::string> pieces;
    if (TrimBlanks(Subst(text, separator)).empty()) {
      pieces.emplace_back();
      return pieces;
    }
    if (separator.empty()) {
      pieces.push_back(TrimBlanks(text));
      return pieces;
    }
    std::size_t start = 0;
    while (true) {
      const auto at = text.find(separator, start);
      if (at == std::string_view::npos) {
        pieces.push_back(TrimBlanks(text.substr(start)));
        break;
      }
      pieces.push_back(TrimBlanks(text.substr(start, at - start)));
      start = at + separator.size();
    }
    return pieces;
  });
}

std::string Before(std::string_view text, std::string_view marker) {
  const auto at = text.find(marker);
  return at == std::string_view::npos ? std::string() : std::string(text.substr(0, at));
}

std::string After(std::string_view text, std::string_view marker) {
  const auto at = text.find(marker);
  return at == std::string_view::npos ? std::string() : std::string(text.substr(at + marker.size()));
}

std::string Subst(std::string_view text, std::string_view search, std::string_view replacement) {
  return Guarded("Subst", kModule, [&] {
    if (search.empty()) return std::string(text);
    // The text before each occurrence, the replacement, and on behind it:
    // replaced text is never searched again. One pass, so long reports stay
    // linear.
    std::string result;
    std::size_t start = 0;
    for (auto at = text.find(search); at != std::string_view::npos; at = text.find(search, start)) {
      result.append(text.substr(start, at - start)).append(replacement);
      start = at + search.size();
    }
    return result.append(text.substr(start));
  });
}

std::string BasicTrimAvenue(std::string_view text, std::string_view leftCharacters,
                            std::string_view rightCharacters) {
  return Guarded("BasicTrimAvenue", kModule, [&] {
    std::string_view s = text;
    while (!s.empty() && rightCharacters.find(s.back()) != std::string_view::npos) s.remove_suffix(1);
    while (!s.empty() && leftCharacters.find(s.front()) != std::string_view::npos) s.remove_prefix(1);
    return std::string(s);
  });
}

}  // namespace tarnwick
