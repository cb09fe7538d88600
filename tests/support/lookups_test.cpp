#include "platform/host/memory_map_document.h"
#include "support/lookups.h"

#include <gtest/gtest.h>

#include <tuple>

#include "platform/host/map_document.h"
#include "platform/spatial_reference.h"
#include "support/host_operations.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {
using platform::Field;
using platform::FieldType;

template <class T>
std::vector<std::string> Names(const std::vector<T>& items) {
  std::vector<std::string> names;
  for (const auto& item : items) names.push_back(item.name);
  return names;
}
using Strings = std::vector<std::string>;

TEST(Lookups, FieldsByMaskInFieldOrder) {
  const std::vector<Field> fields{
      {"OBJECTID", "", FieldType::OID},  {"Shape", "", FieldType::Geometry}, {"StandID", "", FieldType::String},
      {"Age", "", FieldType::SmallInteger}, {"Area", "", FieldType::Double},   {"Cruised", "", FieldType::Date},
      {"Photo", "", FieldType::Blob},    {"Ref", "", FieldType::GlobalID},   {"Doc", "", FieldType::XML},
  };
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 7)), (Strings{"StandID", "Age", "Area", "Cruised"}));
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 2)), (Strings{"Age", "Area"}));
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 8 + 16)), (Strings{"OBJECTID", "Shape"}));
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 32 + 256 + 512)), (Strings{"Photo", "Ref", "Doc"}));
  EXPECT_TRUE(ReturnFieldsByType(fields, 0).empty());
  EXPECT_FALSE(FieldIsNumeric(FieldType::OID));
}

TEST(Lookups, LayersByShapeValidOnlyInMapOrder) {
  testkit::TempDir dir;
  platform::host::MemoryMap map;
  using platform::GeometryType;
  const std::tuple<const char*, GeometryType, bool> layers[] = {
      {"Stands", GeometryType::Polygon, true}, {"Plots", GeometryType::Point, true},
      {"Roads", GeometryType::Polyline, true}, {"Broken", GeometryType::Point, false},
      {"Old plots", GeometryType::Point, true}};
  for (const auto& [name, type, valid] : layers) {
    const std::string className = "c" + std::to_string(map.layers.size());
    map.AddLayer({name, testkit::MakeClass(dir / "inv.gpkg", testkit::ClassSpec(className, type, {})), {}, valid});
  }
  EXPECT_EQ(Names(ReturnLayersByType(map, 8)), (Strings{"Plots", "Old plots"}));
  EXPECT_EQ(Names(ReturnLayersByType(map, 32)), (Strings{"Stands"}));
  EXPECT_EQ(Names(ReturnLayersByType(map, 8 + 16)), (Strings{"Plots", "Roads", "Old plots"}));
  EXPECT_EQ(ReturnLayersByType(map, 1).size(), 4u);
  EXPECT_TRUE(ReturnLayersByType(map, 64).empty());
}

TEST(Lookups, KeyedCollectionsSpatialReferencesAndGraphics) {
  KeyedCollection<int> transforms{{"NAD_1927_To_NAD_1983_NADCON", 1241}};
  EXPECT_TRUE(CollectionHasKey(transforms, "nad_1927_to_nad_1983_nadcon"));
  EXPECT_FALSE(CollectionHasKey(transforms, "NAD_1927_To_NAD_1983"));

  const auto utm10 = platform::SpatialReference::FromEpsg(26910);
  const auto utm10b = platform::SpatialReference::FromEpsg(26910);
  const auto utm11 = platform::SpatialReference::FromEpsg(26911);
  bool equal = false, precision = false;
  EXPECT_TRUE(CompareSpatialReferences(&utm10, &utm10b, equal, precision));
  EXPECT_TRUE(equal && precision);
  EXPECT_FALSE(CompareSpatialReferences(&utm10, &utm11, equal, precision));
  EXPECT_FALSE(equal);
  EXPECT_FALSE(CompareSpatialReferences(&utm10, nullptr, equal, precision));

  platform::host::MemoryMap map;
  for (const char* name : {"Delete_Me_Tarnwick", "label", "delete_me_tarnwick"}) map.AddGraphic({name});
  DeleteGraphicsByName(map, "Delete_Me_Tarnwick");
  EXPECT_EQ(map.GraphicNames(), (Strings{"label"}));
}

}  // namespace
}  // namespace tarnwick
