#include <gtest/gtest.h>

#include <functional>

#include "platform/errors.h"
#include "platform/field.h"

namespace tarnwick::platform {
namespace {

long ErrorNumberOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const PlatformError& e) {
    return e.Number();
  }
  return 0;
}

TEST(Value, TextOfNumbersIsShortest) {
  EXPECT_EQ(ValueToText(12.5), "12.5");
  EXPECT_EQ(ValueToText(3.0), "3");
  EXPECT_EQ(ValueToText(0.1), "0.1");
  // Ordinary decimals, never an exponent, for the figures reports show.
  EXPECT_EQ(ValueToText(0.00001), "0.00001");
  EXPECT_EQ(NumberToText(-0.000123), "-0.000123");
  EXPECT_EQ(NumberToText(1e20), "100000000000000000000");
  EXPECT_EQ(NumberToText(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(ValueToText(std::int64_t{-42}), "-42");
  EXPECT_EQ(ValueToText(std::string("abc")), "abc");
}

TEST(Value, LongRoundsHalfToEven) {
  EXPECT_EQ(ValueToLong(2.5), 2);
  EXPECT_EQ(ValueToLong(3.5), 4);
  EXPECT_EQ(ValueToLong(-2.5), -2);
  EXPECT_EQ(ValueToLong(2.6), 3);
  EXPECT_EQ(ValueToLong(std::string(" 17 ")), 17);
  EXPECT_EQ(ValueToLong(std::string("4.5")), 4);
  EXPECT_DOUBLE_EQ(ValueToDouble(std::string("1.25")), 1.25);
  EXPECT_DOUBLE_EQ(ValueToDouble(std::int64_t{7}), 7.0);
}

TEST(Value, NullAndTextRaiseTheirErrors) {
  EXPECT_EQ(ErrorNumberOf([] { ValueToText(Value{}); }), kErrInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([] { ValueToLong(Value{}); }), kErrInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([] { ValueToDouble(Value{}); }), kErrInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([] { ValueToLong(std::string("12a")); }), kErrTypeMismatch);
  EXPECT_EQ(ErrorNumberOf([] { ValueToDouble(std::string("")); }), kErrTypeMismatch);
}

}  // namespace
}  // namespace tarnwick::platform
