#include "metadata/metadata_key.h"

#include <charconv>
#include <stdexcept>

namespace tarnwick::metadata {

namespace {

[[noreturn]] void Malformed(const std::string& key, const std::string& why) {
  throw std::invalid_argument("Invalid metadata key '" + key + "': " + why);
}

KeyStep ParseStep(const std::string& key, const std::string& text) {
  const auto open = text.find('[');
  if (open == std::string::npos) {
    if (text.find(']') != std::string::npos) Malformed(key, "unbalanced ']'");
    return {text, std::nullopt};
  }
  if (text.back() != ']' || open == 0) Malformed(key, "bad index in '" + text + "'");
  const std::string digits = text.substr(open + 1, text.size() - open - 2);
  int index = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), index);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size() || index < 0) {
    Malformed(key, "bad index in '" + text + "'");
  }
  return {text.substr(0, open), index};
}

}  // namespace

MetadataKey ParseMetadataKey(const std::string& key) {
  MetadataKey parsed;
  std::size_t start = 0;
  while (start <= key.size()) {
    const auto slash = key.find('/', start);
    const std::string step = key.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
    const bool last = slash == std::string::npos;
    if (step.empty()) {
      // A leading slash is tolerated; empty steps elsewhere are not.
      if (start != 0 || last) Malformed(key, "empty step");
    } else if (step.front() == '@') {
      if (!last || step.size() == 1) Malformed(key, "an attribute must be the last step");
      parsed.attribute = step.substr(1);
    } else {
      parsed.steps.push_back(ParseStep(key, step));
    }
    if (last) break;
    start = slash + 1;
  }
  if (parsed.steps.empty()) Malformed(key, "no element named");
  return parsed;
}

}  // namespace tarnwick::metadata
