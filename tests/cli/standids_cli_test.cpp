// The import-stand-ids subcommand run as a program on a small GeoPackage.
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

using Run = testkit::CommandRun;

// "inv.gpkg": Stands (two squares) and Plots (three points, the last
// outside), both in UTM zone 10N.
void MakeInventory(const testkit::TempDir& dir) {
  const auto sr = platform::SpatialReference::FromEpsg(26910);
  testkit::MakeClass(dir / "inv.gpkg",
                     testkit::ClassSpec("Stands", platform::GeometryType::Polygon, sr,
                                        {Field{"StandID", "", FieldType::String, 8}, Field{"Age", "", FieldType::Integer}}),
                     {{testkit::Square(0, 0, 100), {Value{std::string("A")}, Value{std::int64_t{10}}}},
                      {testkit::Square(100, 0, 100), {Value{std::string("B")}, Value{std::int64_t{11}}}}});
  testkit::MakeClass(dir / "inv.gpkg",
                     testkit::ClassSpec("Plots", platform::GeometryType::Point, sr,
                                        {Field{"PlotID", "", FieldType::Integer}, Field{"Age", "", FieldType::String, 4}}),
                     {{testkit::PointWkt(50, 50), {Value{std::int64_t{1}}}},
                      {testkit::PointWkt(150, 50), {Value{std::int64_t{2}}}},
                      {testkit::PointWkt(500, 500), {Value{std::int64_t{3}}}}});
}

std::vector<Value> Column(const std::string& store, const std::string& field) {
  return testkit::Column(store + "|layername=Plots", field);
}

TEST(ImportStandIdsCommand, ClonesTheStandIdAndRenamesAClashingAttribute) {
  testkit::TempDir dir;
  MakeInventory(dir);
  const auto run = Tarnwick(dir, "import-stand-ids --stands \"inv.gpkg|layername=Stands\" --stand-id StandID "
                                 "--attributes Age --points \"inv.gpkg|layername=Plots\" --clone");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(Column(dir / "inv.gpkg", "StandID"),
            (std::vector<Value>{Value{std::string("A")}, Value{std::string("B")}, Value{}}));
  EXPECT_EQ(Column(dir / "inv.gpkg", "Age1"),
            (std::vector<Value>{Value{std::int64_t{10}}, Value{std::int64_t{11}}, Value{}}));
  EXPECT_NE(run.err.find("the stand attribute 'Age' was added as 'Age1'"), std::string::npos) << run.err;
  EXPECT_NE(run.out.find("Import Complete"), std::string::npos);
  EXPECT_NE(run.out.find("1] Age"), std::string::npos);
  EXPECT_EQ(run.out.find("\\par"), std::string::npos);
  EXPECT_EQ(testkit::ReadFile(dir / "Plots_standids_report.rtf").rfind("{\\rtf1", 0), 0u);
}

TEST(ImportStandIdsCommand, RefusesBadInputBeforeChangingAnything) {
  testkit::TempDir dir;
  MakeInventory(dir);
  const std::string stands = "--stands \"inv.gpkg|layername=Stands\" --stand-id StandID";
  auto run = Tarnwick(dir, "import-stand-ids " + stands + " --points \"inv.gpkg|layername=Stands\" --clone");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("is the stand layer"), std::string::npos) << run.err;
  run = Tarnwick(dir, "import-stand-ids " + stands + " --points \"inv.gpkg|layername=Plots\"");
  EXPECT_EQ(run.exitCode, 2);  // neither --point-field nor --clone
  run = Tarnwick(dir, "import-stand-ids " + stands + " --attributes StandID --points \"inv.gpkg|layername=Plots\" --clone");
  EXPECT_EQ(run.exitCode, 2);
  // A text Stand ID into an integer point field asks first; without --overwrite the answer is Cancel.
  run = Tarnwick(dir, "import-stand-ids " + stands + " --points \"inv.gpkg|layername=Plots\" --point-field PlotID");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("Confirm Attribute Field Choices:"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("Stand Polygon ID Field 'StandID':  Type = Text"), std::string::npos) << run.err;
}

TEST(ImportStandIdsCommand, ReadOnlyShapefileIsRefusedAndAFailedRunChangesNothing) {
  testkit::TempDir dir;
  MakeInventory(dir);
  // Points "plots" in a shapefile, the second without a shape.
  testkit::MakeClass(dir / "shp",
                     testkit::ClassSpec("plots", platform::GeometryType::Point,
                                        platform::SpatialReference::FromEpsg(26910),
                                        {Field{"PlotID", "", FieldType::Integer}}),
                     {{testkit::PointWkt(50, 50), {Value{std::int64_t{1}}}}, {"", {Value{std::int64_t{2}}}}});
  const std::string dbf = dir / "shp/plots.dbf";
  const auto permissions = std::filesystem::status(dbf).permissions();
  std::filesystem::permissions(dbf, std::filesystem::perms::owner_read | std::filesystem::perms::group_read |
                                        std::filesystem::perms::others_read);
  const std::string arguments =
      "import-stand-ids --stands \"inv.gpkg|layername=Stands\" --stand-id StandID --attributes Age "
      "--points shp/plots.shp --clone";
  auto run = Tarnwick(dir, arguments);
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("is read-only. Nothing was changed."), std::string::npos) << run.err;

  std::filesystem::permissions(dbf, permissions);
  run = Tarnwick(dir, arguments);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find("tarnwick: the stand ID import into 'plots' failed: Point feature 1 of 'plots' has no "
                         "geometry.\nNothing was changed. The failure report is on standard output. Error log: "),
            std::string::npos)
      << run.err;
  EXPECT_EQ(run.out, "Function Failed...\n");
  EXPECT_LT(platform::OpenFeatureLayer(dir / "shp/plots.shp").featureClass->FindField("StandID"), 0);
}

}  // namespace
}  // namespace tarnwick
