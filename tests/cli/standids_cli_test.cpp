// The import-stand-ids subcommand run as a program on a small GeoPackage.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli/tarnwick_program.h"
#include "platform/workspace.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::Value;

using Run = testkit::CommandRun;

// "inv.gpkg": Stands (two squares, the second with an invalid twin when asked)
// and Plots (three points, the last outside), both in UTM zone 10N.
void MakeInventory(const testkit::TempDir& dir, bool bowtie = false) {
  auto workspace = platform::Workspace::OpenOrCreate(dir / "inv.gpkg");
  const auto sr = platform::SpatialReference::FromEpsg(26910);
  platform::Workspace::NewFeatureClass standSpec;
  standSpec.name = "Stands";
  standSpec.geometryType = platform::GeometryType::Polygon;
  standSpec.spatialReference = sr;
  standSpec.fields = {Field{"StandID", "", FieldType::String, 8}, Field{"Age", "", FieldType::Integer}};
  auto stands = workspace->CreateFeatureClass(standSpec);
  {
    auto cursor = stands->Insert();
    const std::vector<std::string> wkts = {"POLYGON((0 0,0 100,100 100,100 0,0 0))",
                                           bowtie ? "POLYGON((100 0,200 100,200 0,100 100,100 0))"
                                                  : "POLYGON((100 0,100 100,200 100,200 0,100 0))"};
    for (size_t i = 0; i < wkts.size(); ++i) {
      auto buffer = cursor->CreateFeatureBuffer();
      buffer.shape = platform::Geometry::FromWkt(wkts[i], sr);
      buffer.values[2] = Value{std::string(i == 0 ? "A" : "B")};
      buffer.values[3] = Value{std::int64_t{10 + static_cast<std::int64_t>(i)}};
      cursor->InsertFeature(buffer);
    }
    cursor->Flush();
  }
  platform::Workspace::NewFeatureClass plotSpec;
  plotSpec.name = "Plots";
  plotSpec.spatialReference = sr;
  plotSpec.fields = {Field{"PlotID", "", FieldType::Integer}, Field{"Age", "", FieldType::String, 4}};
  auto plots = workspace->CreateFeatureClass(plotSpec);
  auto cursor = plots->Insert();
  const std::vector<platform::XY> xy = {{50, 50}, {150, 50}, {500, 500}};
  for (size_t i = 0; i < xy.size(); ++i) {
    auto buffer = cursor->CreateFeatureBuffer();
    buffer.shape = platform::Geometry::MakePoint(xy[i].x, xy[i].y, sr);
    buffer.values[2] = Value{static_cast<std::int64_t>(i + 1)};
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
}

std::vector<Value> Column(const std::string& store, const std::string& field) {
  auto plots = platform::OpenFeatureLayer(store + "|layername=Plots").featureClass;
  const auto index = static_cast<size_t>(plots->FindField(field));
  std::vector<Value> values;
  auto cursor = plots->Search();
  while (auto feature = cursor->NextFeature()) values.push_back(feature->values.at(index));
  return values;
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
  MakeInventory(dir, true);
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

// Points "plots" in a shapefile folder (feature IDs from 0); the second without geometry when asked.
std::shared_ptr<platform::FeatureClass> MakeShapefilePlots(const testkit::TempDir& dir, bool withNullShape) {
  auto workspace = platform::Workspace::OpenOrCreate(dir / "shp");
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = "plots";
  newClass.spatialReference = platform::SpatialReference::FromEpsg(26910);
  newClass.fields = {Field{"PlotID", "", FieldType::Integer}};
  auto plots = workspace->CreateFeatureClass(newClass);
  auto cursor = plots->Insert();
  for (int i = 0; i < 2; ++i) {
    auto buffer = cursor->CreateFeatureBuffer();
    if (i == 0 || !withNullShape) buffer.shape = platform::Geometry::MakePoint(50, 50, newClass.spatialReference);
    buffer.values[2] = Value{std::int64_t{i + 1}};
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return plots;
}

TEST(ImportStandIdsCommand, ReadOnlyShapefileIsRefusedAndAFailedRunChangesNothing) {
  testkit::TempDir dir;
  MakeInventory(dir);
  MakeShapefilePlots(dir, true);
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
