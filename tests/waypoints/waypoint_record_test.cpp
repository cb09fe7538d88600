#include "waypoints/waypoint_record.h"

#include <gtest/gtest.h>
#include <fmt/core.h>

#include <cmath>
#include <random>
#include <string>

namespace tarnwick {
namespace {

using platform::Value;

TEST(WaypointCoordinate, FormsDegreesMinutesAndSecondsWithTheirQuirks) {
  EXPECT_EQ(FormatWaypointCoordinate(45.504198), "4530.151128");
  EXPECT_EQ(FormatWaypointCoordinate(-122.5), "-12230.000000");
  EXPECT_EQ(FormatWaypointCoordinate(5.25), "0515.000000");
  EXPECT_EQ(FormatWaypointCoordinate(-5.25), "-0515.000000");
  // Between 0 and -1 the degrees are 0 and the sign is lost.
  EXPECT_EQ(FormatWaypointCoordinate(-0.5), "0030.000000");
  // Seconds that round up to 60 are not carried into the minutes.
  EXPECT_EQ(FormatWaypointCoordinate(45.0 + 30.0 / 60.0 + 59.99996 / 3600.0), "4530.600000");
  EXPECT_EQ(FormatWaypointCoordinate(0.0), "0000.000000");
}

TEST(WaypointCoordinate, RoundsHalfAwayFromZeroOnTheDecimalValue) {
  // 0.145 * 100 is 14.499999999999998 in binary; its decimal form is 14.5.
  EXPECT_EQ(RoundDecimalHalfAway(0.145 * 100), 15);
  EXPECT_EQ(RoundDecimalHalfAway(2.5), 3);
  EXPECT_EQ(RoundDecimalHalfAway(-2.5), -3);
  EXPECT_EQ(RoundDecimalHalfAway(2.4999), 2);
  // The shortcut that skips the decimal text agrees with it everywhere,
  // including values a hair off a half and seconds near their limit.
  auto byText = [](double v) { return static_cast<long long>(std::round(std::stod(fmt::format("{:.15g}", v)))); };
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> seconds(0.0, 60.0);
  for (int i = 0; i < 200000; ++i) {
    const double v = seconds(random) * 10000.0;
    ASSERT_EQ(RoundDecimalHalfAway(v), byText(v)) << fmt::format("{:.17g}", v);
    const double nearHalf = std::nextafter(std::floor(v) + 0.5, (i % 2) ? 1e9 : -1e9);
    ASSERT_EQ(RoundDecimalHalfAway(nearHalf), byText(nearHalf)) << fmt::format("{:.17g}", nearHalf);
    ASSERT_EQ(RoundDecimalHalfAway(-nearHalf), byText(-nearHalf));
  }
  EXPECT_EQ(FormatPicture(7, 2), "07");
  EXPECT_EQ(FormatPicture(-7, 2), "-07");
  EXPECT_EQ(FormatPicture(122, 2), "122");
}

TEST(WaypointRecord, ComposesFieldsAndTheFixedTag) {
  EXPECT_EQ(FormatWaypointRecord(Value{std::int64_t{102}}, 45.5, -122.25, std::nullopt, std::nullopt),
            "102,4530.000000,-12215.000000,0.0,;<ICON = 9>,");
  EXPECT_EQ(FormatWaypointRecord(Value{std::int64_t{101}}, 45.5, -122.25, Value{312.5}, Value{std::string("A-17")}),
            "101,4530.000000,-12215.000000,312.5,A-17;<ICON = 9>,");
  // Null values: "<Null>" for the Plot ID, "0.0" elevation, only the tag as description.
  EXPECT_EQ(FormatWaypointRecord(Value{}, 5.25, -0.5, Value{}, Value{}), "<Null>,0515.000000,0030.000000,0.0,;<ICON = 9>,");
  // Text goes in as it stands, commas included.
  EXPECT_EQ(FormatWaypointRecord(Value{std::string("P 1,a")}, 1, 1, Value{std::int64_t{12}}, Value{std::string("S,2")}),
            "P 1,a,0100.000000,0100.000000,12,S,2;<ICON = 9>,");
}

}  // namespace
}  // namespace tarnwick
