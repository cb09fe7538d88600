#include "shell/extension.h"

#include <gtest/gtest.h>

#include <deque>
#include <tuple>
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
  // The X spacing negative turned positive, the Y spacing zero turned into
  // one; the feature dataset is not kept.
  EXPECT_EQ(std::make_tuple(loaded.StandIDHistory, loaded.SeparationUnitIndex, loaded.GridOrientation,
                            loaded.UserSpacingOption, loaded.XSpacing, loaded.YSpacing, loaded.DirectoryPath,
                            loaded.DirectoryType, loaded.OrientationFromField, loaded.IsFeatureDataset,
                            loaded.FeatDatasetName),
            std::make_tuple(saved.StandIDHistory, 2, 37.5, 7, 20.0, 1.0, saved.DirectoryPath,
                            std::string("File Geodatabase"), true, false, std::string()));

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
  // Read up to the end; the old value of what was not there kept, and not repaired.
  EXPECT_EQ(std::make_tuple(loaded.OrientationHistory, loaded.OrientationFromField, loaded.XSpacing),
            std::make_tuple(std::string("Bearing"), true, -20.0));
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
  EXPECT_EQ(fresh.XSpacing, 0);  // the dialog shows 1; the extension keeps 0
  clsExtension typeless;
  typeless.DirectoryPath = "/data";
  typeless.IsFeatureDataset = true;
  typeless.Startup();
  for (const clsExtension* e : {&fresh, &typeless}) {
    EXPECT_EQ(std::make_tuple(e->DirectoryType, e->DirectoryPath, e->IsFeatureDataset),
              std::make_tuple(std::string("Shapefile"), std::string(), false));
  }
}

}  // namespace
}  // namespace tarnwick
