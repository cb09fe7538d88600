#include "shell/extension.h"

#include <gtest/gtest.h>

#include <deque>
#include <stdexcept>

#include "testkit/fake_application.h"

namespace tarnwick {
namespace {

class MemoryStream : public ValueStream {
 public:
  StreamValue Read() override {
    if (values.empty()) throw std::runtime_error("End of stream");
    StreamValue value = values.front();
    values.pop_front();
    return value;
  }
  void Write(const StreamValue& value) override { values.push_back(value); }
  std::deque<StreamValue> values;
};

TEST(Extension, SaveAndLoadRoundTripAndRepair) {
  clsExtension saved;
  saved.StandIDHistory = "StandID,Stand_ID,ID,Block";
  saved.SeparationUnitIndex = 2;
  saved.GridOrientation = 37.5;
  saved.UserSpacingOption = 7;
  saved.XSpacing = -20;
  saved.YSpacing = 0;
  saved.DirectoryPath = "/data/inventory.gdb";
  saved.DirectoryType = "File Geodatabase";
  saved.OrientationFromField = true;
  saved.IsFeatureDataset = true;  // not in the stream
  saved.FeatDatasetName = "Inventory";
  MemoryStream stream;
  saved.Save(stream);
  ASSERT_EQ(stream.values.size(), 24u);
  EXPECT_EQ(std::get<std::int32_t>(stream.values[14]), 7);  // UserSpacingOption keeps its place

  clsExtension loaded;
  loaded.Load(stream);
  EXPECT_EQ(loaded.StandIDHistory, saved.StandIDHistory);
  EXPECT_EQ(loaded.SeparationUnitIndex, 2);
  EXPECT_EQ(loaded.GridOrientation, 37.5);
  EXPECT_EQ(loaded.UserSpacingOption, 7);
  EXPECT_EQ(loaded.XSpacing, 20);  // negative turned positive
  EXPECT_EQ(loaded.YSpacing, 1);   // zero turned into one
  EXPECT_EQ(loaded.DirectoryType, "File Geodatabase");
  EXPECT_TRUE(loaded.OrientationFromField);
  EXPECT_FALSE(loaded.IsFeatureDataset);
  EXPECT_EQ(loaded.FeatDatasetName, "");

  // Save then Load on one object changes none of the persisted members.
  MemoryStream again;
  loaded.Save(again);
  const std::deque<StreamValue> before = again.values;
  loaded.Load(again);
  loaded.Save(again);
  EXPECT_EQ(again.values, before);
}

TEST(Extension, ShortOrBadStreamKeepsWhatWasReadAndReportsOnce) {
  clsExtension source;
  source.XSpacing = -20;
  source.OrientationHistory = "Bearing";
  MemoryStream stream;
  source.Save(stream);
  stream.values.pop_back();  // ends after value 23

  testkit::FakeApplication app;
  clsExtension loaded;
  loaded.OrientationFromField = true;
  loaded.SetErrorHost(&app, nullptr);
  loaded.Load(stream);
  EXPECT_EQ(loaded.OrientationHistory, "Bearing");
  EXPECT_TRUE(loaded.OrientationFromField);  // old value kept
  EXPECT_EQ(loaded.XSpacing, -20);           // not repaired
  EXPECT_EQ(app.windows.size(), 1u);

  MemoryStream bad;
  source.Save(bad);
  bad.values[4] = std::string("two");  // a text where a number belongs
  clsExtension partly;
  partly.SetErrorHost(&app, nullptr);
  partly.Load(bad);
  EXPECT_EQ(partly.PlotCountHistory, source.PlotCountHistory);
  EXPECT_EQ(app.windows.size(), 2u);
}

TEST(Extension, StartupFallsBackToShapefileFolder) {
  clsExtension fresh;
  fresh.Startup();
  EXPECT_EQ(fresh.DirectoryType, "Shapefile");
  EXPECT_EQ(fresh.DirectoryPath, "");
  EXPECT_EQ(fresh.XSpacing, 0);  // the dialog shows 1; the extension keeps 0
  clsExtension typeless;
  typeless.DirectoryPath = "/data";
  typeless.IsFeatureDataset = true;
  typeless.Startup();
  EXPECT_EQ(typeless.DirectoryType, "Shapefile");
  EXPECT_EQ(typeless.DirectoryPath, "");
  EXPECT_FALSE(typeless.IsFeatureDataset);
}

}  // namespace
}  // namespace tarnwick
