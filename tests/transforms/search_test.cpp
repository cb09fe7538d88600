// The platform's predefined transformations and the search for those that
// join two geographic systems.
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

TEST(PredefinedSet, CarriesEsriNamesAndGeographicEnds) {
  EXPECT_GT(platform::PredefinedGeoTransformations().size(), 1500u);
  const auto nadcon = platform::FindPredefinedGeoTransformation("nad_1927_to_nad_1983_nadcon");
  ASSERT_TRUE(nadcon);
  EXPECT_EQ(testing::Parts(*nadcon), testing::Parts({"NAD_1927_To_NAD_1983_NADCON", 1241, "EPSG", 4267, 4269}));
  EXPECT_EQ(platform::FindPredefinedGeoTransformation("1241")->name, "NAD_1927_To_NAD_1983_NADCON");
  EXPECT_EQ(platform::FindPredefinedGeoTransformation("108015")->authority, "ESRI");
  EXPECT_FALSE(platform::FindPredefinedGeoTransformation("No_Such_Transformation"));

  platform::SpatialReference from, to;
  platform::GetSpatialReferences(*nadcon, from, to);
  EXPECT_TRUE(from.FactoryCode() == 4267 && to.FactoryCode() == 4269 && from.IsGeographic());
}

TEST(ReturnArrayOfTransformsForSpRefs, ListsWhatJoinsTheTwoSystemsEitherWayOrShowsANumberedBoxWhyNot) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  bool error = true, same = true;
  std::string message = "stale", name1 = "First", name2 = "Second";
  const auto search = [&](const SearchObject& one, const SearchObject& two) {
    auto list = ReturnArrayOfTransformsForSpRefs(app, one, two, error, message, same, name1, name2);
    EXPECT_TRUE(list);
    return list ? *list : TransformList{};
  };
  const auto refuse = [&](const SearchObject& one, const SearchObject& two) {
    EXPECT_FALSE(ReturnArrayOfTransformsForSpRefs(app, one, two, error, message, same, name1, name2));
    return app.boxes.empty() ? std::string() : app.boxes.back().text;
  };

  // Projected NAD 1927 against geographic NAD 1983: the systems underneath
  // count, and NADCON for CONUS and Alaska and Canada's NTv2 are among them.
  const auto list = search(Epsg(26710), Epsg(4269));
  EXPECT_TRUE(!error && message.empty() && !same);
  auto codes = Codes(list);
  for (int code : {1241, 1243, 1313}) EXPECT_NE(std::find(codes.begin(), codes.end(), code), codes.end()) << code;
  for (const auto& t : list) {
    EXPECT_TRUE((t.fromGcsCode == 4267 && t.toGcsCode == 4269) || (t.fromGcsCode == 4269 && t.toGcsCode == 4267))
        << t.name;
  }
  EXPECT_EQ(name1, "First");  // references keep the names they were given
  // The other way round gives the same list in the same order.
  EXPECT_EQ(Codes(search(Epsg(4269), Epsg(4267))), codes);

  const auto etrs = search(Epsg(4326), Epsg(4258));
  const auto it = std::find_if(etrs.begin(), etrs.end(), [](const GeoTransformation& t) { return t.code == 1149; });
  ASSERT_NE(it, etrs.end());
  EXPECT_EQ(it->name, "ETRS_1989_To_WGS_1984");

  EXPECT_TRUE(search(Epsg(4269), Epsg(26910)).empty());
  EXPECT_TRUE(same);
  EXPECT_TRUE(app.boxes.empty());

  // A numbered box for each kind of failure.
  auto unknown = testing::SquareLayer(dir, "NoSystem", platform::SpatialReference(), 0, 0, 10);
  EXPECT_EQ(refuse(unknown, Epsg(4326)),
            "1: Problem in ReturnArrayOfTransformsForSpRefs\n  --> Spatial Reference is unknown!");
  EXPECT_TRUE(error && !same);
  EXPECT_EQ(name1, "NoSystem");
  EXPECT_EQ(app.boxes[0].title, "");
  EXPECT_EQ(refuse(Epsg(4326), platform::SpatialReference()),
            "5: Problem in ReturnArrayOfTransformsForSpRefs\n  --> Spatial Reference is unknown!");
  const std::string neither = "Object 2 [Second] is neither a Geodataset nor a Spatial Reference!  Bailing out...";
  EXPECT_EQ(refuse(Epsg(4326), SearchObject{}), "6: Problem in ReturnArrayOfTransformsForSpRefs\n  --> " + neither);
  EXPECT_EQ(message, neither);
  EXPECT_EQ(refuse(SearchObject{}, Epsg(4326)).substr(0, 3), "3: ");
  EXPECT_EQ(app.boxes.size(), 4u);
}

}  // namespace
}  // namespace tarnwick
