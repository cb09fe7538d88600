#pragma once
// Stand layers for the plot tests, written to a temp folder.
#include <string>
#include <vector>

#include "platform/workspace.h"
#include "plot/plot_layout_parameters.h"
#include "testkit/layers.h"

namespace tarnwick::plotfix {

using platform::Field;
using platform::FieldType;
using platform::Value;
using testkit::ReadAll;
using testkit::Square;

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
  std::vector<testkit::Row> features;
  for (const auto& r : rows) features.push_back({r.wkt, {r.standId, r.plots, r.xSpacing, r.ySpacing, r.orientation}});
  auto stands = testkit::MakeClass(
      store, testkit::ClassSpec(name, platform::GeometryType::Polygon, sr,
                                {Field{"StandID", "", FieldType::String, 12}, Field{"Plots", "", FieldType::Integer},
                                 Field{"XSp", "", FieldType::Double}, Field{"YSp", "", FieldType::Double},
                                 Field{"Orient", "", FieldType::Double}}),
      features);
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

// An existing point layer as the run's output, numbered by idField.
inline ExistingPlotLayer ExistingLayer(const std::string& layerName, std::shared_ptr<platform::FeatureClass> plots,
                                       const std::string& idField, bool startAboveHighest = false) {
  ExistingPlotLayer existing;
  existing.plotIdFieldIndex = plots->FindField(idField);
  existing.plotIdField = plots->Fields().at(existing.plotIdFieldIndex);
  existing.plotIdFieldName = idField;
  existing.startAboveHighest = startAboveHighest;
  existing.layer = platform::FeatureLayer{layerName, std::move(plots), {}, true};
  return existing;
}

}  // namespace tarnwick::plotfix
