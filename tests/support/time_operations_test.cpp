#include "support/time_operations.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {
using namespace std::chrono;

LocalTime At(int y, unsigned m, unsigned d, int h, int min, int s) {
  return local_days{year{y} / m / d} + hours{h} + minutes{min} + seconds{s};
}

TEST(TimeOperations, StampLongFormsAndElapsedTexts) {
  const auto t = At(2026, 11, 23, 9, 5, 7);
  EXPECT_EQ(ReturnTimeStamp(t), "20261123_090507");
  EXPECT_EQ(ReturnTimeStamp().size(), 15u);
  EXPECT_EQ(LongDateText(t), "Monday, November 23, 2026");
  EXPECT_EQ(LongDateText(At(2024, 2, 29, 0, 0, 0)), "Thursday, February 29, 2024");
  const std::pair<LocalTime, const char*> times[] = {{t, "9:05:07 AM"},
                                                     {At(2026, 1, 1, 0, 0, 0), "12:00:00 AM"},
                                                     {At(2026, 1, 1, 12, 30, 0), "12:30:00 PM"},
                                                     {At(2026, 1, 1, 23, 59, 59), "11:59:59 PM"}};
  for (const auto& [time, text] : times) EXPECT_EQ(LongTimeText(time), text);

  const std::pair<LocalTime::duration, const char*> elapsed[] = {
      {days{1}, "Time Elapsed: 1 day"},
      {days{2}, "Time Elapsed: 2 days"},
      {days{2} + hours{1} + seconds{1}, "Time Elapsed: 2 days, 1 hour, 1 second..."},
      {hours{3} + minutes{1} + seconds{42}, "Time Elapsed: 3 hours, 1 minute, 42 seconds..."},
      {minutes{2}, "Time Elapsed: 2 minutes"}};
  for (const auto& [span, text] : elapsed) EXPECT_EQ(ReturnTimeElapsedText(t, t + span), text);
}

TEST(TimeOperations, ElapsedRtfLines) {
  const auto began = At(2026, 11, 23, 9, 5, 7);
  const auto ended = At(2026, 11, 24, 13, 0, 0);
  EXPECT_EQ(ReturnTimeElapsedRTF(began, ended, 8),
            "\\b\\fs8 Analysis Began:\\b0\\i    Monday, November 23, 2026 at 9:05:07 AM\\par\n"
            "\\b\\i0 Analysis Complete:\\b0\\i    Tuesday, November 24, 2026 at 1:00:00 PM\\par\n"
            "\\b\\i0 Time Elapsed:\\b0\\i    Time Elapsed: 1 day, 3 hours, 54 minutes, 53 seconds...\\par");
}

}  // namespace
}  // namespace tarnwick
