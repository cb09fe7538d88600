// How the tools settle on a transformation: a search the first time, the
// map's stored choice after that, in either direction; the check that a
// transformation joins the two sides.
#include <gtest/gtest.h>

#include <tuple>

#include "fixtures.h"
#include "platform/host/memory_map_document.h"
#include "platform/predefined_transformations.h"
#include "testkit/fake_application.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_search.h"

namespace tarnwick {
namespace {

using platform::GeoTransformation;
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

  // The origin, the code (0 for none), the direction and whether one is needed.
  const auto parts = [](const TransformationChoice& c) {
    return std::make_tuple(c.origin, c.transformation ? c.transformation->code : 0, c.direction, c.needed);
  };
  // Plots (NAD 1983) to stands (NAD 1927): searched, then stored both ways.
  EXPECT_EQ(parts(SelectGeoTransformation(app, map, defaults, plots, stands)),
            std::make_tuple(Origin::Search, 1241, TransformDirection::Reverse, true));
  EXPECT_EQ(map.Transformations().size(), 2u);
  EXPECT_EQ(defaults.set.size(), 2u);
  EXPECT_EQ(parts(SelectGeoTransformation(app, map, defaults, stands, plots)),
            std::make_tuple(Origin::Memory, 1241, TransformDirection::Forward, true));
  const auto same = SelectGeoTransformation(app, map, defaults, plots, Epsg(4269));
  EXPECT_TRUE(same.origin == Origin::SameGcs && !same.transformation && !same.needed);

  // NZGD 1949 and NAD 1927: nothing stored fits, nothing predefined joins them.
  const auto wellington = platform::Geometry::MakePoint(174.78, -41.29, Epsg(4272));
  const auto none = SelectGeoTransformation(app, map, defaults, Epsg(4272), stands, &wellington);
  EXPECT_TRUE(none.origin == Origin::NoneKnown && !none.transformation && !none.needed);

  auto invalid = SelectGeoTransformation(app, map, defaults, testing::SquareLayer(dir, "Bare", {}, 0, 0, 1), stands);
  EXPECT_EQ(invalid.origin, Origin::InvalidSpatialReference);
  EXPECT_EQ(invalid.message, "Spatial Reference is unknown!");
  EXPECT_TRUE(app.boxes.empty());
}

// Projected and geographic data are the ranking tests'; a geometry without
// a system is refused with a box and left alone.
TEST(ProjectGeometryToGeographicCoordinates, RefusesAnUnknownSystem) {
  testkit::FakeApplication app;
  auto bare = platform::Geometry::MakePoint(1, 2, platform::SpatialReference());
  ProjectGeometryToGeographicCoordinates(app, bare);
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].text,
            "Failed in ProjectGeometryToGeographicCoordinates:  Geometry has an unknown spatial reference set...");
  EXPECT_EQ(bare.PointXY(), (platform::XY{1, 2}));
}

GeoTransformation Predefined(const char* name) { return *platform::FindPredefinedGeoTransformation(name); }

// ReturnTransformFromMemory over one map and its defaults, keeping what it gives back.
struct Memory {
  platform::host::MemoryMap map;
  TransformationDefaults defaults;
  std::optional<GeoTransformation> found;
  bool needed = false, error = false;
  TransformDirection direction = TransformDirection::Forward;
  std::string message;
  std::string Find(const SearchObject& one, const SearchObject& two) {
    return ReturnTransformFromMemory(one, two, found, needed, direction, error, message, map, defaults, "Layer_1",
                                     "Layer_2");
  }
};

TEST(ReturnTransformFromMemory, FindsAStoredTransformationInBothDirections) {
  testkit::TempDir dir;
  Memory m;
  const auto nadcon = Predefined("NAD_1927_To_NAD_1983_NADCON");
  m.error = true;
  EXPECT_EQ(AddTransformToDocIfItDoesNotExist(nadcon, m.error, m.message, m.map, m.defaults), "Succeeded");
  AddTransformToDocIfItDoesNotExist(nadcon, m.error, m.message, m.map, m.defaults);  // a second time adds nothing
  EXPECT_FALSE(m.error);
  ASSERT_EQ(m.map.Transformations().size(), 2u);  // one per direction
  EXPECT_EQ(m.map.Transformations()[1].fromGcsCode, 4269);
  EXPECT_EQ(m.defaults.set.size(), 2u);
  EXPECT_EQ(ReturnTransformsInMemory(m.map, m.defaults).size(), 1u);

  auto stands = testing::SquareLayer(dir, "Stands", Epsg(26710), 630000, 4270000, 1000);
  auto plots = testing::SquareLayer(dir, "Plots", Epsg(26910), 630000, 4270000, 1000);
  m.direction = TransformDirection::Reverse;
  EXPECT_EQ(m.Find(stands, plots), "NAD_1927_To_NAD_1983_NADCON [Direction = 0]");
  EXPECT_TRUE(m.found && m.found->code == 1241 && m.needed && !m.error && m.direction == TransformDirection::Forward);
  m.found.reset();
  EXPECT_EQ(m.Find(plots, stands), "NAD_1927_To_NAD_1983_NADCON [Direction = 1]");
  EXPECT_TRUE(m.found && m.direction == TransformDirection::Reverse);

  // Same system on both sides: nothing needed.
  EXPECT_EQ(m.Find(plots, Epsg(4269)), "No Transform Necessary");
  EXPECT_FALSE(m.found || m.needed);
}

TEST(ReturnTransformFromMemory, ReportsWhyNothingFits) {
  Memory m;
  // Nothing stored anywhere.
  EXPECT_EQ(m.Find(Epsg(4267), Epsg(4269)), "Succeeded");
  EXPECT_TRUE(m.error && m.message == "No Transform in memory") << m.message;

  // The map's set is empty, so the platform's defaults are read; what they
  // hold joins neither system. The caller's value stays when nothing fits.
  const auto tokyo = Predefined("Tokyo_To_WGS_1984_1");
  m.defaults.set.push_back({tokyo.fromGcsCode, tokyo.toGcsCode, tokyo});
  m.found = Predefined("NAD_1927_To_NAD_1983_Alaska");
  EXPECT_EQ(m.Find(Epsg(26710), Epsg(4269)), "Succeeded");
  EXPECT_TRUE(m.error && m.found->code == 1243);
  EXPECT_EQ(m.message,
            "There appear to be problems with the geographic transformation you selected:\n"
            "  --> Transformation = 'Tokyo_To_WGS_1984_1'\n\n"
            "  1] This transformation does not appear to be designed for your layer 'Layer_1'\n"
            "    --> Projected Coordinate System = NAD_1927_UTM_Zone_10N\n"
            "    --> Geographic Coordinate System = NAD_1927_UTM_Zone_10N\n"
            "  2] This transformation does not appear to be designed for your layer 'Layer_2' coordinate system!\n"
            "    --> Coordinate System = GCS_North_American_1983\n");

  // A map with a set of its own hides the defaults.
  m.map.Transformations().push_back({4267, 4269, Predefined("NAD_1927_To_NAD_1983_NADCON")});
  const auto stored = ReturnTransformsInMemory(m.map, m.defaults);
  ASSERT_EQ(stored.size(), 1u);
  EXPECT_EQ(stored[0].code, 1241);
}

TEST(ReturnFromToTransform, ChecksBothEndsAndNamesEachMisfit) {
  testkit::TempDir dir;
  auto stands = testing::SquareLayer(dir, "Stands", Epsg(4267), -120, 37, 1);
  const auto nad83ToWgs = Predefined("NAD_1983_To_WGS_1984_1");  // 4269 -> 4326
  const auto nadcon = Predefined("NAD_1927_To_NAD_1983_NADCON");
  bool needed = false, error = false;
  auto direction = TransformDirection::Forward;
  std::string message, name1 = "Layer_1", name2 = "Layer_2";
  const auto check = [&](const SearchObject& one, const SearchObject& two, const GeoTransformation* t) {
    ReturnFromToTransform(one, two, t, needed, direction, error, message, name1, name2);
  };

  // Joins object 2 (WGS 1984) but not the stands' NAD 1927: one problem, numbered 1.
  check(stands, Epsg(4326), &nad83ToWgs);
  EXPECT_TRUE(needed && error);
  EXPECT_EQ(name1, "Stands");
  EXPECT_EQ(message,
            "There appear to be problems with the geographic transformation you selected:\n"
            "  --> Transformation = 'NAD_1983_To_WGS_1984_1'\n\n"
            "  1] This transformation does not appear to be designed for your layer 'Stands'\n"
            "    --> Coordinate System = GCS_North_American_1927\n");

  // Joins object 1 only: the problem is object 2's and still numbered 1.
  direction = TransformDirection::Reverse;
  check(Epsg(4269), Epsg(4267), &nad83ToWgs);
  EXPECT_TRUE(error);
  EXPECT_EQ(direction, TransformDirection::Reverse);  // left untouched
  EXPECT_NE(message.find("  1] This transformation does not appear to be designed for your layer 'Layer_2' "
                         "coordinate system!\n    --> Coordinate System = GCS_North_American_1927\n"),
            std::string::npos);
  EXPECT_EQ(message.find("  2]"), std::string::npos);

  // A fitting one clears the pair and gives its direction.
  direction = TransformDirection::Forward;
  check(Epsg(32610), Epsg(4269), &nad83ToWgs);
  EXPECT_TRUE(!error && needed && message.empty());
  EXPECT_EQ(direction, TransformDirection::Reverse);

  // No transformation; an object that is neither; one system unknown; one system.
  check(Epsg(4267), Epsg(4269), nullptr);
  EXPECT_FALSE(needed || error);
  check(SearchObject{}, Epsg(4269), &nadcon);
  EXPECT_TRUE(error && message == "Object 1 is neither a Layer nor a Spatial Reference!  Bailing out...") << message;
  check(Epsg(4269), platform::SpatialReference(), &nadcon);
  EXPECT_TRUE(error && message == "Spatial Reference is unknown!") << message;
  check(Epsg(26910), Epsg(4269), &nadcon);
  EXPECT_FALSE(needed || error);
}

}  // namespace
}  // namespace tarnwick
