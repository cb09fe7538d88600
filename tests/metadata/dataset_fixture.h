#pragma once
// Point classes in each kind of store, for the metadata routines to work on.
#include <filesystem>
#include <memory>
#include <string>

#include "platform/workspace.h"
#include "testkit/temp_dir.h"

namespace tarnwick::metadata::test {

struct StoreCase {
  std::string name;
  std::string path;  // relative to the temp folder
  friend void PrintTo(const StoreCase& store, std::ostream* os) { *os << store.name; }
};

// Three plots in UTM zone 10N (NAD83) with a text and an integer field.
inline std::shared_ptr<platform::FeatureClass> CreatePlots(const std::string& workspacePath) {
  using namespace platform;
  auto workspace = Workspace::OpenOrCreate(workspacePath);
  Workspace::NewFeatureClass newClass;
  newClass.name = "Plots";
  newClass.geometryType = GeometryType::Point;
  newClass.spatialReference = SpatialReference::FromEpsg(26910);
  newClass.fields = {Field{"StandID", "", FieldType::String, 20}, Field{"PlotID", "", FieldType::Integer}};
  auto plots = workspace->CreateFeatureClass(newClass);
  auto cursor = plots->Insert();
  Feature buffer = cursor->CreateFeatureBuffer();
  const double xy[3][2] = {{500000, 5000000}, {501000, 5002000}, {502000, 5001000}};
  for (int i = 0; i < 3; ++i) {
    buffer.shape = Geometry::MakePoint(xy[i][0], xy[i][1], newClass.spatialReference);
    buffer.values[2] = std::string("S") + std::to_string(i);
    buffer.values[3] = std::int64_t{i + 1};
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return plots;
}

// The class opened afresh, as a later run would see it.
inline std::shared_ptr<platform::FeatureClass> Reopen(const std::string& workspacePath) {
  return platform::Workspace::Open(workspacePath)->OpenFeatureClass("Plots");
}

}  // namespace tarnwick::metadata::test
