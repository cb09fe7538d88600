#pragma once
// Time stamps for file names and the elapsed-time lines of run reports.
#include <chrono>
#include <string>

namespace tarnwick {

// Wall-clock time as the local calendar shows it.
using LocalTime = std::chrono::local_seconds;

// The present local time, to whole seconds.
LocalTime LocalNow();

// "yyyymmdd_HHMMSS" for the given (by default the present) local time.
std::string ReturnTimeStamp();
std::string ReturnTimeStamp(LocalTime when);

// "Monday, November 23, 2026" and "9:05:07 AM".
std::string LongDateText(LocalTime when);
std::string LongTimeText(LocalTime when);

// "Time Elapsed: " and the non-zero days, hours, minutes and seconds
// between the two times, e.g. "Time Elapsed: 1 day, 2 minutes".
std::string ReturnTimeElapsedText(LocalTime began, LocalTime ended);

// The three RTF report lines: when the analysis began, when it ended and
// how long it took, in the given font size.
std::string ReturnTimeElapsedRTF(LocalTime began, LocalTime ended, long fontSize);

}  // namespace tarnwick
