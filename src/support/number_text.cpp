#include "support/number_text.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>

#include "support/text_operations.h"

namespace tarnwick {

namespace {

// The text without blanks around it and without one leading "+", which
// from_chars does not take.
std::string_view Bare(std::string_view text, std::string& storage) {
  storage = TrimBlanks(text);
  std::string_view bare = storage;
  if (bare.size() > 1 && bare.front() == '+' && bare[1] != '-' && bare[1] != '+') bare.remove_prefix(1);
  return bare;
}

// A limit as the message shows it: whole numbers in full, others shortest.
std::string LimitText(double value) {
  if (value == std::trunc(value) && std::fabs(value) < 1e15) return fmt::format("{:.0f}", value);
  return fmt::format("{}", value);
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  std::string storage;
  const std::string_view bare = Bare(text, storage);
  double value = 0;
  const auto [end, error] = std::from_chars(bare.data(), bare.data() + bare.size(), value, std::chars_format::general);
  if (bare.empty() || error != std::errc() || end != bare.data() + bare.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

std::optional<long> ParseWholeNumber(std::string_view text) {
  std::string storage;
  const std::string_view bare = Bare(text, storage);
  long value = 0;
  const auto [end, error] = std::from_chars(bare.data(), bare.data() + bare.size(), value);
  if (bare.empty() || error != std::errc() || end != bare.data() + bare.size()) return std::nullopt;
  return value;
}

std::optional<std::pair<std::string, std::string>> SplitPair(std::string_view text, char separator) {
  const auto at = text.find(separator);
  if (at == std::string_view::npos) return std::nullopt;
  return std::pair{TrimBlanks(text.substr(0, at)), TrimBlanks(text.substr(at + 1))};
}

std::string NumberProblem(double value, const NumberLimits& limits) {
  if (!std::isfinite(value)) return "is not a finite number";
  if (value < limits.low || (!limits.lowIncluded && value == limits.low)) {
    return std::string(limits.lowIncluded ? "must be at least " : "must be greater than ") + LimitText(limits.low);
  }
  if (value > limits.high) return "must be at most " + LimitText(limits.high);
  return "";
}

}  // namespace tarnwick
