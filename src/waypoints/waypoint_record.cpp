#include "waypoints/waypoint_record.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include <fmt/core.h>

#include "support/geometric_operations.h"

namespace tarnwick {

std::string FormatPicture(long long value, int digits) {
  const std::string body = fmt::format("{:0{}d}", std::llabs(value), digits);
  return value < 0 ? "-" + body : body;
}

long long RoundDecimalHalfAway(double value) {
  const double decimal = std::stod(fmt::format("{:.15g}", value));
  return static_cast<long long>(std::round(decimal));  // std::round goes half away from zero
}

std::string FormatWaypointCoordinate(double decimalDegrees) {
  long degrees = 0;
  long minutes = 0;
  double seconds = 0;
  ConvertDDtoDMS(decimalDegrees, degrees, minutes, seconds);
  return FormatPicture(degrees, 2) + FormatPicture(minutes, 2) +
         "." + FormatPicture(RoundDecimalHalfAway(seconds * 10000.0), 6);
}

std::string FormatWaypointRecord(const platform::Value& plotId, double latitude, double longitude,
                                 const std::optional<platform::Value>& elevation,
                                 const std::optional<platform::Value>& standId) {
  std::string record = platform::IsNull(plotId) ? "<Null>" : platform::ValueToText(plotId);
  record += "," + FormatWaypointCoordinate(latitude);
  record += "," + FormatWaypointCoordinate(longitude);
  record += ",";
  record += (elevation && !platform::IsNull(*elevation)) ? platform::ValueToText(*elevation) : "0.0";
  record += ",";
  if (standId && !platform::IsNull(*standId)) record += platform::ValueToText(*standId);
  record += ";<ICON = 9>,";
  return record;
}

}  // namespace tarnwick
