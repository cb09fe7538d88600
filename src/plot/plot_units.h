#pragma once
// Plot and buffer distances are typed in "Feet", "Meters" or "Chains".
#include <string_view>

namespace tarnwick {

inline constexpr double kMetersPerFoot = 0.3048;
inline constexpr double kFeetPerChain = 66;

// The distance in metres. A units text other than the three known ones
// gives 0, which is what the run's callers rely on for an empty text.
inline double DistanceToMeters(double distance, std::string_view units) {
  if (units == "Chains") return distance * kFeetPerChain * kMetersPerFoot;
  if (units == "Feet") return distance * kMetersPerFoot;
  if (units == "Meters") return distance;
  return 0;
}

}  // namespace tarnwick
