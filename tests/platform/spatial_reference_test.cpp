// Spatial references, and attribute values as text and numbers.
#include "platform/spatial_reference.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

#include "platform/errors.h"
#include "platform/field.h"

namespace tarnwick::platform {
namespace {

TEST(SpatialReference, CodesEsriNamesUnitsAndSpheroids) {
  const struct {
    SpatialReference sr;
    int code;
    const char* name;
    bool geographic;
    double metersPerUnit;
    int geographicCode;
  } cases[] = {
      {SpatialReference::FromEpsg(26910), 26910, "NAD_1983_UTM_Zone_10N", false, 1.0, 4269},
      {SpatialReference::FromEpsg(4267), 4267, "GCS_North_American_1927", true, 1.0, 4267},
      {SpatialReference::FromEpsg(2227), 2227, nullptr, false, 1200.0 / 3937.0, 4269},  // US survey feet
      {SpatialReference::FromUserInput("ESRI:54032"), 54032, "World_Azimuthal_Equidistant", false, 1.0, 4326},
      {SpatialReference::AzimuthalEquidistant(-122.5, 45.25), 0, nullptr, false, 1.0, 4326},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    EXPECT_EQ(c.sr.FactoryCode(), c.code);
    if (c.name) { EXPECT_EQ(c.sr.Name(), c.name); }
    EXPECT_TRUE(c.sr.IsGeographic() == c.geographic && c.sr.IsProjected() == !c.geographic);
    EXPECT_NEAR(c.sr.MetersPerUnit(), c.metersPerUnit, 1e-15);
    EXPECT_EQ(c.sr.GeographicCoordinateSystem().FactoryCode(), c.geographicCode);
  }
  EXPECT_EQ(SpatialReference::FromEpsg(26910).GeographicCoordinateSystem().Name(), "GCS_North_American_1983");
  EXPECT_EQ(SpatialReference::AzimuthalEquidistant(0, 0).FactoryCode(), 54032);
  const auto clarke1866 = SpatialReference::FromEpsg(4267);
  EXPECT_DOUBLE_EQ(clarke1866.SemiMajorAxis(), 6378206.4);
  EXPECT_NEAR(clarke1866.SemiMinorAxis(), 6356583.8, 1e-6);
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

TEST(SpatialReference, UnknownsCopiesAndOtherThreads) {
  const SpatialReference unknown;
  EXPECT_TRUE(unknown.IsUnknown() && unknown.FactoryCode() == 0 && unknown.GeographicCoordinateSystem().IsUnknown());
  EXPECT_THROW(SpatialReference::FromEpsg(1), PlatformError);
  EXPECT_THROW(SpatialReference::FromUserInput("no such system"), PlatformError);

  SpatialReference copy = SpatialReference::FromEpsg(26910);
  const SpatialReference other = copy;
  copy = SpatialReference::FromEpsg(4326);
  EXPECT_EQ(other.FactoryCode(), 26910);

  // Copies may be used on other threads at once.
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

long ErrorNumberOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const PlatformError& e) {
    return e.Number();
  }
  return 0;
}

TEST(Value, TextAndNumbersOfValuesAndTheErrorsOfNullAndText) {
  // The shortest text that reads back, in ordinary decimals, never an
  // exponent, for the figures reports show.
  const std::pair<Value, const char*> texts[] = {{12.5, "12.5"}, {3.0, "3"}, {0.1, "0.1"}, {0.00001, "0.00001"},
                                                 {std::int64_t{-42}, "-42"}, {std::string("abc"), "abc"}};
  for (const auto& [value, text] : texts) EXPECT_EQ(ValueToText(value), text);
  EXPECT_EQ(NumberToText(-0.000123), "-0.000123");
  EXPECT_EQ(NumberToText(1e20), "100000000000000000000");
  EXPECT_EQ(NumberToText(0.1 + 0.2), "0.30000000000000004");

  // Whole numbers round half to even.
  const std::pair<Value, long> longs[] = {
      {2.5, 2}, {3.5, 4}, {-2.5, -2}, {2.6, 3}, {std::string(" 17 "), 17}, {std::string("4.5"), 4}};
  for (const auto& [value, number] : longs) EXPECT_EQ(ValueToLong(value), number) << ValueToText(value);
  EXPECT_DOUBLE_EQ(ValueToDouble(std::string("1.25")), 1.25);
  EXPECT_DOUBLE_EQ(ValueToDouble(std::int64_t{7}), 7.0);

  EXPECT_EQ(ErrorNumberOf([] { ValueToText(Value{}); }), kErrInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([] { ValueToLong(Value{}); }), kErrInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([] { ValueToDouble(Value{}); }), kErrInvalidUseOfNull);
  EXPECT_EQ(ErrorNumberOf([] { ValueToLong(std::string("12a")); }), kErrTypeMismatch);
  EXPECT_EQ(ErrorNumberOf([] { ValueToDouble(std::string("")); }), kErrTypeMismatch);
}

}  // namespace
}  // namespace tarnwick::platform
