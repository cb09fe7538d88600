#pragma once
// Numbers given on the command line, read and checked before anything is
// opened: a value that is not a number, not finite or out of range is a
// usage error of one line naming the option and the value, such as
//   --spacing '0,10': the X spacing must be greater than 0
#include <string>
#include <string_view>
#include <utility>

#include "support/number_text.h"

namespace tarnwick::cli {

// Distances and coordinates beyond this are mistakes, and would overflow
// once converted between units.
inline constexpr double kLargestDistance = 1e9;

double NumberArgument(std::string_view option, const std::string& text, std::string_view what,
                      const NumberLimits& limits = {});
long WholeNumberArgument(std::string_view option, const std::string& text, std::string_view what, long low, long high);
// "X<separator>Y", both parts checked against the same limits.
std::pair<double, double> NumberPairArgument(std::string_view option, const std::string& text, char separator,
                                             std::string_view whatX, std::string_view whatY,
                                             const NumberLimits& limits = {});

}  // namespace tarnwick::cli
