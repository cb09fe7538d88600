// The catalogue of transformations' areas of use and accuracies, and the
// ranking of candidates by distance to the data times accuracy.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "fixtures.h"
#include "presentation/error_handling.h"
#include "testkit/fake_application.h"
#include "transforms/catalogue.h"
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

// The ranking against the catalogue, at a dataset or a point.
TransformRanking Rank(testkit::FakeApplication& app, const TransformList& list, const platform::FeatureLayer* dataset,
                      const platform::Geometry* point) {
  return RankTransformsByDatasetCentroid(app, list, dataset, ReturnTransformColl(), ReturnTransformColl2(), point);
}

TEST(RankTransformsByDatasetCentroid, DataInCaliforniaAndInAlaskaRankDifferently) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  const auto candidates = NadCandidates(app);
  ASSERT_GT(candidates.size(), 3u);

  // A stand layer in NAD 1927 UTM zone 11N in the Mojave: the extent is
  // projected to its geographic system before it is measured.
  auto mojave = testing::SquareLayer(dir, "Stands", Epsg(26711), 634000, 3872000, 5000);
  auto ranked = Rank(app, candidates, &mojave, nullptr);
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
  ranked = Rank(app, candidates, nullptr, &anchorage);
  ASSERT_EQ(ranked.entries.size(), candidates.size());
  EXPECT_EQ(testing::Parts(ranked.entries[0].transformation),
            testing::Parts({"NAD_1927_To_NAD_1983_Alaska", 1243, "EPSG", 4267, 4269}));

  // Accuracy weighs as much as distance: from Sacramento the Puerto Rico grid
  // (0.05, some 5800 km away) measures less than the CONUS one (0.15, 2100 km).
  const auto sacramento = platform::Geometry::MakePoint(-121.5, 38.6, Epsg(4267));
  ranked = Rank(app, candidates, nullptr, &sacramento);
  EXPECT_EQ(ranked.entries[0].transformation.code, 108003);
  EXPECT_EQ(ranked.entries[1].transformation.code, 1241);
  EXPECT_TRUE(app.boxes.empty());
}

TEST(RankTransformsByDatasetCentroid, UnknownsMeasureTenThousandAndShortListsAreNotMeasured) {
  testkit::FakeApplication app;
  const auto point = platform::Geometry::MakePoint(0, 10, Epsg(4326));
  GeoTransformation unknown{"Made_Up_To_WGS_1984", 0, "EPSG", 4230, 4326};
  GeoTransformation byName{"Abidjan_1987_To_WGS_1984", 0, "EPSG", 4143, 4326};  // no code: found by name
  GeoTransformation worldZero = {"WGS_1984_Major_Auxiliary_Sphere_To_WGS_1984", 108100, "ESRI", 104199, 4326};
  GeoTransformation unknownAccuracy = {"Bab_South_To_NAD_1983", 108134, "ESRI", 104112, 4269};
  auto ranked = Rank(app, {unknown, byName, worldZero, unknownAccuracy}, nullptr, &point);
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

  // Short lists are not measured: one entry comes back without any location at all.
  GeoTransformation only{"Abidjan_1987_To_WGS_1984", 1470, "EPSG", 4143, 4326};
  auto one = Rank(app, {only}, nullptr, nullptr);
  EXPECT_FALSE(one.measured);
  ASSERT_EQ(one.entries.size(), 1u);
  EXPECT_TRUE(Rank(app, {}, nullptr, nullptr).entries.empty());
  // Two entries and neither a dataset nor a point: a run-time error.
  try {
    Rank(app, {only, only}, nullptr, nullptr);
    FAIL() << "no error";
  } catch (const RoutineError& e) {
    EXPECT_EQ(e.Number(), 91);
    EXPECT_NE(e.Description().find("SortTransformsByDatasetCentroid"), std::string::npos);
  }
}

// Every row is complete; every centre is the middle of its box, and boxes
// across the 180th meridian are measured the short way with the centre
// brought back into -180..180.
TEST(Catalogue, EveryRowIsCompleteAndCentredAndNamesKeepTheirIrregularities) {
  const auto rows = CatalogueRows();
  const auto& coll = ReturnTransformColl();
  const auto& byName = ReturnTransformColl2();
  ASSERT_EQ(rows.size(), 1354u);
  EXPECT_EQ(rows.front().name, "Abidjan_1987_To_WGS_1984");
  EXPECT_EQ(rows.back().name, "Zanderij_To_WGS_1984");
  EXPECT_EQ(coll.size(), 1354u);
  EXPECT_EQ(byName.size(), 1354u);
  // Fiji's main islands cross the 180th meridian.
  EXPECT_EQ(coll.at("15875").centreLon, 178.75);
  int crossing = 0;
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    char* end = nullptr;
    std::strtod(r.accuracy.c_str(), &end);
    EXPECT_TRUE(!r.accuracy.empty() && *end == '\0') << "accuracy '" << r.accuracy << "'";
    EXPECT_FALSE(r.area.empty());
    EXPECT_NEAR(r.centreLat, (r.south + r.north) / 2, 1e-9);
    double lon = (r.west + r.east) / 2;
    if (r.west > r.east) {
      ++crossing;
      lon = (r.west + r.east + 360) / 2;
      if (lon > 180) lon -= 360;
    }
    EXPECT_NEAR(r.centreLon, lon, 1e-9);
  }
  EXPECT_GT(crossing, 30);  // Alaska, Fiji, New Zealand's islands, the Aleutians...
  // Alaska crosses too: its centre lies west of both limits' plain average.
  EXPECT_LT(coll.at("1243").centreLon, -150);

  // Names keep their irregularities; keys ignore case.
  EXPECT_EQ(byName.at("Nepal_Nagarkot_TO_WGS_1984_1"), 108015);
  EXPECT_EQ(coll.at("1470").area, "Cote d'Ivoire (Ivory Coast)");
  const std::string blank = "AGD_1966_To_GDA_1994_10_NTv2_New_South_Wales_a nd_Victoria";
  EXPECT_EQ(coll.at("1596").name, blank);
  EXPECT_EQ(byName.at(blank), 1596);
  EXPECT_EQ(coll.at("1846").name, "ATS_1977_To_NAD_1983_CSRS_2_NTv2_Prince_Edward _Is");
  EXPECT_FALSE(byName.contains("AGD_1966_To_GDA_1994_10_NTv2_New_South_Wales_and_Victoria"));
  EXPECT_FALSE(coll.contains("-9999"));
  EXPECT_EQ(byName.at("ABIDJAN_1987_TO_WGS_1984"), 1470);
  EXPECT_EQ(byName.at("nepal_nagarkot_to_wgs_1984_1"), 108015);
  EXPECT_EQ(byName.at("s_jtsk_ferro_to_wgs_1984_2"), 5230);  // capitals of its own, found in lower case
  EXPECT_EQ(&coll, &ReturnTransformColl());                   // the same collections each time
}

}  // namespace
}  // namespace tarnwick
