#include "waypoints/waypoint_record.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include <fmt/core.h>

#include "support/geometric_operations.h"

namespace tarnwick {

namespace {

// Appends a whole number the way FormatPicture spells it, without a
// temporary string: a waypoint file has millions of these.
void AppendPicture(std::string& out, long long value, int digits) {
  if (value < 0) out += '-';
  char buffer[24];
  const unsigned long long magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value) : value;
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, magnitude).ptr;
  const auto length = static_cast<int>(end - buffer);
  if (length < digits) out.append(static_cast<std::size_t>(digits - length), '0');
  out.append(buffer, end);
}

void AppendValue(std::string& out, const platform::Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    out += *text;
  } else {
    out += platform::ValueToText(value);
  }
}

}  // namespace

std::string FormatPicture(long long value, int digits) {
  std::string text;
  AppendPicture(text, value, digits);
  return text;
}

long long RoundDecimalHalfAway(double value) {
  // Taking the value to 15 significant digits moves it by at most 5e-15 of
  // itself, which only matters when it lies that close to a half (or is too
  // large for its whole part to survive). Everywhere else rounding the value
  // itself gives the same whole number without the trip through text.
  const double magnitude = std::fabs(value);
  if (magnitude < 1e14) {
    const double fraction = magnitude - std::floor(magnitude);
    if (std::fabs(fraction - 0.5) > magnitude * 1e-13 + 1e-15) return static_cast<long long>(std::round(value));
  }
  const double decimal = std::stod(fmt::format("{:.15g}", value));
  return static_cast<long long>(std::round(decimal));  // std::round goes half away from zero
}

void AppendWaypointCoordinate(std::string& out, double decimalDegrees) {
  long degrees = 0;
  long minutes = 0;
  double seconds = 0;
  ConvertDDtoDMS(decimalDegrees, degrees, minutes, seconds);
  AppendPicture(out, degrees, 2);
  AppendPicture(out, minutes, 2);
  out += '.';
  AppendPicture(out, RoundDecimalHalfAway(seconds * 10000.0), 6);
}

std::string FormatWaypointCoordinate(double decimalDegrees) {
  std::string text;
  AppendWaypointCoordinate(text, decimalDegrees);
  return text;
}

void AppendWaypointRecord(std::string& out, const platform::Value& plotId, double latitude, double longitude,
                          const platform::Value* elevation, const platform::Value* standId) {
  if (platform::IsNull(plotId)) {
    out += "<Null>";
  } else {
    AppendValue(out, plotId);
  }
  out += ',';
  AppendWaypointCoordinate(out, latitude);
  out += ',';
  AppendWaypointCoordinate(out, longitude);
  out += ',';
  if (elevation && !platform::IsNull(*elevation)) {
    AppendValue(out, *elevation);
  } else {
    out += "0.0";
  }
  out += ',';
  if (standId && !platform::IsNull(*standId)) AppendValue(out, *standId);
  out += ";<ICON = 9>,";
}

std::string FormatWaypointRecord(const platform::Value& plotId, double latitude, double longitude,
                                 const std::optional<platform::Value>& elevation,
                                 const std::optional<platform::Value>& standId) {
  std::string record;
  AppendWaypointRecord(record, plotId, latitude, longitude, elevation ? &*elevation : nullptr,
                       standId ? &*standId : nullptr);
  return record;
}

bool HoldsRecordSeparator(const platform::Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr && text->find_first_of(",\r\n") != std::string::npos;
}

}  // namespace tarnwick
