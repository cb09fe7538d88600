#pragma once
// Stands and plots for the transfer tests, written to a temp folder.
#include <optional>
#include <string>
#include <vector>

#include "platform/workspace.h"
#include "testkit/temp_dir.h"

namespace tarnwick::testfix {

using platform::Field;
using platform::FieldType;
using platform::Value;

struct StandRow {
  std::string wkt;
  Value standId;
  Value age;
  Value area;
};

// Class "Stands": StandID text(10), Age integer, Area double(10,2).
inline std::shared_ptr<platform::FeatureClass> MakeStands(const std::string& store, int epsg,
                                                          const std::vector<StandRow>& rows) {
  auto workspace = platform::Workspace::OpenOrCreate(store);
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = "Stands";
  newClass.geometryType = platform::GeometryType::Polygon;
  newClass.spatialReference = platform::SpatialReference::FromEpsg(epsg);
  newClass.fields = {Field{"StandID", "", FieldType::String, 10}, Field{"Age", "", FieldType::Integer},
                 Field{"Area", "", FieldType::Double, 0, 10, 2}};
  auto stands = workspace->CreateFeatureClass(newClass);
  auto cursor = stands->Insert();
  for (const auto& row : rows) {
    auto buffer = cursor->CreateFeatureBuffer();
    buffer.shape = platform::Geometry::FromWkt(row.wkt, newClass.spatialReference);
    buffer.values[2] = row.standId;
    buffer.values[3] = row.age;
    buffer.values[4] = row.area;
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return stands;
}

// Class `name` of points with PlotID (integer) and the extra fields given.
inline std::shared_ptr<platform::FeatureClass> MakePoints(const std::string& store, const std::string& name, int epsg,
                                                          const std::vector<Field>& extraFields,
                                                          const std::vector<std::optional<platform::XY>>& points) {
  auto workspace = platform::Workspace::OpenOrCreate(store);
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = name;
  newClass.geometryType = platform::GeometryType::Point;
  newClass.spatialReference = platform::SpatialReference::FromEpsg(epsg);
  newClass.fields = {Field{"PlotID", "", FieldType::Integer}};
  newClass.fields.insert(newClass.fields.end(), extraFields.begin(), extraFields.end());
  auto plots = workspace->CreateFeatureClass(newClass);
  auto cursor = plots->Insert();
  std::int64_t id = 1;
  for (const auto& xy : points) {
    auto buffer = cursor->CreateFeatureBuffer();
    if (xy) buffer.shape = platform::Geometry::MakePoint(xy->x, xy->y, newClass.spatialReference);
    buffer.values[2] = id++;
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return plots;
}

// Values of one field for every feature, in feature order.
inline std::vector<Value> Column(platform::FeatureClass& featureClass, const std::string& field) {
  const int index = featureClass.FindField(field);
  std::vector<Value> values;
  auto cursor = featureClass.Search();
  while (auto feature = cursor->NextFeature()) values.push_back(feature->values.at(static_cast<size_t>(index)));
  return values;
}

inline platform::FeatureLayer Layer(std::shared_ptr<platform::FeatureClass> featureClass, std::string name) {
  return platform::FeatureLayer{std::move(name), std::move(featureClass), {}, true};
}

// Three stands: A-1 (0..100), B-2 (100..200) beside it, C-3 overlapping both (50..150).
inline std::vector<StandRow> ThreeStands() {
  return {
      {"POLYGON((0 0,0 100,100 100,100 0,0 0))", Value{std::string("A-1")}, Value{std::int64_t{40}}, Value{1.5}},
      {"POLYGON((100 0,100 100,200 100,200 0,100 0))", Value{std::string("B-2")}, Value{}, Value{2.25}},
      {"POLYGON((50 50,50 150,150 150,150 50,50 50))", Value{std::string("C-3")}, Value{std::int64_t{7}}, Value{}},
  };
}

// Inside A-1 and on C-3's corner; on the A-1/B-2 boundary; in B-2 and C-3; in C-3 only; outside all.
inline std::vector<std::optional<platform::XY>> FivePlots() {
  return {platform::XY{50, 50}, platform::XY{100, 20}, platform::XY{125, 75}, platform::XY{140, 140},
          platform::XY{500, 500}};
}

}  // namespace tarnwick::testfix
