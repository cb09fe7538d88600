#include "waypoints/duplicate_plot_ids.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarnwick {
namespace {

using platform::Value;

// A cursor over features whose field 2 holds the Plot ID.
class VectorCursor : public platform::FeatureCursor {
 public:
  explicit VectorCursor(const std::vector<Value>& ids) {
    for (const auto& id : ids) {
      platform::Feature feature;
      feature.oid = static_cast<std::int64_t>(features_.size()) + 1;
      feature.values = {Value{feature.oid}, Value{}, id};
      features_.push_back(feature);
    }
  }
  std::optional<platform::Feature> NextFeature() override {
    if (next_ >= features_.size()) return std::nullopt;
    return features_[next_++];
  }

 private:
  std::vector<platform::Feature> features_;
  size_t next_ = 0;
};

std::string Check(const std::vector<Value>& ids) {
  VectorCursor cursor(ids);
  return CheckForDuplicatePlotIDs(cursor, 2, static_cast<std::int64_t>(ids.size()));
}

TEST(DuplicatePlotIDs, ListsRepeatedIdsInOrderOfFirstAppearance) {
  const Value seven{std::int64_t{7}};
  const Value nine{std::int64_t{9}};
  EXPECT_EQ(Check({nine, seven, Value{std::int64_t{8}}, seven, nine, nine}),
            "Duplicate Plot IDs Found:\r\n  --> 9:  n = 3\r\n  --> 7:  n = 2\r\n");
  EXPECT_EQ(Check({Value{}, Value{std::string("A")}, Value{}}), "Duplicate Plot IDs Found:\r\n  --> <Null>:  n = 2\r\n");
  EXPECT_EQ(Check({seven, nine}), "");
  EXPECT_EQ(Check({}), "No Features Found...");
  EXPECT_EQ(Check(std::vector<Value>(1500, Value{std::string("P1")})),
            "Duplicate Plot IDs Found:\r\n  --> P1:  n = 1,500\r\n");
}

TEST(DuplicatePlotIDs, ProgressTextShowsBarAndPercent) {
  EXPECT_EQ(DuplicateCheckProgressText(1, 3),
            "Checking for Duplicate Plot ID values:\r\n[==========....................]  33%");
  EXPECT_EQ(DuplicateCheckProgressText(3, 3),
            "Checking for Duplicate Plot ID values:\r\n[==============================] 100%");
  EXPECT_EQ(DuplicateCheckProgressText(0, 10),
            "Checking for Duplicate Plot ID values:\r\n[..............................]   0%");
  std::vector<std::string> shown;
  VectorCursor cursor({Value{std::int64_t{1}}, Value{std::int64_t{2}}});
  CheckForDuplicatePlotIDs(cursor, 2, 2, [&shown](const std::string& text) { shown.push_back(text); });
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_NE(shown[0].find("[===============...............]  50%"), std::string::npos);
  EXPECT_EQ(FormatThousands(1234567), "1,234,567");
  EXPECT_EQ(FormatThousands(999), "999");
}

}  // namespace
}  // namespace tarnwick
