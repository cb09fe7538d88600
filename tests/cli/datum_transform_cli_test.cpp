// A NAD 1927 stand layer and plot points on WGS 1984: the plots fall in the
// stands only when the datum transformation is applied.
#include <gtest/gtest.h>

#include "cli/tarnwick_program.h"
#include "platform/workspace.h"
#include "testkit/layers.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::Geometry;
using platform::SpatialReference;

const platform::GeoTransformation kNad27ToWgs84{"NAD_1927_To_WGS_1984_4", 1173, "EPSG", 4267, 4326};

// One 150 m square stand in NAD 1927 UTM zone 10N (western Oregon, where the
// datum shift is about 100 m), and an empty WGS 1984 point class.
void MakeData(const testkit::TempDir& dir) {
  testkit::MakeClass(dir / "forest.gpkg",
                     testkit::ClassSpec("Stands", platform::GeometryType::Polygon, SpatialReference::FromEpsg(26710),
                                        {Field{"StandID", "", FieldType::String, 10}}),
                     {{testkit::Square(452000, 4923000, 150), {std::string("A1")}}});
  testkit::MakeClass(dir / "forest.gpkg", testkit::ClassSpec("Plots", platform::GeometryType::Point,
                                                             SpatialReference::FromEpsg(4326),
                                                             {Field{"PlotID", "", FieldType::Integer}}));
}

// How many plots lie in the stand as it truly sits on WGS 1984.
int PlotsInsideTrueStand(const testkit::TempDir& dir, int& total) {
  auto workspace = platform::Workspace::Open(dir / "forest.gpkg");
  auto stands = workspace->OpenFeatureClass("Stands");
  const auto stand = stands->Search()->NextFeature();
  const Geometry truePlace =
      stand->shape.ProjectEx(SpatialReference::FromEpsg(4326), kNad27ToWgs84, platform::TransformDirection::Forward);
  const platform::PreparedPolygon prepared(truePlace);
  auto points = workspace->OpenFeatureClass("Plots")->Search();
  int inside = 0;
  total = 0;
  while (auto point = points->NextFeature()) {
    ++total;
    const auto xy = point->shape.PointXY();
    if (prepared.Covers(xy.x, xy.y)) ++inside;
  }
  return inside;
}

std::string PlotLayout(const std::string& transform) {
  return "plot-layout --stands 'forest.gpkg|layername=Stands' --stand-id StandID --units meters --spacing 30,30 "
         "--into 'forest.gpkg|layername=Plots' --plot-id-field PlotID --transform " + transform;
}

TEST(DatumTransformCommand, PlotsLandInTheStandOnlyWithTheTransformation) {
  {
    testkit::TempDir dir;
    MakeData(dir);
    const auto run = Tarnwick(dir, PlotLayout("NAD_1927_To_WGS_1984_4"));
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("Stand Transformation to Plot Coordinate System:  NAD_1927_To_WGS_1984_4"),
              std::string::npos);
    int total = 0;
    EXPECT_EQ(PlotsInsideTrueStand(dir, total), total);
    EXPECT_GE(total, 16);
  }
  {
    testkit::TempDir dir;
    MakeData(dir);
    const auto run = Tarnwick(dir, PlotLayout("none"));
    ASSERT_EQ(run.exitCode, 0) << run.err;
    int total = 0;
    const int inside = PlotsInsideTrueStand(dir, total);
    EXPECT_GE(total, 16);
    EXPECT_LT(inside, total / 2) << "without the datum shift most plots sit about 100 m off";
  }
}

TEST(DatumTransformCommand, RefusesATransformationThatDoesNotJoinTheSystemsOrCannotRunHere) {
  testkit::TempDir dir;
  MakeData(dir);
  // NAD 1983 to WGS 1984 does not start from the stands' NAD 1927.
  const auto wrong = Tarnwick(dir, PlotLayout("NAD_1983_To_WGS_1984_1"));
  EXPECT_EQ(wrong.exitCode, 2) << wrong.err;
  int total = 0;
  PlotsInsideTrueStand(dir, total);
  EXPECT_EQ(total, 0) << "nothing is written before the check";

  // A grid-based transformation: refused up front where its grid is
  // missing, applied where it is installed.
  const bool gridInstalled = [] {
    try {
      platform::CheckTransformationUsable({"NAD_1927_To_WGS_1984_79_CONUS", 15851, "EPSG", 4267, 4326});
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }();
  const auto grid = Tarnwick(dir, PlotLayout("15851"));
  if (gridInstalled) {
    EXPECT_EQ(grid.exitCode, 0) << grid.err;
  } else {
    EXPECT_EQ(grid.exitCode, 2) << grid.err;
    EXPECT_NE(grid.err.find("is not installed"), std::string::npos) << grid.err;
    PlotsInsideTrueStand(dir, total);
    EXPECT_EQ(total, 0);
  }
}

}  // namespace
}  // namespace tarnwick
