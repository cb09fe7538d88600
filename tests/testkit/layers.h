#pragma once
// Feature classes built in code, in any of the three stores, and read back.
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/workspace.h"

namespace tarnwick::testkit {

// One feature: its shape as WKT ("" for none) and its attribute values in
// field order (values left out stay Null).
struct Row {
  std::string wkt;
  std::vector<platform::Value> values;
};

// The class `newClass` in the store at `store` (made when missing), holding rows.
std::shared_ptr<platform::FeatureClass> MakeClass(const std::string& store,
                                                  const platform::Workspace::NewFeatureClass& newClass,
                                                  const std::vector<Row>& rows = {});

// A class description in one expression.
platform::Workspace::NewFeatureClass ClassSpec(std::string name, platform::GeometryType type,
                                               const platform::SpatialReference& sr,
                                               std::vector<platform::Field> fields = {});

// WKT of a point, and of a square whose lower-left corner is (x, y).
std::string PointWkt(double x, double y);
std::string Square(double x, double y, double side);

// Every feature of the class, in feature order.
std::vector<platform::Feature> ReadAll(platform::FeatureClass& featureClass);

// One field's values for every feature, in feature order.
std::vector<platform::Value> Column(platform::FeatureClass& featureClass, const std::string& field);
std::vector<platform::Value> Column(const std::string& layerSource, const std::string& field);

// The three kinds of store, as paths relative to a test's folder.
struct StoreCase {
  const char* name;
  const char* path;
  platform::WorkspaceKind kind;
  friend void PrintTo(const StoreCase& store, std::ostream* os) { *os << store.name; }
};
inline constexpr StoreCase kStores[] = {{"Shapefile", "shapes", platform::WorkspaceKind::ShapefileFolder},
                                        {"FileGeodatabase", "inv.gdb", platform::WorkspaceKind::FileGeodatabase},
                                        {"GeoPackage", "inv.gpkg", platform::WorkspaceKind::GeoPackage}};

}  // namespace tarnwick::testkit
