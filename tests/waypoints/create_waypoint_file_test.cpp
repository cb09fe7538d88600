#include "waypoints/create_waypoint_file.h"

#include <gtest/gtest.h>

#include <regex>

#include "testkit/fake_application.h"
#include "testkit/golden.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::Value;

struct PlotRow {
  Value plotId;
  Value standId;
  Value elevation;
  std::optional<platform::XY> xy;  // none: a feature without geometry
};

// A point class in "plots.gpkg" with PlotID (integer), StandID (text), Elev (double).
platform::FeatureLayer MakePlots(const testkit::TempDir& dir, int epsg, const std::vector<PlotRow>& rows,
                                 const std::string& name = "Plots") {
  std::vector<testkit::Row> points;
  for (const auto& row : rows) {
    points.push_back({row.xy ? testkit::PointWkt(row.xy->x, row.xy->y) : "", {row.plotId, row.standId, row.elevation}});
  }
  auto plots = testkit::MakeClass(
      dir / "plots.gpkg",
      testkit::ClassSpec(name, platform::GeometryType::Point, platform::SpatialReference::FromEpsg(epsg),
                         {Field{"PlotID", "", FieldType::Integer}, Field{"StandID", "", FieldType::String, 20},
                          Field{"Elev", "", FieldType::Double}}),
      points);
  return platform::FeatureLayer{"Plot Layer", plots, {}, true};
}

WaypointParameters Parameters(const platform::FeatureLayer& layer, const std::string& out) {
  WaypointParameters p;
  p.pointLayer = layer;
  p.plotIdField = layer.featureClass->Fields().at(2);
  p.standIdField = layer.featureClass->Fields().at(3);
  p.elevationField = layer.featureClass->Fields().at(4);
  p.outputPath = out;
  return p;
}

TEST(CreateWaypointFile, WritesEveryPointReportsAnUnprojectedRunAndProjectsOthersToWgs84) {
  testkit::TempDir dir;
  auto layer = MakePlots(dir, 4326,
                         {{Value{std::int64_t{101}}, Value{std::string("A-17")}, Value{312.5}, platform::XY{-122.25, 45.5}},
                          {Value{std::int64_t{102}}, Value{}, Value{}, platform::XY{-122.5, 5.25}},
                          {Value{}, Value{std::string("B")}, Value{12.0}, platform::XY{0.25, -0.5}}});
  testkit::FakeApplication app;
  const std::string out = dir / "plots.way";
  const auto result = CreateWaypointFile(app, nullptr, Parameters(layer, out));
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  EXPECT_EQ(result.records, 3);
  EXPECT_EQ(testkit::ReadFile(out),
            "101,4530.000000,-12215.000000,312.5,A-17;<ICON = 9>,\r\n"
            "102,0515.000000,-12230.000000,0.0,;<ICON = 9>,\r\n"
            "<Null>,0030.000000,0015.000000,12,B;<ICON = 9>,\r\n"
            "\r\n");
  // The clock's lines at the foot of the report are masked.
  std::string report = std::regex_replace(result.report, std::regex(R"(\d{1,2}:\d\d:\d\d [AP]M)"), "<TIME>");
  report = std::regex_replace(report, std::regex(R"(\w+day, \w+ \d{1,2}, \d{4})"), "<DATE>");
  testkit::ExpectGolden(report, "waypoint_file_report.rtf", {{out, "<OUT>"}});
  EXPECT_EQ(app.statusBar.messages.front(), "Converting Points...");
  EXPECT_FALSE(app.statusBar.visible);
  EXPECT_EQ(app.yields, 3);  // up to 50 points: a turn of the message loop at every point

  // NAD 1983 UTM zone 10N: another geographic system than WGS 1984, and no transformation given.
  const auto utm = platform::SpatialReference::FromEpsg(26910);
  const auto wgs = platform::SpatialReference::FromEpsg(4326);
  const auto projected = platform::Geometry::MakePoint(-122.504198, 45.504198, wgs).Project(utm).PointXY();
  const std::string utmOut = dir / "utm.way";
  const auto utmLayer = MakePlots(dir, 26910, {{Value{std::int64_t{1}}, Value{}, Value{}, projected}}, "Utm");
  const auto utmRun = CreateWaypointFile(app, nullptr, Parameters(utmLayer, utmOut));
  ASSERT_TRUE(utmRun.Succeeded()) << utmRun.errorText;
  EXPECT_EQ(testkit::ReadFile(utmOut), "1,4530.151128,-12230.151128,0.0,;<ICON = 9>,\r\n\r\n");
  EXPECT_NE(utmRun.report.find("Geographic Transformation:  \\cf1\\b <-- None Specified -->"), std::string::npos);
  EXPECT_NE(utmRun.report.find("Source Coordinate System:  \\cf1\\b NAD_1983_UTM_Zone_10N\\b0"), std::string::npos);
  EXPECT_NE(utmRun.report.find("Waypoint Coordinate System:  \\cf1\\b GCS_WGS_1984\\b0"), std::string::npos);
}

TEST(CreateWaypointFile, SelectedRunsTheFallBackToAllPointsAndAnEmptyLayer) {
  testkit::TempDir dir;
  std::vector<PlotRow> rows;
  for (int i = 1; i <= 4; ++i) {
    rows.push_back({Value{std::int64_t{i}}, Value{}, Value{}, platform::XY{-122.0 - i * 0.25, 45.0}});
  }
  auto layer = MakePlots(dir, 4326, rows);
  testkit::FakeApplication app;
  const std::string out = dir / "sel.way";
  auto p = Parameters(layer, out);
  p.standIdField.reset();
  p.elevationField.reset();
  p.convertAll = false;
  p.pointLayer.selection = {3, 1};
  auto result = CreateWaypointFile(app, nullptr, p);
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  EXPECT_EQ(testkit::ReadFile(out),
            "3,4500.000000,-12245.000000,0.0,;<ICON = 9>,\r\n1,4500.000000,-12215.000000,0.0,;<ICON = 9>,\r\n\r\n");
  // The total of a selected run is never counted.
  EXPECT_NE(result.report.find("Selected Points Converted [n = 2 of 0]"), std::string::npos);
  for (const char* field : {"Stand ID Field:  ", "Elevation Field:  "}) {
    EXPECT_NE(result.report.find(field + std::string("\\cf1\\b <-- None Selected -->\\b0 ")), std::string::npos);
  }

  // "Selected" with nothing selected converts every point and says so.
  p.pointLayer.selection.clear();
  result = CreateWaypointFile(app, nullptr, p);
  ASSERT_TRUE(result.Succeeded());
  EXPECT_EQ(result.records, 4);
  EXPECT_NE(result.report.find("All Points Converted [n = 4]"), std::string::npos);

  // An empty layer gives a file of one empty line. (A failed run, from a
  // point without a shape, is the command line's data-safety test: no file,
  // the old one kept, "Function Failed..." for a report.)
  const std::string empty = dir / "empty.way";
  result = CreateWaypointFile(app, nullptr, Parameters(MakePlots(dir, 4326, {}, "Empty"), empty));
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  EXPECT_EQ(testkit::ReadFile(empty), "\r\n");
  EXPECT_NE(result.report.find("All Points Converted [n = 0]"), std::string::npos);
}

}  // namespace
}  // namespace tarnwick
