#pragma once
// Numbers the user types (a command-line value, a dialog's text box), read
// strictly, and the plain-words check that a number is usable before a
// tool relies on it: finite, and inside the range the tool can work with.
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tarnwick {

// The number the whole text holds (blanks around it allowed), in decimal or
// exponent notation; nullopt for anything else, and for infinity and NaN.
std::optional<double> ParseNumber(std::string_view text);
// A whole number: digits with an optional sign, within the range of long.
std::optional<long> ParseWholeNumber(std::string_view text);
// "A,B" (or "A:B") split at the first separator, both parts trimmed;
// nullopt when the separator is missing.
std::optional<std::pair<std::string, std::string>> SplitPair(std::string_view text, char separator);

struct NumberLimits {
  double low = std::numeric_limits<double>::lowest();
  double high = std::numeric_limits<double>::max();
  bool lowIncluded = true;  // false: the value must be greater than low
};
// What makes value unusable, in words that follow the value's name ("is not
// a finite number", "must be greater than 0", "must be at most 1000000"),
// or "" when it is usable.
std::string NumberProblem(double value, const NumberLimits& limits);

}  // namespace tarnwick
