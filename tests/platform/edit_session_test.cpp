// Edit sessions in each store: discarded, the store is as it was; saved, a
// fresh opening finds every change. Run locks on a dataset.
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

class EditSessions : public ::testing::TestWithParam<testkit::StoreCase> {
 protected:
  // Class "Plots" with two points and class "Old", written outside a session.
  void SetUp() override {
    auto workspace = Workspace::OpenOrCreate(Store());
    for (const char* name : {"Plots", "Old"}) {
      Workspace::NewFeatureClass newClass;
      newClass.name = name;
      newClass.spatialReference = SpatialReference::FromEpsg(26910);
      newClass.fields = {Field{"PlotID", "", FieldType::Integer}};
      Insert(*workspace->CreateFeatureClass(newClass), 2);
    }
  }
  std::string Store() const { return dir / GetParam().path; }
  static void Insert(FeatureClass& featureClass, int count) {
    auto cursor = featureClass.Insert();
    for (int i = 0; i < count; ++i) {
      auto buffer = cursor->CreateFeatureBuffer();
      buffer.shape = Geometry::MakePoint(500000 + i, 4000000, SpatialReference::FromEpsg(26910));
      buffer.values.at(2) = Value{std::int64_t{i}};
      cursor->InsertFeature(buffer);
    }
    cursor->Flush();
  }
  // A field and points added to Plots, Old replaced by a new class of that
  // name, and a class New.
  static void Change(EditSession& session, const std::shared_ptr<Workspace>& workspace) {
    auto plots = session.Edit(workspace->OpenFeatureClass("Plots"));
    plots->AddField(Field{"NOTE", "", FieldType::String, 20});
    Insert(*plots, 5);
    workspace->DeleteFeatureClass("Old");
    for (const char* name : {"Old", "New"}) {
      Workspace::NewFeatureClass newClass;
      newClass.name = name;
      newClass.fields = {Field{"Code", "", FieldType::Integer}};
      Insert(*workspace->CreateFeatureClass(newClass), 1);
    }
  }
  std::string Layer(const std::string& name) const { return Store() + "|layername=" + name; }

  testkit::TempDir dir;
};

TEST_P(EditSessions, DiscardedChangesLeaveTheStoreAsItWas) {
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
}

TEST_P(EditSessions, SavedChangesAreThereForAFreshOpening) {
  {
    EditSession session;
    Change(session, session.OpenWorkspace(Store()));
    session.Commit();
  }
  auto workspace = Workspace::Open(Store());
  auto plots = workspace->OpenFeatureClass("Plots");
  EXPECT_EQ(plots->FeatureCount(), 7);
  EXPECT_GE(plots->FindField("NOTE"), 0);
  EXPECT_EQ(workspace->OpenFeatureClass("Old")->FeatureCount(), 1);
  EXPECT_GE(workspace->OpenFeatureClass("Old")->FindField("Code"), 0);  // the new class, not the old one
  EXPECT_EQ(workspace->OpenFeatureClass("New")->FeatureCount(), 1);
  for (const auto& entry : testkit::FolderEntries(dir.path())) {
    EXPECT_EQ(entry.find("tarnwick"), std::string::npos) << entry;  // no copy, backup or lock stays
    EXPECT_EQ(entry.find("ogrtransaction"), std::string::npos) << entry;
  }
}

INSTANTIATE_TEST_SUITE_P(Stores, EditSessions,
                         ::testing::ValuesIn(testkit::kStores),
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
