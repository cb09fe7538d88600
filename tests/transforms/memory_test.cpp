#include <gtest/gtest.h>

#include "platform/host/memory_map_document.h"
#include "fixtures.h"
#include "platform/predefined_transformations.h"
#include "transforms/transform_search.h"

namespace tarnwick {
namespace {

using platform::GeoTransformation;
using platform::TransformDirection;
using testing::Epsg;

GeoTransformation Predefined(const char* name) { return *platform::FindPredefinedGeoTransformation(name); }

TEST(ReturnTransformFromMemory, FindsAStoredTransformationInBothDirections) {
  testkit::TempDir dir;
  platform::host::MemoryMap map;
  TransformationDefaults defaults;
  const auto nadcon = Predefined("NAD_1927_To_NAD_1983_NADCON");
  bool error = true;
  std::string message;
  EXPECT_EQ(AddTransformToDocIfItDoesNotExist(nadcon, error, message, map, defaults), "Succeeded");
  EXPECT_FALSE(error);
  ASSERT_EQ(map.Transformations().size(), 2u);  // one per direction
  EXPECT_EQ(defaults.set.size(), 2u);
  EXPECT_EQ(map.Transformations()[1].fromGcsCode, 4269);
  // Storing it again adds nothing.
  AddTransformToDocIfItDoesNotExist(nadcon, error, message, map, defaults);
  EXPECT_EQ(map.Transformations().size(), 2u);
  EXPECT_EQ(defaults.set.size(), 2u);
  EXPECT_EQ(ReturnTransformsInMemory(map, defaults).size(), 1u);

  auto stands = testing::SquareLayer(dir, "Stands", Epsg(26710), 630000, 4270000, 1000);
  auto plots = testing::SquareLayer(dir, "Plots", Epsg(26910), 630000, 4270000, 1000);
  std::optional<GeoTransformation> found;
  bool needed = false;
  auto direction = TransformDirection::Reverse;
  auto status = ReturnTransformFromMemory(stands, plots, found, needed, direction, error, message, map, defaults,
                                          "Layer_1", "Layer_2");
  EXPECT_EQ(status, "NAD_1927_To_NAD_1983_NADCON [Direction = 0]");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->code, 1241);
  EXPECT_TRUE(needed);
  EXPECT_EQ(direction, TransformDirection::Forward);
  EXPECT_FALSE(error);

  found.reset();
  status = ReturnTransformFromMemory(plots, stands, found, needed, direction, error, message, map, defaults,
                                     "Layer_1", "Layer_2");
  EXPECT_EQ(status, "NAD_1927_To_NAD_1983_NADCON [Direction = 1]");
  EXPECT_EQ(direction, TransformDirection::Reverse);

  // Same system on both sides: nothing needed.
  status = ReturnTransformFromMemory(plots, Epsg(4269), found, needed, direction, error, message, map, defaults,
                                     "Layer_1", "Layer_2");
  EXPECT_EQ(status, "No Transform Necessary");
  EXPECT_FALSE(found);
  EXPECT_FALSE(needed);
}

TEST(ReturnTransformFromMemory, ReportsWhyNothingFits) {
  platform::host::MemoryMap map;
  TransformationDefaults defaults;
  std::optional<GeoTransformation> found;
  bool needed = false, error = false;
  auto direction = TransformDirection::Forward;
  std::string message;

  // Nothing stored anywhere.
  auto status = ReturnTransformFromMemory(Epsg(4267), Epsg(4269), found, needed, direction, error, message, map,
                                          defaults, "Layer_1", "Layer_2");
  EXPECT_EQ(status, "Succeeded");
  EXPECT_TRUE(error);
  EXPECT_EQ(message, "No Transform in memory");

  // The map's set is empty, so the platform's defaults are read; what they
  // hold joins neither system.
  const auto tokyo = Predefined("Tokyo_To_WGS_1984_1");
  defaults.set.push_back({tokyo.fromGcsCode, tokyo.toGcsCode, tokyo});
  found = Predefined("NAD_1927_To_NAD_1983_Alaska");  // the caller's value stays when nothing fits
  status = ReturnTransformFromMemory(Epsg(26710), Epsg(4269), found, needed, direction, error, message, map,
                                     defaults, "Layer_1", "Layer_2");
  EXPECT_EQ(status, "Succeeded");
  EXPECT_TRUE(error);
  EXPECT_EQ(found->code, 1243);
  EXPECT_EQ(message,
            "There appear to be problems with the geographic transformation you selected:\n"
            "  --> Transformation = 'Tokyo_To_WGS_1984_1'\n\n"
            "  1] This transformation does not appear to be designed for your layer 'Layer_1'\n"
            "    --> Projected Coordinate System = NAD_1927_UTM_Zone_10N\n"
            "    --> Geographic Coordinate System = NAD_1927_UTM_Zone_10N\n"
            "  2] This transformation does not appear to be designed for your layer 'Layer_2' coordinate system!\n"
            "    --> Coordinate System = GCS_North_American_1983\n");

  // A map with a set of its own hides the defaults.
  const auto nadcon = Predefined("NAD_1927_To_NAD_1983_NADCON");
  map.Transformations().push_back({4267, 4269, nadcon});
  auto stored = ReturnTransformsInMemory(map, defaults);
  ASSERT_EQ(stored.size(), 1u);
  EXPECT_EQ(stored[0].code, 1241);
}

TEST(ReturnFromToTransform, ChecksBothEndsAndNamesEachMisfit) {
  testkit::TempDir dir;
  auto stands = testing::SquareLayer(dir, "Stands", Epsg(4267), -120, 37, 1);
  const auto nad83ToWgs = Predefined("NAD_1983_To_WGS_1984_1");  // 4269 -> 4326
  bool needed = false, error = false;
  auto direction = TransformDirection::Forward;
  std::string message, name1 = "Layer_1", name2 = "Layer_2";

  // Joins object 2 (WGS 1984) but not the stands' NAD 1927: one problem, numbered 1.
  ReturnFromToTransform(stands, Epsg(4326), &nad83ToWgs, needed, direction, error, message, name1, name2);
  EXPECT_TRUE(needed);
  EXPECT_TRUE(error);
  EXPECT_EQ(name1, "Stands");
  EXPECT_EQ(message,
            "There appear to be problems with the geographic transformation you selected:\n"
            "  --> Transformation = 'NAD_1983_To_WGS_1984_1'\n\n"
            "  1] This transformation does not appear to be designed for your layer 'Stands'\n"
            "    --> Coordinate System = GCS_North_American_1927\n");

  // Joins object 1 only: the problem is object 2's and still numbered 1.
  direction = TransformDirection::Reverse;
  ReturnFromToTransform(Epsg(4269), Epsg(4267), &nad83ToWgs, needed, direction, error, message, name1, name2);
  EXPECT_TRUE(error);
  EXPECT_EQ(direction, TransformDirection::Reverse);  // left untouched
  EXPECT_NE(message.find("  1] This transformation does not appear to be designed for your layer 'Layer_2' "
                         "coordinate system!\n    --> Coordinate System = GCS_North_American_1927\n"),
            std::string::npos);
  EXPECT_EQ(message.find("  2]"), std::string::npos);

  // A fitting one clears the pair and gives its direction.
  direction = TransformDirection::Forward;
  ReturnFromToTransform(Epsg(32610), Epsg(4269), &nad83ToWgs, needed, direction, error, message, name1, name2);
  EXPECT_FALSE(error);
  EXPECT_EQ(message, "");
  EXPECT_TRUE(needed);
  EXPECT_EQ(direction, TransformDirection::Reverse);
}

TEST(ReturnFromToTransform, BadObjectsAndNoTransformation) {
  bool needed = true, error = false;
  auto direction = TransformDirection::Forward;
  std::string message, name1 = "A", name2 = "B";
  const auto nadcon = Predefined("NAD_1927_To_NAD_1983_NADCON");
  ReturnFromToTransform(Epsg(4267), Epsg(4269), nullptr, needed, direction, error, message, name1, name2);
  EXPECT_FALSE(needed);
  EXPECT_FALSE(error);
  ReturnFromToTransform(SearchObject{}, Epsg(4269), &nadcon, needed, direction, error, message, name1, name2);
  EXPECT_TRUE(error);
  EXPECT_EQ(message, "Object 1 is neither a Layer nor a Spatial Reference!  Bailing out...");
  ReturnFromToTransform(Epsg(4269), platform::SpatialReference(), &nadcon, needed, direction, error, message, name1,
                        name2);
  EXPECT_TRUE(error);
  EXPECT_EQ(message, "Spatial Reference is unknown!");
  ReturnFromToTransform(Epsg(26910), Epsg(4269), &nadcon, needed, direction, error, message, name1, name2);
  EXPECT_FALSE(error);
  EXPECT_FALSE(needed);
}

}  // namespace
}  // namespace tarnwick
