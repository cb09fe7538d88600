#pragma once
// Stand layers for the plot tests, written to a temp folder.
#include <string>
#include <vector>

#include "platform/workspace.h"
#include "plot/plot_layout_parameters.h"

namespace tarnwick::plotfix {

using platform::Field;
using platform::FieldType;
using platform::Value;

struct StandRow {
  std::string wkt;
  Value standId;
  Value plots = Value{};
  Value xSpacing = Value{};
  Value ySpacing = Value{};
  Value orientation = Value{};
};

// Field indexes of the stand class below.
inline constexpr int kStandIdIndex = 2;
inline constexpr int kPlotsIndex = 3;
inline constexpr int kXSpacingIndex = 4;
inline constexpr int kYSpacingIndex = 5;
inline constexpr int kOrientationIndex = 6;

// Class "Stands" in store: StandID text(12), Plots integer, XSp, YSp and
// Orient doubles.
inline platform::FeatureLayer MakeStands(const std::string& store, const platform::SpatialReference& sr,
                                         const std::vector<StandRow>& rows, const std::string& name = "Stands") {
  auto workspace = platform::Workspace::OpenOrCreate(store);
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = name;
  newClass.geometryType = platform::GeometryType::Polygon;
  newClass.spatialReference = sr;
  newClass.fields = {Field{"StandID", "", FieldType::String, 12}, Field{"Plots", "", FieldType::Integer},
                 Field{"XSp", "", FieldType::Double}, Field{"YSp", "", FieldType::Double},
                 Field{"Orient", "", FieldType::Double}};
  auto stands = workspace->CreateFeatureClass(newClass);
  {
    auto cursor = stands->Insert();
    for (const auto& row : rows) {
      auto buffer = cursor->CreateFeatureBuffer();
      buffer.shape = platform::Geometry::FromWkt(row.wkt, sr);
      buffer.values[kStandIdIndex] = row.standId;
      buffer.values[kPlotsIndex] = row.plots;
      buffer.values[kXSpacingIndex] = row.xSpacing;
      buffer.values[kYSpacingIndex] = row.ySpacing;
      buffer.values[kOrientationIndex] = row.orientation;
      cursor->InsertFeature(buffer);
    }
    cursor->Flush();
  }
  return platform::FeatureLayer{name, stands, {}, true};
}

inline StandsParameters StandsOf(const platform::FeatureLayer& layer) {
  StandsParameters stands;
  stands.layer = layer;
  stands.standIdFieldIndex = kStandIdIndex;
  stands.standIdField = layer.featureClass->Fields().at(kStandIdIndex);
  stands.doAllStands = true;
  return stands;
}

inline platform::Field FieldAt(const platform::FeatureLayer& layer, int index) {
  return layer.featureClass->Fields().at(index);
}

// Every feature's shape and values, in feature order.
inline std::vector<platform::Feature> ReadAll(platform::FeatureClass& featureClass) {
  std::vector<platform::Feature> features;
  auto cursor = featureClass.Search();
  while (auto feature = cursor->NextFeature()) features.push_back(std::move(*feature));
  return features;
}

// A square with its lower-left corner at (x, y).
inline std::string Square(double x, double y, double side) {
  auto p = [](double a, double b) { return std::to_string(a) + " " + std::to_string(b); };
  return "POLYGON((" + p(x, y) + "," + p(x + side, y) + "," + p(x + side, y + side) + "," + p(x, y + side) + "," +
         p(x, y) + "))";
}

}  // namespace tarnwick::plotfix
