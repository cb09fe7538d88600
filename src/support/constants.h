#pragma once

// Numeric constants shared by the support routines. Pi is kept at fifteen
// significant digits (not M_PI) so that angles and distances computed here
// match the values the inventory tools have always produced.
namespace tarnwick {

inline constexpr double kPi = 3.14159265358979;
inline constexpr double kTwoPi = 6.28318530717958;

}  // namespace tarnwick
