// A NAD 1927 stand layer and plot points on WGS 1984: the plots fall in the
// stands only when the datum transformation is applied.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/tarnwick_program.h"
#include "platform/workspace.h"
#include "testkit/layers.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
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

struct Plots {
  int total = 0;
  int inside = 0;  // in the stand as it truly sits on WGS 1984
};
Plots CountPlots(const testkit::TempDir& dir) {
  auto workspace = platform::Workspace::Open(dir / "forest.gpkg");
  const auto stand = testkit::ReadAll(*workspace->OpenFeatureClass("Stands")).at(0);
  const platform::PreparedPolygon truePlace(stand.shape.ProjectEx(SpatialReference::FromEpsg(4326), kNad27ToWgs84,
                                                                  platform::TransformDirection::Forward));
  Plots plots;
  for (const auto& point : testkit::ReadAll(*workspace->OpenFeatureClass("Plots"))) {
    ++plots.total;
    if (truePlace.Covers(point.shape.PointXY().x, point.shape.PointXY().y)) ++plots.inside;
  }
  return plots;
}

testkit::CommandRun PlotLayout(const testkit::TempDir& dir, const std::string& transform) {
  return Tarnwick(dir, "plot-layout --stands 'forest.gpkg|layername=Stands' --stand-id StandID --units meters "
                       "--spacing 30,30 --into 'forest.gpkg|layername=Plots' --plot-id-field PlotID --transform " +
                           transform);
}

TEST(DatumTransformCommand, PlotsLandInTheStandOnlyWithTheTransformation) {
  for (const bool transformed : {true, false}) {
    SCOPED_TRACE(transformed);
    testkit::TempDir dir;
    MakeData(dir);
    const auto run = PlotLayout(dir, transformed ? "NAD_1927_To_WGS_1984_4" : "none");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const Plots plots = CountPlots(dir);
    EXPECT_GE(plots.total, 16);
    if (transformed) {
      EXPECT_THAT(run.out, ::testing::HasSubstr(
                               "Stand Transformation to Plot Coordinate System:  NAD_1927_To_WGS_1984_4"));
      EXPECT_EQ(plots.inside, plots.total);
    } else {
      EXPECT_LT(plots.inside, plots.total / 2) << "without the datum shift most plots sit about 100 m off";
    }
  }
}

TEST(DatumTransformCommand, RefusesATransformationThatDoesNotJoinTheSystemsOrCannotRunHere) {
  testkit::TempDir dir;
  MakeData(dir);
  // NAD 1983 to WGS 1984 does not start from the stands' NAD 1927.
  const auto wrong = PlotLayout(dir, "NAD_1983_To_WGS_1984_1");
  EXPECT_EQ(wrong.exitCode, 2) << wrong.err;
  EXPECT_EQ(CountPlots(dir).total, 0) << "nothing is written before the check";

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
  const auto grid = PlotLayout(dir, "15851");
  if (gridInstalled) {
    EXPECT_EQ(grid.exitCode, 0) << grid.err;
  } else {
    EXPECT_EQ(grid.exitCode, 2) << grid.err;
    EXPECT_THAT(grid.err, ::testing::HasSubstr("is not installed"));
    EXPECT_EQ(CountPlots(dir).total, 0);
  }
}

}  // namespace
}  // namespace tarnwick
