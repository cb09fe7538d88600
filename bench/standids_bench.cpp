// Stand ID import over a generated inventory: the stand ID cloned onto
// random plot points, in a GeoPackage and in a shapefile, against the floor:
// GDAL reading every point and one attribute-only write of the field per
// point (see common/gdal_floor.h).
//
//   standids_bench [STANDS=10000] [POINTS=1000000] [WORK_FOLDER=fresh folder under /tmp]
#include <filesystem>
#include <string>

#include <fmt/format.h>

#include "common/bench_frame.h"
#include "common/gdal_floor.h"
#include "common/inventory.h"
#include "common/quiet_application.h"
#include "platform/host/map_document.h"
#include "platform/host/memory_map_document.h"
#include "standids/import_stand_id_values.h"

namespace tarnwick::bench {
namespace {

constexpr std::uint64_t kSeed = 20261123;

struct Store {
  const char* title;
  std::string workspace;  // the points' store
  std::string layer;      // the points' class
  std::string floorWorkspace;
  double (*floor)(const std::string&, const std::string&, const std::string&);
};

void CopyStore(const std::string& from, const std::string& to) {
  std::filesystem::remove_all(to);
  std::filesystem::copy(from, to, std::filesystem::copy_options::recursive);
}

void RunStore(const Store& store, const std::string& standsPath, std::int64_t standCount, std::int64_t pointCount,
              const InventoryExtent& extent) {
  WriteRandomPoints(store.workspace, store.layer, pointCount, extent, kSeed + 1);
  CopyStore(store.workspace, store.floorWorkspace);
  const double baselineRss = CurrentRssMiB();

  TransferStandIDResult result;
  double toolSeconds = 0, toolPeakRss = 0;
  {
    TransferStandIDParameters parameters;
    parameters.standLayer = platform::OpenFeatureLayer(standsPath + "|layername=Stands");
    const auto& standClass = *parameters.standLayer.featureClass;
    parameters.standIdField = standClass.Fields().at(static_cast<size_t>(standClass.FindField("StandID")));
    parameters.pointLayer = platform::OpenFeatureLayer(store.workspace + "|layername=" + store.layer);
    parameters.cloneStandIdField = true;
    QuietApplication application;
    platform::host::MemoryMapDocument document("", "bench");
    ResetPeakRss();
    const Stopwatch watch;
    result = ImportStandIDValues(application, &document, parameters);
    toolSeconds = watch.Seconds();
    toolPeakRss = PeakRssMiB();
  }
  if (!result.Succeeded()) throw std::runtime_error("the stand ID import failed:\n" + result.errorText);
  const double floorSeconds = store.floor(store.floorWorkspace, store.layer, "StandID");

  FigureTable table(fmt::format("stand ID cloned onto points in a {}", store.title));
  table.Add("stands", fmt::format("{}", standCount));
  table.Add("points updated", fmt::format("{}", result.pointsUpdated));
  table.Add("points inside a stand", fmt::format("{}", result.pointsInStands));
  table.Add("tool seconds", toolSeconds, 2, "s");
  table.Add("points/s", fmt::format("{:.0f}/s", static_cast<double>(result.pointsUpdated) / toolSeconds));
  table.Add("floor: GDAL reads, one field written", floorSeconds, 2, "s");
  table.Add("ratio tool/floor", RatioText(toolSeconds, floorSeconds, 1.5));
  table.Add("resident before the run", baselineRss, 1, "MiB");
  table.Add("peak resident during the run", toolPeakRss, 1, "MiB");
  table.Print();
}

int Main(int argc, char** argv) {
  const std::int64_t standCount = CountArgument(argc, argv, 1, 10000);
  const std::int64_t pointCount = CountArgument(argc, argv, 2, 1000000);
  const std::string folder = WorkFolder(argc, argv, 3, "standids_bench");
  const std::string standsPath = folder + "/stands.gpkg";
  fmt::print("standids_bench: {} stands, {} points, work folder {}\n", standCount, pointCount, folder);
  for (const char* old : {"stands.gpkg", "points.gpkg", "points_floor.gpkg", "shp", "shp_floor"}) {
    std::filesystem::remove_all(folder + "/" + old);
  }
  const Stopwatch inventoryWatch;
  const InventoryExtent extent = WriteInventory(standsPath, "Stands", standCount, kSeed);
  fmt::print("inventory written in {:.2f} s\n", inventoryWatch.Seconds());
  RunStore({"GeoPackage", folder + "/points.gpkg", "Plots", folder + "/points_floor.gpkg", GeoPackageAttributeFloor},
           standsPath, standCount, pointCount, extent);
  RunStore({"shapefile", folder + "/shp", "plots", folder + "/shp_floor", ShapefileAttributeFloor}, standsPath,
           standCount, pointCount, extent);
  return 0;
}

}  // namespace
}  // namespace tarnwick::bench

int main(int argc, char** argv) {
  return tarnwick::bench::RunBenchmark("standids_bench", tarnwick::bench::Main, argc, argv);
}
