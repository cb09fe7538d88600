// The texts of a waypoint file and of its duplicate check: coordinates in
// degrees and minutes with their quirks, and the list of repeated Plot IDs.
#include <gtest/gtest.h>
#include <fmt/core.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "waypoints/duplicate_plot_ids.h"
#include "waypoints/waypoint_record.h"

namespace tarnwick {
namespace {

using platform::Value;

TEST(WaypointCoordinate, FormsDegreesMinutesAndSecondsWithTheirQuirks) {
  const std::pair<double, const char*> cases[] = {
      {45.504198, "4530.151128"}, {-122.5, "-12230.000000"}, {5.25, "0515.000000"}, {-5.25, "-0515.000000"},
      // Between 0 and -1 the degrees are 0 and the sign is lost.
      {-0.5, "0030.000000"},
      // Seconds that round up to 60 are not carried into the minutes.
      {45.0 + 30.0 / 60.0 + 59.99996 / 3600.0, "4530.600000"}, {0.0, "0000.000000"}};
  for (const auto& [degrees, text] : cases) EXPECT_EQ(FormatWaypointCoordinate(degrees), text) << degrees;
}

TEST(WaypointCoordinate, RoundsHalfAwayFromZeroOnTheDecimalValue) {
  // 0.145 * 100 is 14.499999999999998 in binary; its decimal form is 14.5.
  EXPECT_EQ(RoundDecimalHalfAway(0.145 * 100), 15);
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
}

// A cursor over features whose field 2 holds the Plot ID.
class VectorCursor : public platform::FeatureCursor {
 public:
  explicit VectorCursor(std::vector<Value> ids) : ids_(std::move(ids)) {}
  std::optional<platform::Feature> NextFeature() override {
    if (next_ >= ids_.size()) return std::nullopt;
    platform::Feature feature;
    feature.values = {Value{}, Value{}, ids_[next_++]};
    return feature;
  }

 private:
  std::vector<Value> ids_;
  size_t next_ = 0;
};

TEST(DuplicatePlotIDs, ListsRepeatedIdsInOrderOfFirstAppearanceAndDrawsTheBar) {
  auto check = [](const std::vector<Value>& ids) {
    VectorCursor cursor(ids);
    return CheckForDuplicatePlotIDs(cursor, 2, static_cast<std::int64_t>(ids.size()));
  };
  const Value seven{std::int64_t{7}}, nine{std::int64_t{9}};
  EXPECT_EQ(check({nine, seven, Value{std::int64_t{8}}, seven, nine, nine}),
            "Duplicate Plot IDs Found:\r\n  --> 9:  n = 3\r\n  --> 7:  n = 2\r\n");
  EXPECT_EQ(check({Value{}, Value{"A"}, Value{}}), "Duplicate Plot IDs Found:\r\n  --> <Null>:  n = 2\r\n");
  EXPECT_EQ(check({seven, nine}), "");
  EXPECT_EQ(check({}), "No Features Found...");
  EXPECT_EQ(check(std::vector<Value>(1500, Value{"P1"})),
            "Duplicate Plot IDs Found:\r\n  --> P1:  n = 1,500\r\n");

  // The bar between empty and full (the dialog's test sees both ends, and
  // the check showing it as it goes).
  EXPECT_EQ(DuplicateCheckProgressText(1, 3),
            "Checking for Duplicate Plot ID values:\r\n[==========....................]  33%");
}

}  // namespace
}  // namespace tarnwick
