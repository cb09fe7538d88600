// Unused names for files and classes.
#include "support/unique_names.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/workspace.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

void Touch(const std::string& path) { std::ofstream(path) << "x"; }

TEST(UniqueNames, ExtensionIsSplitOnlyWithinTheLastFiveCharacters) {
  EXPECT_EQ(SplitShortExtension("/data/roads.shp").base, "/data/roads");
  EXPECT_EQ(SplitShortExtension("/data/roads.shp").extension, ".shp");
  EXPECT_EQ(SplitShortExtension("/data/roads.shapes").extension, "");
  EXPECT_EQ(SplitShortExtension("/data/Waypoints.way").extension, ".way");
  EXPECT_EQ(SplitShortExtension("/data/a.b/roads").extension, "");

  testkit::TempDir dir;
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shp"), dir / "roads.shp");
  Touch(dir / "roads.shp");
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shp"), dir / "roads_1.shp");
  Touch(dir / "roads_1.shp");
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shp"), dir / "roads_2.shp");
  // No extension: the number goes at the very end.
  Touch(dir / "roads.shapes");
  EXPECT_EQ(MakeUniquedBASEName(dir / "roads.shapes"), dir / "roads.shapes_1");
}

TEST(UniqueNames, AFolderOfTheSameStemBlocksAShapefileName) {
  testkit::TempDir dir;
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
  auto workspace = platform::Workspace::OpenOrCreate(dir / "inv.gpkg");
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = "Plots";
  newClass.spatialReference = platform::SpatialReference::FromEpsg(26910);
  workspace->CreateFeatureClass(newClass);
  newClass.name = "plots_1";
  workspace->CreateFeatureClass(newClass);
  EXPECT_TRUE(CheckIfFeatureClassExists(workspace, "PLOTS"));
  EXPECT_FALSE(CheckIfFeatureClassExists(workspace, "Stands"));
  EXPECT_FALSE(CheckIfFeatureClassExists(nullptr, "Plots"));
  EXPECT_EQ(MakeUniqueGDBFeatureClassName(workspace, "Stands"), "Stands");
  EXPECT_EQ(MakeUniqueGDBFeatureClassName(workspace, "plots"), "plots_2");
}

}  // namespace
}  // namespace tarnwick
