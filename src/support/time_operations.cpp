#include "support/time_operations.h"

#include <ctime>

#include <fmt/format.h>

#include "errors/error_road.h"
#include "support/text_operations.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "MyGeneralOperations";

constexpr const char* kWeekdays[] = {"Sunday", "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};
constexpr const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};

struct Civil {
  int year;
  unsigned month, day, weekday;
  long hour, minute, second;
};

Civil Split(LocalTime when) {
  using namespace std::chrono;
  const auto days = floor<std::chrono::days>(when);
  const year_month_day ymd{days};
  const hh_mm_ss clock{when - days};
  return {int(ymd.year()),         unsigned(ymd.month()),    unsigned(ymd.day()),
          weekday{days}.c_encoding(), long(clock.hours().count()), long(clock.minutes().count()),
          long(clock.seconds().count())};
}

std::string Counted(long n, const char* one, const char* many) {
  return std::to_string(n) + (n == 1 ? one : many);
}
}  // namespace

LocalTime LocalNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  using namespace std::chrono;
  const local_days day{year{local.tm_year + 1900} / (local.tm_mon + 1) / local.tm_mday};
  return day + hours{local.tm_hour} + minutes{local.tm_min} + seconds{local.tm_sec};
}

std::string ReturnTimeStamp() { return ReturnTimeStamp(LocalNow()); }

std::string ReturnTimeStamp(LocalTime when) {
  const Civil c = Split(when);
  return fmt::format("{:04}{:02}{:02}_{:02}{:02}{:02}", c.year, c.month, c.day, c.hour, c.minute, c.second);
}

std::string LongDateText(LocalTime when) {
  const Civil c = Split(when);
  return fmt::format("{}, {} {}, {}", kWeekdays[c.weekday], kMonths[c.month - 1], c.day, c.year);
}

std::string LongTimeText(LocalTime when) {
  const Civil c = Split(when);
  const long hour12 = c.hour % 12 == 0 ? 12 : c.hour % 12;
  return fmt::format("{}:{:02}:{:02} {}", hour12, c.minute, c.second, c.hour < 12 ? "AM" : "PM");
}

std::string ReturnTimeElapsedText(LocalTime began, LocalTime ended) {
  long seconds = static_cast<long>((ended - began).count());
  const long days = seconds / 86400;
  seconds %= 86400;
  const long hours = seconds / 3600;
  seconds %= 3600;
  const long minutes = seconds / 60;
  seconds %= 60;

  std::string parts;
  auto add = [&](long n, const char* one, const char* many) {
    if (n == 0) return;
    if (!parts.empty()) parts += ", ";
    parts += Counted(n, one, many);
  };
  add(days, " day", " days");
  add(hours, " hour", " hours");
  add(minutes, " minute", " minutes");
  add(seconds, " second...", " seconds...");
  return "Time Elapsed: " + parts;
}

std::string ReturnTimeElapsedRTF(LocalTime began, LocalTime ended, long fontSize) {
  return Guarded("ReturnTimeElapsedRTF", kModule, [&] {
    std::string rtf =
        "\\b\\fszzzFontSizezzz Analysis Began:\\b0\\i    zzzTimeBeganzzz\\par\n"
        "\\b\\i0 Analysis Complete:\\b0\\i    zzzTimeEndzzz\\par\n"
        "\\b\\i0 Time Elapsed:\\b0\\i    zzzTimeElapsedzzz\\par";
    rtf = Subst(rtf, "zzzFontSizezzz", std::to_string(fontSize));
    rtf = Subst(rtf, "zzzTimeBeganzzz", LongDateText(began) + " at " + LongTimeText(began));
    rtf = Subst(rtf, "zzzTimeEndzzz", LongDateText(ended) + " at " + LongTimeText(ended));
    rtf = Subst(rtf, "zzzTimeElapsedzzz", ReturnTimeElapsedText(began, ended));
    return rtf;
  });
}

}  // namespace tarnwick
