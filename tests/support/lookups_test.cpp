#include "platform/host/memory_map_document.h"
#include "support/lookups.h"

#include <gtest/gtest.h>

#include "platform/host/map_document.h"
#include "platform/spatial_reference.h"
#include "support/host_operations.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {
using platform::Field;
using platform::FieldType;

std::vector<std::string> Names(const std::vector<Field>& fields) {
  std::vector<std::string> names;
  for (const auto& f : fields) names.push_back(f.name);
  return names;
}

TEST(Lookups, FieldsByMaskInFieldOrder) {
  const std::vector<Field> fields{
      {"OBJECTID", "", FieldType::OID},  {"Shape", "", FieldType::Geometry}, {"StandID", "", FieldType::String},
      {"Age", "", FieldType::SmallInteger}, {"Area", "", FieldType::Double},   {"Cruised", "", FieldType::Date},
      {"Photo", "", FieldType::Blob},    {"Ref", "", FieldType::GlobalID},   {"Doc", "", FieldType::XML},
  };
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 7)),
            (std::vector<std::string>{"StandID", "Age", "Area", "Cruised"}));
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 2)), (std::vector<std::string>{"Age", "Area"}));
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 8 + 16)), (std::vector<std::string>{"OBJECTID", "Shape"}));
  EXPECT_EQ(Names(ReturnFieldsByType(fields, 32 + 256 + 512)), (std::vector<std::string>{"Photo", "Ref", "Doc"}));
  EXPECT_TRUE(ReturnFieldsByType(fields, 0).empty());
  EXPECT_FALSE(FieldIsNumeric(FieldType::OID));
  EXPECT_EQ(ReturnEsriFieldTypeNameFromNumber(3), "esriFieldTypeDouble");
  EXPECT_EQ(ReturnEsriFieldTypeNameFromNumber_Friendly(4), "Text");
}

TEST(Lookups, LayersByShapeValidOnlyInMapOrder) {
  testkit::TempDir dir;
  auto make = [&](const std::string& name, platform::GeometryType type) {
    return testkit::MakeClass(dir / "inv.gpkg", testkit::ClassSpec(name, type, {}));
  };
  platform::host::MemoryMap map;
  map.AddLayer({"Stands", make("stands", platform::GeometryType::Polygon), {}});
  map.AddLayer({"Plots", make("plots", platform::GeometryType::Point), {}});
  map.AddLayer({"Roads", make("roads", platform::GeometryType::Polyline), {}});
  map.AddLayer({"Broken", make("broken", platform::GeometryType::Point), {}, false});
  map.AddLayer({"Old plots", make("old_plots", platform::GeometryType::Point), {}});

  auto names = [](const std::vector<platform::FeatureLayer>& layers) {
    std::vector<std::string> n;
    for (const auto& l : layers) n.push_back(l.name);
    return n;
  };
  EXPECT_EQ(names(ReturnLayersByType(map, 8)), (std::vector<std::string>{"Plots", "Old plots"}));
  EXPECT_EQ(names(ReturnLayersByType(map, 32)), (std::vector<std::string>{"Stands"}));
  EXPECT_EQ(names(ReturnLayersByType(map, 8 + 16)), (std::vector<std::string>{"Plots", "Roads", "Old plots"}));
  EXPECT_EQ(names(ReturnLayersByType(map, 1)).size(), 4u);
  EXPECT_TRUE(ReturnLayersByType(map, 64).empty());
  platform::host::MemoryMap empty;
  EXPECT_TRUE(ReturnLayersByType(empty, 1).empty());
}

TEST(Lookups, KeyedCollectionsAndSpatialReferences) {
  KeyedCollection<int> transforms{{"NAD_1927_To_NAD_1983_NADCON", 1241}};
  EXPECT_TRUE(CollectionHasKey(transforms, "nad_1927_to_nad_1983_nadcon"));
  EXPECT_FALSE(CollectionHasKey(transforms, "NAD_1927_To_NAD_1983"));

  const auto utm10 = platform::SpatialReference::FromEpsg(26910);
  const auto utm10b = platform::SpatialReference::FromEpsg(26910);
  const auto utm11 = platform::SpatialReference::FromEpsg(26911);
  bool equal = false, precision = false;
  EXPECT_TRUE(CompareSpatialReferences(&utm10, &utm10b, equal, precision));
  EXPECT_TRUE(equal);
  EXPECT_TRUE(precision);

  equal = precision = true;
  EXPECT_FALSE(CompareSpatialReferences(&utm10, &utm11, equal, precision));
  EXPECT_FALSE(equal);

  EXPECT_FALSE(CompareSpatialReferences(&utm10, nullptr, equal, precision));
}

TEST(HostOperations, VersionsAndGraphics) {
  EXPECT_EQ(ReturnArcGISVersion(0), "8.3");
  EXPECT_EQ(ReturnArcGISVersion(7), "Unable to determine ArcGIS Version!");
  platform::host::MemoryMap map;
  for (const char* name : {"Delete_Me_Tarnwick", "label", "delete_me_tarnwick"}) map.AddGraphic({name});
  DeleteGraphicsByName(map, "Delete_Me_Tarnwick");
  EXPECT_EQ(map.GraphicNames(), (std::vector<std::string>{"label"}));
}

}  // namespace
}  // namespace tarnwick
