#include "support/file_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "presentation/error_handling.h"
#include "support/sorting.h"
#include "support/unique_names.h"
#include "testkit/fake_application.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {
using platform::host::MessageButtons;
using platform::host::MessageResult;

TEST(FileOperations, WriteAddsOneLineEndAsksBeforeOverwritingAndLeavesNothingOnFailure) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  const std::string path = dir / "report.txt";
  EXPECT_EQ(ReadTextFile(path), "");  // missing file, no message
  EXPECT_TRUE(WriteTextFile(app, path, "line 1\r\nline 2\r\n", false));
  EXPECT_EQ(ReadTextFile(path), "line 1\r\nline 2\r\n\r\n");
  EXPECT_TRUE(WriteTextFileOverwrite(app, path, "short", true));
  EXPECT_EQ(ReadTextFile(path), "short\r\n");
  EXPECT_TRUE(app.boxes.empty());
  EXPECT_TRUE(WriteTextFileOverwrite(path, ""));
  EXPECT_EQ(ReadTextFile(path), "\r\n");

  // Without leave to overwrite an existing file asks first.
  std::ofstream(path) << "old";
  app.answers.push_back(MessageResult::Cancel);
  EXPECT_FALSE(WriteTextFile(app, path, "new", false));
  EXPECT_EQ(ReadTextFile(path), "old");
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "File Exists:");
  EXPECT_EQ(app.boxes[0].text, "File Already Exists!\n  --> " + path +
                                   "\nClick 'OK' to overwrite the file, or 'CANCEL' to quit...");
  EXPECT_EQ(app.boxes[0].buttons, MessageButtons::OKCancel);

  app.answers.push_back(MessageResult::OK);
  EXPECT_TRUE(WriteTextFile(app, path, "new", false));
  EXPECT_EQ(ReadTextFile(path), "new\r\n");
  EXPECT_EQ(app.boxes.size(), 2u);

  // An unwritable path climbs the error road.
  EXPECT_THROW(WriteTextFile(app, dir / "missing/x.txt", "t", true), RoutineError);
  // A text that cannot take its name leaves nothing of itself behind.
  std::filesystem::create_directories(dir.path() / "taken.txt/inside");
  EXPECT_THROW(WriteTextFileOverwrite(dir / "taken.txt", "t"), RoutineError);
  EXPECT_TRUE(std::filesystem::is_directory(dir.path() / "taken.txt/inside"));
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "taken.txt.partial"));
}

TEST(FileOperations, NestedFolderListingIsSortedAndAppended) {
  testkit::TempDir dir;
  std::filesystem::create_directories(dir.path() / "b/deeper");
  std::filesystem::create_directories(dir.path() / "a");
  for (const char* name : {"z.txt", "b/deeper/m.shp", "a/k.dbf", "b/c.prj"}) std::ofstream(dir / name) << "x";
  std::vector<std::string> files{"/zzz-already-listed"};
  ReturnFilesFromNestedFolders2(dir.path().string(), files);
  // The whole list, earlier entries included, ends up in byte order.
  EXPECT_EQ(files, (std::vector<std::string>{dir / "a/k.dbf", dir / "b/c.prj", dir / "b/deeper/m.shp",
                                             dir / "z.txt", "/zzz-already-listed"}));
}

void Touch(const std::string& path) { std::ofstream(path) << "x"; }

TEST(UniqueNames, FilesAreNumberedBeforeAnExtensionOfUpToFiveCharacters) {
  testkit::TempDir dir;
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shp"), dir / "roads.shp");
  Touch(dir / "roads.shp");
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shp"), dir / "roads_1.shp");
  Touch(dir / "roads_1.shp");
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shp"), dir / "roads_2.shp");
  // A longer extension is no extension: the number goes at the very end.
  Touch(dir / "roads.shapes");
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shapes"), dir / "roads.shapes_1");
  EXPECT_EQ(SplitShortExtension("/data/a.b/roads").extension, "");

  // A folder of the same stem blocks a shapefile name.
  std::filesystem::create_directory(dir / "plots");
  EXPECT_EQ(MakeUniquedBASEName(dir / "plots.shp"), dir / "plots.shp");
  EXPECT_EQ(MakeUniqueShapeFilename(dir / "plots.shp"), dir / "plots_1.shp");
  std::filesystem::create_directory(dir / "plots_1");
  Touch(dir / "plots_2.shp");
  EXPECT_EQ(MakeUniqueShapeFilename(dir / "plots.shp"), dir / "plots_3.shp");
  EXPECT_EQ(MakeUniqueShapeFilename(dir / "stands.shp"), dir / "stands.shp");
}

TEST(UniqueNames, ClassNamesAreNumberedPastTakenOnesIgnoringCase) {
  testkit::TempDir dir;
  for (const char* name : {"Plots", "plots_1"}) {
    testkit::MakeClass(dir / "inv.gpkg", testkit::ClassSpec(name, platform::GeometryType::Point, {}));
  }
  auto workspace = platform::Workspace::Open(dir / "inv.gpkg");
  EXPECT_TRUE(CheckIfFeatureClassExists(workspace, "PLOTS"));
  EXPECT_FALSE(CheckIfFeatureClassExists(workspace, "Stands"));
  EXPECT_FALSE(CheckIfFeatureClassExists(nullptr, "Plots"));
  EXPECT_EQ(MakeUniqueGDBFeatureClassName(workspace, "Stands"), "Stands");
  EXPECT_EQ(MakeUniqueGDBFeatureClassName(workspace, "plots"), "plots_2");
}

TEST(Sorting, KeysAndObjectsStayPairedInTheRangeGiven) {
  // Equal keys may come out in any order, but each object stays with its key.
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> pick(0, 9);
  std::vector<double> many;
  std::vector<int> ids;
  for (int i = 0; i < 500; ++i) {
    many.push_back(pick(rng) + (i % 3) * 0.5);
    ids.push_back(static_cast<int>(many.back() * 2) * 1000 + i);
  }
  DoubleAscendingWithObjects(many, ids, 0, 499);
  EXPECT_TRUE(std::is_sorted(many.begin(), many.end()));
  for (std::size_t i = 0; i < many.size(); ++i) EXPECT_EQ(ids[i] / 1000, static_cast<int>(many[i] * 2));

  std::vector<double> keys{9, 8, 3, 1, 2, 0};
  std::vector<int> objects{0, 1, 2, 3, 4, 5};
  DoubleAscendingWithObjects(keys, objects, 2, 4);
  EXPECT_EQ(keys, (std::vector<double>{9, 8, 1, 2, 3, 0}));
  EXPECT_EQ(objects, (std::vector<int>{0, 1, 3, 4, 2, 5}));
  EXPECT_THROW(DoubleAscendingWithObjects(keys, objects, 0, 6), RoutineError);

  std::vector<std::string> texts{"b", "B", "a", "ab", "", "a"};
  StringsAscending(texts, 0, 5);
  EXPECT_EQ(texts, (std::vector<std::string>{"", "B", "a", "a", "ab", "b"}));
}

}  // namespace
}  // namespace tarnwick
