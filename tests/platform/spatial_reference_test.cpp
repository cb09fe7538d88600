#include "platform/spatial_reference.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "platform/errors.h"

namespace tarnwick::platform {
namespace {

TEST(SpatialReference, CodesAndEsriNames) {
  const auto utm = SpatialReference::FromEpsg(26910);
  EXPECT_TRUE(utm.IsProjected());
  EXPECT_FALSE(utm.IsGeographic());
  EXPECT_EQ(utm.FactoryCode(), 26910);
  EXPECT_EQ(utm.Name(), "NAD_1983_UTM_Zone_10N");
  EXPECT_DOUBLE_EQ(utm.MetersPerUnit(), 1.0);

  const auto nad27 = SpatialReference::FromEpsg(4267);
  EXPECT_TRUE(nad27.IsGeographic());
  EXPECT_EQ(nad27.FactoryCode(), 4267);
  EXPECT_EQ(nad27.Name(), "GCS_North_American_1927");
  EXPECT_DOUBLE_EQ(nad27.MetersPerUnit(), 1.0);

  const auto gcs = utm.GeographicCoordinateSystem();
  EXPECT_TRUE(gcs.IsGeographic());
  EXPECT_EQ(gcs.FactoryCode(), 4269);
  EXPECT_EQ(gcs.Name(), "GCS_North_American_1983");
}

TEST(SpatialReference, CodeIsFoundForTextWithoutIdentifier) {
  // An ESRI .prj text carries no code; the reference is identified by matching.
  const std::string prj =
      R"(PROJCS["NAD_1983_UTM_Zone_10N",GEOGCS["GCS_North_American_1983",DATUM["D_North_American_1983",)"
      R"(SPHEROID["GRS_1980",6378137.0,298.257222101]],PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]],)"
      R"(PROJECTION["Transverse_Mercator"],PARAMETER["False_Easting",500000.0],PARAMETER["False_Northing",0.0],)"
      R"(PARAMETER["Central_Meridian",-123.0],PARAMETER["Scale_Factor",0.9996],PARAMETER["Latitude_Of_Origin",0.0],)"
      R"(UNIT["Meter",1.0]])";
  const auto sr = SpatialReference::FromUserInput(prj);
  EXPECT_EQ(sr.FactoryCode(), 26910);
  EXPECT_EQ(sr.Name(), "NAD_1983_UTM_Zone_10N");
}

TEST(SpatialReference, UnitsAndSpheroid) {
  // California zone III in US survey feet.
  EXPECT_NEAR(SpatialReference::FromEpsg(2227).MetersPerUnit(), 1200.0 / 3937.0, 1e-15);
  const auto clarke1866 = SpatialReference::FromEpsg(4267);
  EXPECT_DOUBLE_EQ(clarke1866.SemiMajorAxis(), 6378206.4);
  EXPECT_NEAR(clarke1866.SemiMinorAxis(), 6356583.8, 1e-6);
}

TEST(SpatialReference, UnknownAndCopies) {
  const SpatialReference unknown;
  EXPECT_TRUE(unknown.IsUnknown());
  EXPECT_EQ(unknown.FactoryCode(), 0);
  EXPECT_FALSE(unknown.IsGeographic());
  EXPECT_TRUE(unknown.GeographicCoordinateSystem().IsUnknown());

  SpatialReference copy = SpatialReference::FromEpsg(26910);
  const SpatialReference other = copy;
  copy = SpatialReference::FromEpsg(4326);
  EXPECT_EQ(other.FactoryCode(), 26910);
  EXPECT_EQ(copy.FactoryCode(), 4326);

  EXPECT_EQ(SpatialReference::FromUserInput("ESRI:54032").FactoryCode(), 54032);
  EXPECT_EQ(SpatialReference::FromEpsg(54032).Name(), "World_Azimuthal_Equidistant");
  EXPECT_THROW(SpatialReference::FromEpsg(1), PlatformError);
  EXPECT_THROW(SpatialReference::FromUserInput("no such system"), PlatformError);
}

TEST(SpatialReference, CopiesMayBeUsedOnOtherThreads) {
  const auto shared = SpatialReference::FromEpsg(2227);
  std::vector<std::thread> threads;
  std::vector<int> good(4, 0);
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([copy = shared, &ok = good[t]] {
      for (int i = 0; i < 20; ++i) {
        ok += copy.FactoryCode() == 2227 && copy.IsProjected() &&
              copy.GeographicCoordinateSystem().FactoryCode() == 4269 && !copy.Name().empty();
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(good, std::vector<int>(4, 20));
}

TEST(SpatialReference, AzimuthalEquidistantIsCentredWhereAsked) {
  const auto ae = SpatialReference::AzimuthalEquidistant(-122.5, 45.25);
  EXPECT_TRUE(ae.IsProjected());
  EXPECT_DOUBLE_EQ(ae.MetersPerUnit(), 1.0);
  EXPECT_DOUBLE_EQ(ae.SemiMajorAxis(), 6378137.0);
  EXPECT_EQ(ae.GeographicCoordinateSystem().FactoryCode(), 4326);
  EXPECT_EQ(SpatialReference::AzimuthalEquidistant(0, 0).FactoryCode(), 54032);
}

}  // namespace
}  // namespace tarnwick::platform
