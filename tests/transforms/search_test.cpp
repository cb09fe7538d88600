#include <gtest/gtest.h>

#include <algorithm>

#include "fixtures.h"
#include "platform/predefined_transformations.h"
#include "testkit/fake_application.h"
#include "transforms/transform_search.h"

namespace tarnwick {
namespace {

using platform::GeoTransformation;
using testing::Epsg;

std::vector<int> Codes(const TransformList& list) {
  std::vector<int> codes;
  for (const auto& t : list) codes.push_back(t.code);
  return codes;
}

bool Contains(const std::vector<int>& codes, int code) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

TEST(PredefinedSet, CarriesEsriNamesAndGeographicEnds) {
  const auto& set = platform::PredefinedGeoTransformations();
  EXPECT_GT(set.size(), 1500u);
  auto nadcon = platform::FindPredefinedGeoTransformation("nad_1927_to_nad_1983_nadcon");
  ASSERT_TRUE(nadcon);
  EXPECT_EQ(nadcon->code, 1241);
  EXPECT_EQ(nadcon->authority, "EPSG");
  EXPECT_EQ(nadcon->fromGcsCode, 4267);
  EXPECT_EQ(nadcon->toGcsCode, 4269);
  auto byCode = platform::FindPredefinedGeoTransformation("1241");
  ASSERT_TRUE(byCode);
  EXPECT_EQ(byCode->name, "NAD_1927_To_NAD_1983_NADCON");
  auto esri = platform::FindPredefinedGeoTransformation("108015");
  ASSERT_TRUE(esri);
  EXPECT_EQ(esri->authority, "ESRI");
  EXPECT_FALSE(platform::FindPredefinedGeoTransformation("No_Such_Transformation"));

  platform::SpatialReference from, to;
  platform::GetSpatialReferences(*nadcon, from, to);
  EXPECT_EQ(from.FactoryCode(), 4267);
  EXPECT_EQ(to.FactoryCode(), 4269);
  EXPECT_TRUE(from.IsGeographic());
}

TEST(ReturnArrayOfTransformsForSpRefs, ListsWhatJoinsTheTwoSystemsEitherWay) {
  testkit::FakeApplication app;
  bool error = true, same = true;
  std::string message = "stale", name1 = "A", name2 = "B";

  // Projected NAD 1927 against geographic NAD 1983: the systems underneath count.
  auto list = ReturnArrayOfTransformsForSpRefs(app, Epsg(26710), Epsg(4269), error, message, same, name1, name2);
  ASSERT_TRUE(list);
  EXPECT_FALSE(error);
  EXPECT_EQ(message, "");
  EXPECT_FALSE(same);
  auto codes = Codes(*list);
  EXPECT_TRUE(Contains(codes, 1241));  // NADCON, CONUS
  EXPECT_TRUE(Contains(codes, 1243));  // NADCON, Alaska
  EXPECT_TRUE(Contains(codes, 1313));  // NTv2, Canada
  for (const auto& t : *list) {
    EXPECT_TRUE((t.fromGcsCode == 4267 && t.toGcsCode == 4269) || (t.fromGcsCode == 4269 && t.toGcsCode == 4267))
        << t.name;
  }
  EXPECT_EQ(name1, "A");  // references keep the names they were given

  // The other way round gives the same list in the same order.
  auto reversed = ReturnArrayOfTransformsForSpRefs(app, Epsg(4269), Epsg(4267), error, message, same, name1, name2);
  ASSERT_TRUE(reversed);
  EXPECT_EQ(Codes(*reversed), codes);

  auto etrs = ReturnArrayOfTransformsForSpRefs(app, Epsg(4326), Epsg(4258), error, message, same, name1, name2);
  ASSERT_TRUE(etrs);
  auto etrsCodes = Codes(*etrs);
  EXPECT_TRUE(Contains(etrsCodes, 1149));  // ETRS_1989_To_WGS_1984
  auto it = std::find_if(etrs->begin(), etrs->end(), [](const GeoTransformation& t) { return t.code == 1149; });
  EXPECT_EQ(it->name, "ETRS_1989_To_WGS_1984");

  auto none = ReturnArrayOfTransformsForSpRefs(app, Epsg(4269), Epsg(26910), error, message, same, name1, name2);
  ASSERT_TRUE(none);
  EXPECT_TRUE(none->empty());
  EXPECT_TRUE(same);
  EXPECT_TRUE(app.boxes.empty());
}

TEST(ReturnArrayOfTransformsForSpRefs, ShowsANumberedBoxForEachKindOfFailure) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  bool error = false, same = true;
  std::string message, name1 = "First", name2 = "Second";

  auto unknown = testing::SquareLayer(dir, "NoSystem", platform::SpatialReference(), 0, 0, 10);
  auto list = ReturnArrayOfTransformsForSpRefs(app, unknown, Epsg(4326), error, message, same, name1, name2);
  EXPECT_FALSE(list);
  EXPECT_TRUE(error);
  EXPECT_FALSE(same);
  EXPECT_EQ(name1, "NoSystem");
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].text,
            "1: Problem in ReturnArrayOfTransformsForSpRefs\n  --> Spatial Reference is unknown!");
  EXPECT_EQ(app.boxes[0].title, "");

  list = ReturnArrayOfTransformsForSpRefs(app, Epsg(4326), platform::SpatialReference(), error, message, same,
                                          name1, name2);
  EXPECT_FALSE(list);
  EXPECT_EQ(app.boxes.back().text,
            "5: Problem in ReturnArrayOfTransformsForSpRefs\n  --> Spatial Reference is unknown!");

  list = ReturnArrayOfTransformsForSpRefs(app, Epsg(4326), SearchObject{}, error, message, same, name1, name2);
  EXPECT_FALSE(list);
  EXPECT_EQ(message, "Object 2 [Second] is neither a Geodataset nor a Spatial Reference!  Bailing out...");
  EXPECT_EQ(app.boxes.back().text, "6: Problem in ReturnArrayOfTransformsForSpRefs\n  --> " + message);

  list = ReturnArrayOfTransformsForSpRefs(app, SearchObject{}, Epsg(4326), error, message, same, name1, name2);
  EXPECT_EQ(app.boxes.back().text.substr(0, 3), "3: ");
  EXPECT_EQ(app.boxes.size(), 4u);
}

TEST(ReviewAndSortTransforms_ReturnList, KeepsThePlatformOrderAndSaysWhenThereIsNone) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  std::string message = "stale";
  // Data in Alaska, where the ranking would put the Alaska grid first.
  auto alaska = testing::SquareLayer(dir, "Alaska", Epsg(4267), -150, 61, 1);
  auto list = ReviewAndSortTransforms_ReturnList(app, alaska, Epsg(4269), message, nullptr);
  EXPECT_EQ(message, "");
  bool error = false, same = false;
  std::string errMsg, n1, n2;
  auto plain = ReturnArrayOfTransformsForSpRefs(app, alaska, Epsg(4269), error, errMsg, same, n1, n2);
  EXPECT_EQ(Codes(list), Codes(*plain));
  ASSERT_FALSE(list.empty());
  EXPECT_EQ(list.front().code, 1241);  // the platform's first, not the best for Alaska

  auto same_gcs = ReviewAndSortTransforms_ReturnList(app, alaska, Epsg(4267), message, nullptr);
  EXPECT_TRUE(same_gcs.empty());
  EXPECT_EQ(message, "<-- No Known Transformations for these two GCSs -->");
  EXPECT_TRUE(app.boxes.empty());
}

}  // namespace
}  // namespace tarnwick
