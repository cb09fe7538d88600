#include <gtest/gtest.h>

#include <filesystem>

#include "platform/host/memory_map_document.h"
#include "fixtures.h"
#include "testkit/fake_application.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_search.h"

namespace tarnwick {
namespace {

using Origin = TransformationChoice::Origin;
using platform::TransformDirection;
using testing::Epsg;

TEST(SelectGeoTransformation, SearchesOnceThenFindsItInTheMap) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  platform::host::MemoryMap map;
  TransformationDefaults defaults;
  auto stands = testing::SquareLayer(dir, "Stands", Epsg(26710), 630000, 4270000, 1000);
  auto plots = testing::SquareLayer(dir, "Plots", Epsg(26910), 630000, 4270000, 1000);

  auto first = SelectGeoTransformation(app, map, defaults, plots, stands);
  EXPECT_EQ(first.origin, Origin::Search);
  ASSERT_TRUE(first.transformation);
  EXPECT_EQ(first.transformation->code, 1241);
  EXPECT_EQ(first.direction, TransformDirection::Reverse);  // plots (NAD 1983) to stands (NAD 1927)
  EXPECT_TRUE(first.needed);
  EXPECT_EQ(map.Transformations().size(), 2u);
  EXPECT_EQ(defaults.set.size(), 2u);

  auto second = SelectGeoTransformation(app, map, defaults, stands, plots);
  EXPECT_EQ(second.origin, Origin::Memory);
  EXPECT_EQ(second.transformation->code, 1241);
  EXPECT_EQ(second.direction, TransformDirection::Forward);

  auto same = SelectGeoTransformation(app, map, defaults, plots, Epsg(4269));
  EXPECT_EQ(same.origin, Origin::SameGcs);
  EXPECT_FALSE(same.transformation);
  EXPECT_FALSE(same.needed);

  // NZGD 1949 and NAD 1927: nothing stored fits, nothing predefined joins them.
  const auto wellington = platform::Geometry::MakePoint(174.78, -41.29, Epsg(4272));
  auto none = SelectGeoTransformation(app, map, defaults, Epsg(4272), stands, &wellington);
  EXPECT_EQ(none.origin, Origin::NoneKnown);
  EXPECT_FALSE(none.transformation);
  EXPECT_FALSE(none.needed);

  auto invalid = SelectGeoTransformation(app, map, defaults, testing::SquareLayer(dir, "Bare", {}, 0, 0, 1), stands);
  EXPECT_EQ(invalid.origin, Origin::InvalidSpatialReference);
  EXPECT_EQ(invalid.message, "Spatial Reference is unknown!");
  EXPECT_TRUE(app.boxes.empty());
}

// With a bare spatial reference as object 1 and no point, the ranking has no
// place to measure from: that failure is reported, and the list still comes
// back.
TEST(ReviewAndSortTransforms_ReturnList, ReportsAFailedRankingAndStillReturnsTheList) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  const auto previous = std::filesystem::current_path();
  std::filesystem::current_path(dir.path());  // the log is written to the working directory
  std::string message;
  auto list = ReviewAndSortTransforms_ReturnList(app, Epsg(4267), Epsg(4269), message, nullptr);
  std::filesystem::current_path(previous);
  EXPECT_GT(list.size(), 3u);
  EXPECT_EQ(message, "");
  ASSERT_EQ(app.windows.size(), 1u);
  EXPECT_NE(app.windows[0].find("SortTransformsByDatasetCentroid"), std::string::npos) << app.windows[0];
  EXPECT_NE(app.windows[0].find("91"), std::string::npos);
}

TEST(ProjectGeometryToGeographicCoordinates, ProjectsOnlyProjectedGeometries) {
  testkit::FakeApplication app;
  auto utm = platform::Geometry::MakePoint(500000, 4000000, Epsg(26910));
  ProjectGeometryToGeographicCoordinates(app, utm);
  EXPECT_EQ(utm.SpatialRef().FactoryCode(), 4269);
  EXPECT_NEAR(utm.PointXY().x, -123.0, 1e-9);
  EXPECT_NEAR(utm.PointXY().y, 36.14, 0.01);

  auto geographic = platform::Geometry::MakePoint(10, 20, Epsg(4326));
  ProjectGeometryToGeographicCoordinates(app, geographic);
  EXPECT_EQ(geographic.PointXY(), (platform::XY{10, 20}));

  auto bare = platform::Geometry::MakePoint(1, 2, platform::SpatialReference());
  ProjectGeometryToGeographicCoordinates(app, bare);
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].text,
            "Failed in ProjectGeometryToGeographicCoordinates:  Geometry has an unknown spatial reference set...");
  EXPECT_EQ(bare.PointXY(), (platform::XY{1, 2}));
}

}  // namespace
}  // namespace tarnwick
