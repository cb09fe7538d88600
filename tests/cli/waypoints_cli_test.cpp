// The waypoints subcommand run as a program on a small GeoPackage.
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

const std::string kWaypoints = "waypoints --points plots.gpkg --plot-id ";

// "plots.gpkg" with class Plots (WGS 1984): PlotID and StandID as text, and
// Elev; the points a quarter degree apart, each in stand "S" and its Plot ID
// unless stands are given.
void MakePlots(const testkit::TempDir& dir, const std::vector<std::string>& ids, std::vector<std::string> stands = {}) {
  std::vector<testkit::Row> rows;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    rows.push_back({testkit::PointWkt(-122.25 - 0.25 * static_cast<double>(i), 45.5),
                    {Value{ids[i]}, Value{stands.empty() ? "S" + ids[i] : stands[i]}, Value{100.5}}});
  }
  testkit::MakeClass(dir / "plots.gpkg",
                     testkit::ClassSpec("Plots", platform::GeometryType::Point, platform::SpatialReference::FromEpsg(4326),
                                        {Field{"PlotID", "", FieldType::String, 10},
                                         Field{"StandID", "", FieldType::String, 20}, Field{"Elev", "", FieldType::Double}}),
                     rows);
}

TEST(WaypointsCommand, WritesFileAndReportWarnsOfMisreadRecordsAndRefusesAnExistingOne) {
  testkit::TempDir dir;
  MakePlots(dir, {"1", "2,5", "3"}, {"S1", "S2", "North\nSide"});
  auto run = Tarnwick(dir, kWaypoints + "PlotID --stand-id StandID --elevation Elev --out trip");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  // Records a field computer would misread are written as they stand, and named.
  EXPECT_EQ(testkit::ReadFile(dir / "trip.way"),
            "1,4530.000000,-12215.000000,100.5,S1;<ICON = 9>,\r\n"
            "2,5,4530.000000,-12230.000000,100.5,S2;<ICON = 9>,\r\n"
            "3,4530.000000,-12245.000000,100.5,North\nSide;<ICON = 9>,\r\n\r\n");
  EXPECT_THAT(run.err, HasSubstr("Warning: 2 waypoint records hold a comma or a line break in the Plot ID or Stand "
                                 "ID, which the field computer will misread: record 2 (Plot ID '2,5', Stand ID "
                                 "'S2'), record 3 (Plot ID '3', Stand ID 'North\\nSide')\n"));
  EXPECT_EQ(testkit::ReadFile(dir / "trip_report.rtf").rfind("{\\rtf1", 0), 0u);
  EXPECT_THAT(run.out, HasSubstr("Analysis Complete"));
  EXPECT_THAT(run.out, HasSubstr("All Points Converted [n = 3]"));
  EXPECT_EQ(run.out.find("\\par"), std::string::npos);  // plain text, not RTF

  run = Tarnwick(dir, kWaypoints + "PlotID --out trip.way");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("already exists"));
  run = Tarnwick(dir, kWaypoints + "PlotID --out trip.way --overwrite --selected \"PlotID >= 2\" --report sel.rtf");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(testkit::ReadFile(dir / "trip.way"),
            "2,5,4530.000000,-12230.000000,0.0,;<ICON = 9>,\r\n3,4530.000000,-12245.000000,0.0,;<ICON = 9>,\r\n\r\n");
  EXPECT_THAT(run.out, HasSubstr("Selected Points Converted [n = 2 of 0]"));
  EXPECT_TRUE(std::filesystem::exists(dir / "sel.rtf"));
}

TEST(WaypointsCommand, RefusesDuplicatesMissingFoldersAndBadFields) {
  testkit::TempDir dir;
  MakePlots(dir, {"7", "9", "7", "9", "9"});
  auto run = Tarnwick(dir, kWaypoints + "PlotID --out dup.way");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("Duplicate Plot IDs Found:\r\n  --> 7:  n = 2\r\n  --> 9:  n = 3\r\n"));
  EXPECT_FALSE(std::filesystem::exists(dir / "dup.way"));

  // The selection decides which IDs are checked.
  run = Tarnwick(dir, kWaypoints + "PlotID --selected \"OBJECTID IN (1, 2)\" --out nowhere/x.way");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("The specified folder 'nowhere' does not exist!  Please specify a valid workspace."));

  run = Tarnwick(dir, kWaypoints + "Nope --out a.way");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_THAT(run.err, HasSubstr("no field 'Nope'"));
  EXPECT_EQ(Tarnwick(dir, "waypoints --points missing.gpkg --plot-id PlotID --out a.way").exitCode, 2);
  EXPECT_EQ(Tarnwick(dir, kWaypoints + "PlotID").exitCode, 2);  // --out is required
}

}  // namespace
}  // namespace tarnwick
