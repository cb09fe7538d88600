// Edit sessions in each store: discarded, the store is as it was; saved, a
// fresh opening finds every change. Attribute-only updates change exactly the
// chosen fields (text beyond ASCII included, which a shapefile leaves to its
// driver). Run locks on a dataset.
#include "platform/edit_session.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/dataset_lock.h"
#include "platform/errors.h"
#include "platform/workspace.h"
#include "testkit/dataset_snapshot.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::platform {
namespace {

const SpatialReference kUtm = SpatialReference::FromEpsg(26910);

// Points at x = 500000 + i (+ offset) carrying `values` and then i.
std::vector<testkit::Row> Points(int count, double offset = 0, std::vector<Value> values = {}) {
  std::vector<testkit::Row> rows;
  for (int i = 0; i < count; ++i) {
    rows.push_back({testkit::PointWkt(500000 + offset + i, 4000000.25), values});
    rows.back().values.push_back(Value{std::int64_t{i}});
  }
  return rows;
}

void Insert(FeatureClass& featureClass, int count) {
  auto cursor = featureClass.Insert();
  for (const auto& row : Points(count)) {
    auto buffer = cursor->CreateFeatureBuffer();
    buffer.shape = Geometry::FromWkt(row.wkt, kUtm);
    buffer.values.at(2) = row.values[0];
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
}

class EditSessions : public ::testing::TestWithParam<testkit::StoreCase> {
 protected:
  // Class "Plots" with two points and class "Old", written outside a session.
  void SetUp() override {
    for (const char* name : {"Plots", "Old"}) {
      testkit::MakeClass(Store(), testkit::ClassSpec(name, GeometryType::Point, kUtm, {Field{"PlotID", "", FieldType::Integer}}),
                         Points(2));
    }
  }
  std::string Store() const { return dir / GetParam().path; }
  std::string Layer(const std::string& name) const { return Store() + "|layername=" + name; }
  // A field and points added to Plots, Old replaced by a new class of that
  // name, and a class New.
  static void Change(EditSession& session, const std::shared_ptr<Workspace>& workspace) {
    auto plots = session.Edit(workspace->OpenFeatureClass("Plots"));
    plots->AddField(Field{"NOTE", "", FieldType::String, 20});
    Insert(*plots, 5);
    workspace->DeleteFeatureClass("Old");
    for (const char* name : {"Old", "New"}) {
      Insert(*workspace->CreateFeatureClass(
                 testkit::ClassSpec(name, GeometryType::Point, {}, {Field{"Code", "", FieldType::Integer}})),
             1);
    }
  }

  testkit::TempDir dir;
};

TEST_P(EditSessions, DiscardedLeaveTheStoreAsItWasSavedAreThereForAFreshOpening) {
  const std::string plots = testkit::Snapshot(Layer("Plots"));
  const std::string old = testkit::Snapshot(Layer("Old"));
  const auto entries = testkit::FolderEntries(dir.path());
  {
    EditSession session;
    auto workspace = session.OpenWorkspace(Store());
    Change(session, workspace);
    EXPECT_EQ(workspace->OpenFeatureClass("Plots")->FeatureCount(), 7);  // the session sees its own changes
  }
  EXPECT_EQ(testkit::Snapshot(Layer("Plots")), plots);
  EXPECT_EQ(testkit::Snapshot(Layer("Old")), old);
  EXPECT_FALSE(Workspace::Open(Store())->NameExists("New"));
  EXPECT_EQ(testkit::FolderEntries(dir.path()), entries);

  {
    EditSession session;
    Change(session, session.OpenWorkspace(Store()));
    session.Commit();
  }
  auto workspace = Workspace::Open(Store());
  auto saved = workspace->OpenFeatureClass("Plots");
  EXPECT_EQ(saved->FeatureCount(), 7);
  EXPECT_GE(saved->FindField("NOTE"), 0);
  EXPECT_EQ(workspace->OpenFeatureClass("Old")->FeatureCount(), 1);
  EXPECT_GE(workspace->OpenFeatureClass("Old")->FindField("Code"), 0);  // the new class, not the old one
  EXPECT_EQ(workspace->OpenFeatureClass("New")->FeatureCount(), 1);
  for (const auto& entry : testkit::FolderEntries(dir.path())) {
    EXPECT_EQ(entry.find("tarnwick"), std::string::npos) << entry;  // no copy, backup or lock stays
    EXPECT_EQ(entry.find("ogrtransaction"), std::string::npos) << entry;
  }
}

INSTANTIATE_TEST_SUITE_P(Stores, EditSessions, ::testing::ValuesIn(testkit::kStores),
                         [](const auto& info) { return info.param.name; });

class AttributeUpdates : public ::testing::TestWithParam<testkit::StoreCase> {
 protected:
  // Class "Plots": Note (text 12), Code and PlotID, five points.
  void SetUp() override {
    testkit::MakeClass(Store(),
                       testkit::ClassSpec("Plots", GeometryType::Point, kUtm,
                                          {Field{"Note", "", FieldType::String, 12}, Field{"Code", "", FieldType::Integer},
                                           Field{"PlotID", "", FieldType::Integer}}),
                       Points(5, 0.5, {Value{std::string("old")}, Value{std::int64_t{-1}}}));
  }
  std::string Store() const { return dir / GetParam().path; }
  std::string Layer() const { return Store() + "|layername=Plots"; }
  static std::string Note(int n) { return n == 3 ? "Été" : "N" + std::to_string(n); }
  // Sets Note and Code of every point, stopping after `count` points.
  static void Update(EditSession& session, const std::shared_ptr<Workspace>& workspace, int count) {
    auto plots = session.Edit(workspace->OpenFeatureClass("Plots"));
    auto cursor = plots->UpdateAttributes({plots->FindField("Note"), plots->FindField("Code")});
    int n = 0;
    for (auto rows = cursor->NextBatch(); !rows.empty(); rows = cursor->NextBatch()) {
      for (std::size_t i = 0; i < rows.size() && n < count; ++i, ++n) {
        EXPECT_DOUBLE_EQ(rows[i].point->x, 500000.5 + n);
        // The code goes in as text, read as a number.
        cursor->Set(i, std::vector<Value>{Value{Note(n)}, Value{std::string(std::to_string(n * 7))}});
      }
    }
  }

  testkit::TempDir dir;
};

TEST_P(AttributeUpdates, DiscardedLeaveTheClassAsItWasSavedChangeOnlyTheChosenFields) {
  const std::string before = testkit::Snapshot(Layer());
  const auto entries = testkit::FolderEntries(dir.path());
  {
    EditSession session;
    Update(session, session.OpenWorkspace(Store()), 4);
  }
  EXPECT_EQ(testkit::Snapshot(Layer()), before);
  EXPECT_EQ(testkit::FolderEntries(dir.path()), entries);

  std::string expected = before;
  for (int n = 0; n < 5; ++n) {
    expected.replace(expected.find("|old|-1|"), 8, "|" + Note(n) + "|" + std::to_string(n * 7) + "|");
  }
  {
    EditSession session;
    Update(session, session.OpenWorkspace(Store()), 5);
    session.Commit();
  }
  EXPECT_EQ(testkit::Snapshot(Layer()), expected);
}

INSTANTIATE_TEST_SUITE_P(Stores, AttributeUpdates, ::testing::ValuesIn(testkit::kStores),
                         [](const auto& info) { return info.param.name; });

TEST(DatasetLock, ASecondRunIsToldTheDatasetIsInUseUntilTheFirstEnds) {
  testkit::TempDir dir;
  const std::string dataset = dir / "plots.shp";
  {
    const DatasetLock first = DatasetLock::Acquire(dataset);
    EXPECT_TRUE(first.Held());
    try {
      DatasetLock::Acquire(dataset);
      FAIL() << "a second lock was given";
    } catch (const PlatformError& e) {
      EXPECT_EQ(e.Number(), kErrDatasetInUse);
      EXPECT_NE(std::string(e.what()).find("is in use by another run"), std::string::npos);
    }
  }
  EXPECT_TRUE(DatasetLock::Acquire(dataset).Held());
  EXPECT_FALSE(std::filesystem::exists(dir / ".plots.shp.tarnwick-lock"));
}

}  // namespace
}  // namespace tarnwick::platform
