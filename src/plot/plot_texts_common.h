#pragma once
// Pieces shared by the report, parameter and purpose texts.
#include <optional>
#include <string>
#include <string_view>

#include "platform/transformation.h"

namespace tarnwick::plot_texts {

inline constexpr std::string_view kLineEnd = "\r\n";

// A value placed into the RTF report: ASCII as it is, other characters as
// RTF Unicode escapes so the report stays within its code page.
std::string Rtf(std::string_view text);

inline std::string TrueFalse(bool value) { return value ? "TRUE" : "FALSE"; }

inline std::string DirectionText(platform::TransformDirection direction) {
  return direction == platform::TransformDirection::Reverse ? "Reverse" : "Forward";
}

// The anchor coordinates in the parameter text: ten decimals.
std::string FixedTenDecimals(double value);

}  // namespace tarnwick::plot_texts
