#include "common/inventory.h"

#include <sys/resource.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <string>

#include "forest_generator.h"
#include "platform/workspace.h"

namespace tarnwick::bench {

using platform::FieldType;

InventoryExtent WriteInventory(const std::string& gpkgPath, const std::string& layer, std::int64_t count,
                               std::uint64_t seed) {
  const auto sr = platform::SpatialReference::FromEpsg(26910);
  auto workspace = platform::Workspace::OpenOrCreate(gpkgPath);
  if (workspace->NameExists(layer)) workspace->DeleteFeatureClass(layer);
  auto fc = workspace->CreateFeatureClass({.name = layer,
                                           .geometryType = platform::GeometryType::Polygon,
                                           .spatialReference = sr,
                                           .fields = {{"StandID", "", FieldType::String, 16},
                                                      {"PlotCount", "", FieldType::Integer},
                                                      {"Orient", "", FieldType::Double}}});
  const int id = fc->FindField("StandID"), plots = fc->FindField("PlotCount"), orient = fc->FindField("Orient");
  auto cursor = fc->Insert();
  auto buffer = cursor->CreateFeatureBuffer();
  samples::InventoryGenerator generator(count, seed);
  samples::Stand stand;
  InventoryExtent extent{1e300, 1e300, -1e300, -1e300};
  while (generator.Next(stand)) {
    for (const auto& part : stand.parts)
      for (const auto& p : part.front()) {
        extent.xMin = std::min(extent.xMin, p.x), extent.xMax = std::max(extent.xMax, p.x);
        extent.yMin = std::min(extent.yMin, p.y), extent.yMax = std::max(extent.yMax, p.y);
      }
    buffer.shape = platform::Geometry::MakePolygon(stand.parts, sr);
    buffer.values[id] = stand.standId;
    buffer.values[plots] = std::int64_t{stand.plotCount};
    buffer.values[orient] = stand.orientation;
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return extent;
}

void WriteRandomPoints(const std::string& gpkgPath, const std::string& layer, std::int64_t count,
                       const InventoryExtent& extent, std::uint64_t seed) {
  const auto sr = platform::SpatialReference::FromEpsg(26910);
  auto workspace = platform::Workspace::OpenOrCreate(gpkgPath);
  if (workspace->NameExists(layer)) workspace->DeleteFeatureClass(layer);
  auto fc = workspace->CreateFeatureClass({.name = layer,
                                           .geometryType = platform::GeometryType::Point,
                                           .spatialReference = sr,
                                           .fields = {{"PlotID", "", FieldType::Integer},
                                                      {"Elevation", "", FieldType::Double}}});
  const int plotId = fc->FindField("PlotID"), elevation = fc->FindField("Elevation");
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> x(extent.xMin, extent.xMax), y(extent.yMin, extent.yMax);
  auto cursor = fc->Insert();
  auto buffer = cursor->CreateFeatureBuffer();
  for (std::int64_t i = 1; i <= count; ++i) {
    buffer.shape = platform::Geometry::MakePoint(x(random), y(random), sr);
    buffer.values[plotId] = i;
    buffer.values[elevation] = 500.0 + static_cast<double>(i % 900);
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
}

namespace {

// A "Vm...:" line of /proc/self/status in MiB; negative when absent.
double StatusMiB(const std::string& wanted) {
  std::ifstream status("/proc/self/status");
  std::string key;
  while (status >> key) {
    if (key == wanted) {
      double kib = 0;
      status >> kib;
      return kib / 1024.0;
    }
    status.ignore(4096, '\n');
  }
  return -1;
}

}  // namespace

double PeakRssMiB() {
  // The kernel's high-water mark of this address space, which ResetPeakRss
  // can restart; getrusage keeps the peak of the whole process life.
  if (const double hwm = StatusMiB("VmHWM:"); hwm >= 0) return hwm;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024.0;
}

bool ResetPeakRss() {
  // Writing 5 to clear_refs resets the peak the kernel keeps for the process.
  std::ofstream clear("/proc/self/clear_refs");
  clear << "5";
  clear.flush();
  return static_cast<bool>(clear);
}

double CurrentRssMiB() { return std::max(0.0, StatusMiB("VmRSS:")); }

}  // namespace tarnwick::bench
