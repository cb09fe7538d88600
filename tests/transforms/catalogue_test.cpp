#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "transforms/catalogue.h"

namespace tarnwick {
namespace {

struct Expected {
  const char* name;
  const char* code;
  double west, east, south, north, centreLon, centreLat;
  const char* accuracy;
  const char* area;
};

TEST(Catalogue, TellingRowsKeepTheirValues) {
  const Expected rows[] = {
      {"Abidjan_1987_To_WGS_1984", "1470", -8.61, -2.49, 0.84, 10.74, -5.55, 5.79, "2", "Cote d'Ivoire (Ivory Coast)"},
      {"NAD_1927_To_NAD_1983_NADCON", "1241", -129.16, -65.7, 23.82, 49.38, -97.43, 36.6, "0.15",
       "USA - CONUS including EEZ"},
      {"NAD_1983_To_WGS_1984_1", "1188", 167.65, -65.7, 15.56, 74.71, -129.025, 45.135, "4", "USA (all states)"},
      {"Fiji_1956_To_WGS_1984_1", "15875", 177, -179.5, -18.5, -16, 178.75, -17.25, "7", "Fiji - main islands"},
      {"Nepal_Nagarkot_TO_WGS_1984_1", "108015", 80.1, 88.25, 26.36, 30.46, 84.175, 28.41, "10", "Nepal"},
      {"WGS_1984_Major_Auxiliary_Sphere_To_WGS_1984", "108100", -180, 180, -90, 90, 0, 0, "0", "World"},
  };
  const auto& coll = ReturnTransformColl();
  for (const auto& e : rows) {
    SCOPED_TRACE(e.name);
    auto it = coll.find(e.code);
    ASSERT_NE(it, coll.end());
    const CatalogueRow& r = it->second;
    EXPECT_EQ(r.name, e.name);
    EXPECT_EQ(r.code, e.code);
    EXPECT_EQ((std::vector<double>{r.west, r.east, r.south, r.north, r.centreLon, r.centreLat}),
              (std::vector<double>{e.west, e.east, e.south, e.north, e.centreLon, e.centreLat}));
    EXPECT_EQ(r.accuracy, e.accuracy);
    EXPECT_EQ(r.area, e.area);
  }
}

// Every row is complete; every centre is the middle of its box, and boxes
// across the 180th meridian are measured the short way with the centre
// brought back into -180..180.
TEST(Catalogue, EveryRowIsCompleteAndCentredAlsoAcrossTheAntimeridian) {
  const auto rows = CatalogueRows();
  ASSERT_EQ(rows.size(), 1354u);
  EXPECT_EQ(rows.front().name, "Abidjan_1987_To_WGS_1984");
  EXPECT_EQ(rows.back().name, "Zanderij_To_WGS_1984");
  EXPECT_EQ(ReturnTransformColl().size(), 1354u);
  EXPECT_EQ(ReturnTransformColl2().size(), 1354u);
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
  EXPECT_LT(ReturnTransformColl().at("1243").centreLon, -150);
}

TEST(Catalogue, NamesKeepTheirIrregularitiesAndKeysIgnoreCase) {
  const auto& coll = ReturnTransformColl();
  const auto& byName = ReturnTransformColl2();
  EXPECT_EQ(byName.at("Nepal_Nagarkot_TO_WGS_1984_1"), 108015);
  const std::string blank = "AGD_1966_To_GDA_1994_10_NTv2_New_South_Wales_a nd_Victoria";
  EXPECT_EQ(coll.at("1596").name, blank);
  EXPECT_EQ(byName.at(blank), 1596);
  EXPECT_EQ(coll.at("1846").name, "ATS_1977_To_NAD_1983_CSRS_2_NTv2_Prince_Edward _Is");
  EXPECT_FALSE(byName.contains("AGD_1966_To_GDA_1994_10_NTv2_New_South_Wales_and_Victoria"));
  EXPECT_FALSE(coll.contains("-9999"));
  EXPECT_EQ(byName.at("abidjan_1987_to_wgs_1984"), 1470);
  EXPECT_EQ(byName.at("ABIDJAN_1987_TO_WGS_1984"), 1470);
  EXPECT_EQ(byName.at("nepal_nagarkot_to_wgs_1984_1"), 108015);
  EXPECT_EQ(byName.at("s_jtsk_ferro_to_wgs_1984_2"), 5230);  // capitals of its own, found in lower case
  EXPECT_EQ(&coll, &ReturnTransformColl());                   // the same collections each time
}

}  // namespace
}  // namespace tarnwick
