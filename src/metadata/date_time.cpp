#include "metadata/date_time.h"

#include <ctime>

#include <fmt/format.h>

namespace tarnwick::metadata {

DateTime DateTime::FromTimePoint(std::chrono::system_clock::time_point when) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
  std::tm local{};
  localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

bool DateTime::IsZero() const { return *this == DateTime{}; }

std::string DateTime::ElementText() const {
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", year, month, day, hour, minute, second);
}

std::string DateTime::CompactDate() const { return fmt::format("{:04}{:02}{:02}", year, month, day); }

std::string DateTime::CompactTime() const { return fmt::format("{:02}{:02}{:02}", hour, minute, second); }

}  // namespace tarnwick::metadata
