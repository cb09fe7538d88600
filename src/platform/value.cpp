// Strict conversions of field values (Null and text that is no number fail).
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "platform/errors.h"
#include "platform/field.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "Value";

[[noreturn]] void InvalidUseOfNull() { throw PlatformError(kErrInvalidUseOfNull, kSource, "Invalid use of Null"); }
[[noreturn]] void TypeMismatch() { throw PlatformError(kErrTypeMismatch, kSource, "Type mismatch"); }

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return "";
  const auto last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

double ParseNumber(const std::string& text) {
  std::string t = Trimmed(text);
  if (!t.empty() && t.front() == '+') t.erase(0, 1);
  double value = 0;
  const auto [end, ec] = std::from_chars(t.data(), t.data() + t.size(), value);
  if (t.empty() || ec != std::errc() || end != t.data() + t.size()) TypeMismatch();
  return value;
}

}  // namespace

std::string NumberToText(double value) {
  // The fewest digits that read back as the same number, written out as an
  // ordinary decimal ("0.00001", not "1e-05"); only magnitudes that would
  // need more than 21 digits keep the exponent.
  char buffer[400];
  const double magnitude = std::fabs(value);
  const bool ordinary = magnitude == 0 || (magnitude >= 1e-7 && magnitude < 1e21) || !std::isfinite(value);
  const auto [end, ec] = ordinary ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                                  : std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, end);
}

std::string ValueToText(const Value& v) {
  if (IsNull(v)) InvalidUseOfNull();
  if (const auto* i = std::get_if<std::int64_t>(&v)) return std::to_string(*i);
  if (const auto* d = std::get_if<double>(&v)) return NumberToText(*d);
  return std::get<std::string>(v);
}

double ValueToDouble(const Value& v) {
  if (IsNull(v)) InvalidUseOfNull();
  if (const auto* i = std::get_if<std::int64_t>(&v)) return static_cast<double>(*i);
  if (const auto* d = std::get_if<double>(&v)) return *d;
  return ParseNumber(std::get<std::string>(v));
}

std::int64_t ValueToLong(const Value& v) {
  if (IsNull(v)) InvalidUseOfNull();
  if (const auto* i = std::get_if<std::int64_t>(&v)) return *i;
  const double d = ValueToDouble(v);
  const double rounded = std::nearbyint(d);  // the default rounding mode rounds half to even
  if (!std::isfinite(rounded) || rounded < static_cast<double>(std::numeric_limits<std::int64_t>::min()) ||
      rounded >= static_cast<double>(std::numeric_limits<std::int64_t>::max())) {
    throw PlatformError(kErrOverflow, kSource, "Overflow");
  }
  return static_cast<std::int64_t>(rounded);
}

}  // namespace tarnwick::platform
