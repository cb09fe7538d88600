#pragma once
// Calendar date and time as the metadata document writes it. A default
// DateTime is the zero date, which the date-setting routines skip.
#include <chrono>
#include <string>

namespace tarnwick::metadata {

struct DateTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;

  // Local wall-clock time of a time point (whole seconds).
  static DateTime FromTimePoint(std::chrono::system_clock::time_point when);
  static DateTime Now() { return FromTimePoint(std::chrono::system_clock::now()); }

  bool IsZero() const;
  // "yyyy-mm-ddTHH:MM:SS", the form of a date element.
  std::string ElementText() const;
  // "yyyymmdd" and "HHMMSS", the forms of a history event.
  std::string CompactDate() const;
  std::string CompactTime() const;

  friend bool operator==(const DateTime&, const DateTime&) = default;
};

}  // namespace tarnwick::metadata
