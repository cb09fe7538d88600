// Attribute-only updates in each store: saved, exactly the chosen fields
// change (text beyond ASCII included, which a shapefile leaves to its
// driver); discarded halfway, the class is as it was.
#include <gtest/gtest.h>

#include "platform/edit_session.h"
#include "platform/workspace.h"
#include "testkit/dataset_snapshot.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::platform {
namespace {

class AttributeUpdates : public ::testing::TestWithParam<testkit::StoreCase> {
 protected:
  // Class "Plots": PlotID, Note (text 12) and Code, five points.
  void SetUp() override {
    std::vector<testkit::Row> rows;
    for (int i = 0; i < 5; ++i) {
      rows.push_back({testkit::PointWkt(500000.5 + i, 4000000.25),
                      {Value{std::int64_t{100 + i}}, Value{std::string("old")}, Value{std::int64_t{-1}}}});
    }
    testkit::MakeClass(Store(),
                       testkit::ClassSpec("Plots", GeometryType::Point, SpatialReference::FromEpsg(26910),
                                          {Field{"PlotID", "", FieldType::Integer}, Field{"Note", "", FieldType::String, 12},
                                           Field{"Code", "", FieldType::Integer}}),
                       rows);
  }
  std::string Store() const { return dir / GetParam().path; }
  std::string Layer() const { return Store() + "|layername=Plots"; }
  // Sets Note and Code of every point, stopping after `count` points.
  static void Update(EditSession& session, const std::shared_ptr<Workspace>& workspace, int count) {
    auto plots = session.Edit(workspace->OpenFeatureClass("Plots"));
    auto cursor = plots->UpdateAttributes({plots->FindField("Note"), plots->FindField("Code")});
    int n = 0;
    for (auto rows = cursor->NextBatch(); !rows.empty(); rows = cursor->NextBatch()) {
      for (std::size_t i = 0; i < rows.size() && n < count; ++i, ++n) {
        EXPECT_DOUBLE_EQ(rows[i].point->x, 500000.5 + n);
        const Value note = n == 3 ? Value{std::string("Été")} : Value{"N" + std::to_string(n)};
        cursor->Set(i, std::vector<Value>{note, Value{std::string(std::to_string(n * 7))}});  // text read as a number
      }
    }
  }

  testkit::TempDir dir;
};

TEST_P(AttributeUpdates, SavedChangeOnlyTheChosenFields) {
  std::string expected = testkit::Snapshot(Layer());
  for (int n = 0; n < 5; ++n) {
    const std::string note = n == 3 ? "Été" : "N" + std::to_string(n);
    const auto at = expected.find("|old|-1|", 0);
    expected.replace(at, 8, "|" + note + "|" + std::to_string(n * 7) + "|");
  }
  {
    EditSession session;
    Update(session, session.OpenWorkspace(Store()), 5);
    session.Commit();
  }
  EXPECT_EQ(testkit::Snapshot(Layer()), expected);
}

TEST_P(AttributeUpdates, DiscardedLeaveTheClassAsItWas) {
  const std::string before = testkit::Snapshot(Layer());
  const auto entries = testkit::FolderEntries(dir.path());
  {
    EditSession session;
    Update(session, session.OpenWorkspace(Store()), 4);
  }
  EXPECT_EQ(testkit::Snapshot(Layer()), before);
  EXPECT_EQ(testkit::FolderEntries(dir.path()), entries);
}

INSTANTIATE_TEST_SUITE_P(Stores, AttributeUpdates,
                         ::testing::ValuesIn(testkit::kStores),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace tarnwick::platform
