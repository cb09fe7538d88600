#pragma once
// Stands and plots for the transfer tests, written to a temp folder.
#include <optional>
#include <string>
#include <vector>

#include "platform/workspace.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::testfix {

using platform::Field;
using platform::FieldType;
using platform::Value;

// Class "Stands": StandID text(10), Age integer, Area double(10,2).
inline std::shared_ptr<platform::FeatureClass> MakeStands(const std::string& store, int epsg,
                                                          const std::vector<testkit::Row>& rows) {
  return testkit::MakeClass(store,
                            testkit::ClassSpec("Stands", platform::GeometryType::Polygon,
                                               platform::SpatialReference::FromEpsg(epsg),
                                               {Field{"StandID", "", FieldType::String, 10},
                                                Field{"Age", "", FieldType::Integer},
                                                Field{"Area", "", FieldType::Double, 0, 10, 2}}),
                            rows);
}

// Class `name` of points with PlotID (integer, from 1) and the extra fields
// given, which hold extraValues (Null where left out) on every point.
inline std::shared_ptr<platform::FeatureClass> MakePoints(const std::string& store, const std::string& name, int epsg,
                                                          const std::vector<Field>& extraFields,
                                                          const std::vector<std::optional<platform::XY>>& points,
                                                          const std::vector<Value>& extraValues = {}) {
  std::vector<Field> fields = {Field{"PlotID", "", FieldType::Integer}};
  fields.insert(fields.end(), extraFields.begin(), extraFields.end());
  std::vector<testkit::Row> rows;
  std::int64_t id = 1;
  for (const auto& xy : points) {
    rows.push_back({xy ? testkit::PointWkt(xy->x, xy->y) : "", {Value{id++}}});
    rows.back().values.insert(rows.back().values.end(), extraValues.begin(), extraValues.end());
  }
  return testkit::MakeClass(store,
                            testkit::ClassSpec(name, platform::GeometryType::Point,
                                               platform::SpatialReference::FromEpsg(epsg), fields),
                            rows);
}

using testkit::Column;

inline platform::FeatureLayer Layer(std::shared_ptr<platform::FeatureClass> featureClass, std::string name) {
  return platform::FeatureLayer{std::move(name), std::move(featureClass), {}, true};
}

// Three stands: A-1 (0..100), B-2 (100..200) beside it, C-3 overlapping both (50..150).
inline std::vector<testkit::Row> ThreeStands() {
  return {
      {"POLYGON((0 0,0 100,100 100,100 0,0 0))", {Value{std::string("A-1")}, Value{std::int64_t{40}}, Value{1.5}}},
      {"POLYGON((100 0,100 100,200 100,200 0,100 0))", {Value{std::string("B-2")}, Value{}, Value{2.25}}},
      {"POLYGON((50 50,50 150,150 150,150 50,50 50))", {Value{std::string("C-3")}, Value{std::int64_t{7}}}},
  };
}

// Inside A-1 and on C-3's corner; on the A-1/B-2 boundary; in B-2 and C-3; in C-3 only; outside all.
inline std::vector<std::optional<platform::XY>> FivePlots() {
  return {platform::XY{50, 50}, platform::XY{100, 20}, platform::XY{125, 75}, platform::XY{140, 140},
          platform::XY{500, 500}};
}

}  // namespace tarnwick::testfix
