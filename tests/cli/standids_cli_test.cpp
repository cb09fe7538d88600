// The import-stand-ids subcommand run as a program on a small GeoPackage.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli/tarnwick_program.h"
#include "platform/workspace.h"
#include "testkit/layers.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::Value;
using ::testing::HasSubstr;

const std::string kStands = "import-stand-ids --stands \"inv.gpkg|layername=Stands\" --stand-id StandID ";
const std::string kPlots = " --points \"inv.gpkg|layername=Plots\"";

// "inv.gpkg": Stands (two squares) and Plots (three points, the last
// outside), both in UTM zone 10N.
void MakeInventory(const testkit::TempDir& dir) {
  const auto sr = platform::SpatialReference::FromEpsg(26910);
  testkit::MakeClass(dir / "inv.gpkg",
                     testkit::ClassSpec("Stands", platform::GeometryType::Polygon, sr,
                                        {Field{"StandID", "", FieldType::String, 8}, Field{"Age", "", FieldType::Integer}}),
                     {{testkit::Square(0, 0, 100), {Value{"A"}, Value{10L}}},
                      {testkit::Square(100, 0, 100), {Value{"B"}, Value{11L}}}});
  testkit::MakeClass(dir / "inv.gpkg",
                     testkit::ClassSpec("Plots", platform::GeometryType::Point, sr,
                                        {Field{"PlotID", "", FieldType::Integer}, Field{"Age", "", FieldType::String, 4}}),
                     {{testkit::PointWkt(50, 50), {Value{1L}}},
                      {testkit::PointWkt(150, 50), {Value{2L}}},
                      {testkit::PointWkt(500, 500), {Value{3L}}}});
}

TEST(ImportStandIdsCommand, ClonesTheStandIdAndRenamesAClashingAttribute) {
  testkit::TempDir dir;
  MakeInventory(dir);
  const auto run = Tarnwick(dir, kStands + "--attributes Age" + kPlots + " --clone");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const std::string plots = dir / "inv.gpkg|layername=Plots";
  EXPECT_EQ(testkit::Column(plots, "StandID"), (std::vector<Value>{Value{"A"}, Value{"B"}, Value{}}));
  EXPECT_EQ(testkit::Column(plots, "Age1"), (std::vector<Value>{Value{10L}, Value{11L}, Value{}}));
  EXPECT_THAT(run.err, HasSubstr("the stand attribute 'Age' was added as 'Age1'"));
  EXPECT_THAT(run.out, HasSubstr("Import Complete"));
  EXPECT_THAT(run.out, HasSubstr("1] Age"));
  EXPECT_EQ(run.out.find("\\par"), std::string::npos);  // plain text, not RTF
  EXPECT_EQ(testkit::ReadFile(dir / "Plots_standids_report.rtf").rfind("{\\rtf1", 0), 0u);
}

TEST(ImportStandIdsCommand, RefusesBadInputBeforeChangingAnything) {
  testkit::TempDir dir;
  MakeInventory(dir);
  auto run = Tarnwick(dir, kStands + "--points \"inv.gpkg|layername=Stands\" --clone");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("is the stand layer"));
  EXPECT_EQ(Tarnwick(dir, kStands + kPlots).exitCode, 2);  // neither --point-field nor --clone
  EXPECT_EQ(Tarnwick(dir, kStands + "--attributes StandID" + kPlots + " --clone").exitCode, 2);
  // A text Stand ID into an integer point field asks first; without --overwrite the answer is Cancel.
  run = Tarnwick(dir, kStands + kPlots + " --point-field PlotID");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("Confirm Attribute Field Choices:"));
  EXPECT_THAT(run.err, HasSubstr("Stand Polygon ID Field 'StandID':  Type = Text"));

  // Points in a shapefile that may not be written.
  testkit::MakeClass(dir / "shp",
                     testkit::ClassSpec("plots", platform::GeometryType::Point,
                                        platform::SpatialReference::FromEpsg(26910),
                                        {Field{"PlotID", "", FieldType::Integer}}),
                     {{testkit::PointWkt(50, 50), {Value{1L}}}});
  std::filesystem::permissions(dir / "shp/plots.dbf", std::filesystem::perms::owner_read);
  run = Tarnwick(dir, kStands + "--attributes Age --points shp/plots.shp --clone");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("is read-only. Nothing was changed."));
  EXPECT_LT(platform::OpenFeatureLayer(dir / "shp/plots.shp").featureClass->FindField("StandID"), 0);
}

}  // namespace
}  // namespace tarnwick
