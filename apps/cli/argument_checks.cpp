#include "argument_checks.h"

#include <algorithm>
#include <optional>

#include "usage_error.h"

namespace tarnwick::cli {

namespace {

[[noreturn]] void Refuse(std::string_view option, const std::string& text, const std::string& problem) {
  throw UsageError(std::string(option) + " '" + text + "': " + problem);
}

// A number as the dialogs read one: "2,5" is 2.5 as well.
std::optional<double> ReadNumber(const std::string& text) {
  if (auto value = ParseNumber(text)) return value;
  if (std::count(text.begin(), text.end(), ',') != 1 || text.find('.') != std::string::npos) return std::nullopt;
  std::string pointed = text;
  pointed[pointed.find(',')] = '.';
  return ParseNumber(pointed);
}

double Checked(std::string_view option, const std::string& text, const std::string& part, std::string_view what,
               const NumberLimits& limits) {
  const auto value = ReadNumber(part);
  if (!value) Refuse(option, text, std::string(what) + " must be a number");
  if (const std::string problem = NumberProblem(*value, limits); !problem.empty()) {
    Refuse(option, text, std::string(what) + " " + problem);
  }
  return *value;
}

}  // namespace

double NumberArgument(std::string_view option, const std::string& text, std::string_view what,
                      const NumberLimits& limits) {
  return Checked(option, text, text, what, limits);
}

long WholeNumberArgument(std::string_view option, const std::string& text, std::string_view what, long low, long high) {
  const auto value = ParseWholeNumber(text);
  if (!value) Refuse(option, text, std::string(what) + " must be a whole number");
  NumberLimits limits;
  limits.low = static_cast<double>(low);
  limits.high = static_cast<double>(high);
  if (const std::string problem = NumberProblem(static_cast<double>(*value), limits); !problem.empty()) {
    Refuse(option, text, std::string(what) + " " + problem);
  }
  return *value;
}

std::pair<double, double> NumberPairArgument(std::string_view option, const std::string& text, char separator,
                                             std::string_view whatX, std::string_view whatY,
                                             const NumberLimits& limits) {
  const auto parts = SplitPair(text, separator);
  if (!parts) Refuse(option, text, "two numbers separated by '" + std::string(1, separator) + "' are expected");
  return {Checked(option, text, parts->first, whatX, limits), Checked(option, text, parts->second, whatY, limits)};
}

}  // namespace tarnwick::cli
