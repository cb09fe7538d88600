#include <gtest/gtest.h>

#include <cmath>

#include "fixtures.h"
#include "presentation/error_handling.h"
#include "testkit/fake_application.h"
#include "transforms/transform_search.h"

namespace tarnwick {
namespace {

using platform::GeoTransformation;
using testing::Epsg;

TransformList NadCandidates(testkit::FakeApplication& app) {
  bool error = false, same = false;
  std::string message, n1, n2;
  return *ReturnArrayOfTransformsForSpRefs(app, Epsg(4267), Epsg(4269), error, message, same, n1, n2);
}

TEST(SortTransformsByDatasetCentroid, DataInCaliforniaAndInAlaskaRankDifferently) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  const auto candidates = NadCandidates(app);
  ASSERT_GT(candidates.size(), 3u);

  // A stand layer in NAD 1927 UTM zone 11N in the Mojave: the extent is
  // projected to its geographic system before it is measured.
  auto mojave = testing::SquareLayer(dir, "Stands", Epsg(26711), 634000, 3872000, 5000);
  auto ranked = RankTransformsByDatasetCentroid(app, candidates, &mojave, ReturnTransformColl(),
                                                ReturnTransformColl2(), nullptr);
  ASSERT_TRUE(ranked.measured);
  EXPECT_NEAR(ranked.lon, -115.5, 0.05);
  EXPECT_NEAR(ranked.lat, 35.0, 0.05);
  ASSERT_EQ(ranked.entries.size(), candidates.size());
  const auto& best = ranked.entries.front();
  EXPECT_EQ(best.transformation.code, 1241);
  EXPECT_EQ(best.key, "1241");
  EXPECT_DOUBLE_EQ(best.accuracy, 0.15);
  // Great-circle distance to the CONUS centre (-97.43, 36.6) on the sphere.
  EXPECT_NEAR(best.distanceKm, 1637, 2.0);
  EXPECT_NEAR(best.measure, best.distanceKm * 0.15, 1e-9);
  for (size_t i = 1; i < ranked.entries.size(); ++i) {
    EXPECT_LE(ranked.entries[i - 1].measure, ranked.entries[i].measure);
  }

  // A point in Alaska, given in NAD 1927 geographic coordinates.
  const auto anchorage = platform::Geometry::MakePoint(-149.9, 61.2, Epsg(4267));
  auto sorted = SortTransformsByDatasetCentroid(app, candidates, nullptr, ReturnTransformColl(),
                                                ReturnTransformColl2(), &anchorage);
  ASSERT_EQ(sorted.size(), candidates.size());
  EXPECT_EQ(sorted.front().code, 1243);
  EXPECT_EQ(sorted.front().name, "NAD_1927_To_NAD_1983_Alaska");

  // Accuracy weighs as much as distance: from Sacramento the Puerto Rico grid
  // (0.05, some 5800 km away) measures less than the CONUS one (0.15, 2100 km).
  const auto sacramento = platform::Geometry::MakePoint(-121.5, 38.6, Epsg(4267));
  sorted = SortTransformsByDatasetCentroid(app, candidates, nullptr, ReturnTransformColl(), ReturnTransformColl2(),
                                           &sacramento);
  EXPECT_EQ(sorted.front().code, 108003);
  EXPECT_EQ(sorted[1].code, 1241);
  EXPECT_TRUE(app.boxes.empty());
}

TEST(SortTransformsByDatasetCentroid, UnknownTransformationsMeasureTenThousand) {
  testkit::FakeApplication app;
  const auto point = platform::Geometry::MakePoint(0, 10, Epsg(4326));
  GeoTransformation unknown{"Made_Up_To_WGS_1984", 0, "EPSG", 4230, 4326};
  GeoTransformation byName{"Abidjan_1987_To_WGS_1984", 0, "EPSG", 4143, 4326};  // no code: found by name
  GeoTransformation worldZero = {"WGS_1984_Major_Auxiliary_Sphere_To_WGS_1984", 108100, "ESRI", 104199, 4326};
  GeoTransformation unknownAccuracy = {"Bab_South_To_NAD_1983", 108134, "ESRI", 104112, 4269};
  auto ranked = RankTransformsByDatasetCentroid(app, {unknown, byName, worldZero, unknownAccuracy}, nullptr,
                                                ReturnTransformColl(), ReturnTransformColl2(), &point);
  ASSERT_EQ(ranked.entries.size(), 4u);
  // Accuracy 0 measures 0 wherever the data lies.
  EXPECT_EQ(ranked.entries[0].transformation.code, 108100);
  EXPECT_EQ(ranked.entries[0].measure, 0);
  // Abidjan is some 770 km away at accuracy 2.
  EXPECT_EQ(ranked.entries[1].transformation.name, "Abidjan_1987_To_WGS_1984");
  EXPECT_EQ(ranked.entries[1].key, "1470");
  EXPECT_NEAR(ranked.entries[1].measure, 2 * ranked.entries[1].distanceKm, 1e-9);
  EXPECT_EQ(ranked.entries[2].key, "-9999");
  EXPECT_EQ(ranked.entries[2].measure, 10000);
  EXPECT_EQ(ranked.entries[2].row, nullptr);
  // Accuracy 999 far away ranks behind the unknown one.
  EXPECT_EQ(ranked.entries[3].transformation.code, 108134);
  EXPECT_GT(ranked.entries[3].measure, 1e6);
}

TEST(SortTransformsByDatasetCentroid, ShortListsAreNotMeasuredAndNoLocationIsAnError) {
  testkit::FakeApplication app;
  GeoTransformation only{"Abidjan_1987_To_WGS_1984", 1470, "EPSG", 4143, 4326};
  // One entry comes back without any location at all.
  auto one = RankTransformsByDatasetCentroid(app, {only}, nullptr, ReturnTransformColl(), ReturnTransformColl2(),
                                             nullptr);
  EXPECT_FALSE(one.measured);
  ASSERT_EQ(one.entries.size(), 1u);
  EXPECT_TRUE(RankTransformsByDatasetCentroid(app, {}, nullptr, ReturnTransformColl(), ReturnTransformColl2(),
                                              nullptr)
                  .entries.empty());
  // Two entries and neither a dataset nor a point: a run-time error.
  try {
    SortTransformsByDatasetCentroid(app, {only, only}, nullptr, ReturnTransformColl(), ReturnTransformColl2(),
                                    nullptr);
    FAIL() << "no error";
  } catch (const RoutineError& e) {
    EXPECT_EQ(e.Number(), 91);
    EXPECT_NE(e.Description().find("SortTransformsByDatasetCentroid"), std::string::npos);
  }
}

}  // namespace
}  // namespace tarnwick
