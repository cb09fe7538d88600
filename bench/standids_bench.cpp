// Stand ID import over a generated inventory: the stand ID cloned onto
// random plot points in a GeoPackage, against GDAL alone reading every point
// of a copy and writing one text field.
//
//   standids_bench [STANDS=10000] [POINTS=1000000] [WORK_FOLDER=fresh folder under /tmp]
#include <filesystem>
#include <string>

#include <fmt/format.h>

#include "platform/host/memory_map_document.h"
#include "common/bench_frame.h"
#include "common/gdal_floor.h"
#include "common/inventory.h"
#include "common/quiet_application.h"
#include "platform/host/map_document.h"
#include "standids/import_stand_id_values.h"

namespace tarnwick::bench {
namespace {

constexpr std::uint64_t kSeed = 20261123;

int Main(int argc, char** argv) {
  const std::int64_t standCount = CountArgument(argc, argv, 1, 10000);
  const std::int64_t pointCount = CountArgument(argc, argv, 2, 1000000);
  const std::string folder = WorkFolder(argc, argv, 3, "standids_bench");
  const std::string standsPath = folder + "/stands.gpkg";
  const std::string pointsPath = folder + "/points.gpkg";
  const std::string floorPath = folder + "/points_floor.gpkg";
  fmt::print("standids_bench: {} stands, {} points, work folder {}\n", standCount, pointCount, folder);
  for (const auto& path : {standsPath, pointsPath, floorPath}) std::filesystem::remove(path);

  const Stopwatch inventoryWatch;
  const InventoryExtent extent = WriteInventory(standsPath, "Stands", standCount, kSeed);
  WriteRandomPoints(pointsPath, "Plots", pointCount, extent, kSeed + 1);
  const double inventorySeconds = inventoryWatch.Seconds();
  std::filesystem::copy_file(pointsPath, floorPath);
  const double baselineRss = CurrentRssMiB();

  TransferStandIDResult result;
  double toolSeconds = 0, toolPeakRss = 0;
  {
    TransferStandIDParameters parameters;
    parameters.standLayer = platform::OpenFeatureLayer(standsPath + "|layername=Stands");
    const auto& standClass = *parameters.standLayer.featureClass;
    parameters.standIdField = standClass.Fields().at(static_cast<size_t>(standClass.FindField("StandID")));
    parameters.pointLayer = platform::OpenFeatureLayer(pointsPath + "|layername=Plots");
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
  const double floorSeconds = GdalReadAndWriteField(floorPath, "Plots", "StandID");

  FigureTable table("stand ID cloned onto points in a GeoPackage");
  table.Add("stands", fmt::format("{}", standCount));
  table.Add("points updated", fmt::format("{}", result.pointsUpdated));
  table.Add("points inside a stand", fmt::format("{}", result.pointsInStands));
  table.Add("tool seconds", toolSeconds, 2, "s");
  table.Add("points/s", fmt::format("{:.0f}/s", static_cast<double>(result.pointsUpdated) / toolSeconds));
  table.Add("floor: GDAL reads, writes a field", floorSeconds, 2, "s");
  table.Add("floor points/s", fmt::format("{:.0f}/s", static_cast<double>(pointCount) / floorSeconds));
  table.Add("ratio tool/floor", RatioText(toolSeconds, floorSeconds, 1.5));
  table.Add("inventory and points generation", inventorySeconds, 2, "s");
  table.Add("resident before the run", baselineRss, 1, "MiB");
  table.Add("peak resident during the run", toolPeakRss, 1, "MiB");
  table.Print();
  return 0;
}

}  // namespace
}  // namespace tarnwick::bench

int main(int argc, char** argv) {
  return tarnwick::bench::RunBenchmark("standids_bench", tarnwick::bench::Main, argc, argv);
}
