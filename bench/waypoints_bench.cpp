// Waypoint file of every point of a generated GeoPackage class, against GDAL
// alone reading the same class.
//
//   waypoints_bench [POINTS=1000000] [WORK_FOLDER=fresh folder under /tmp]
#include <algorithm>
#include <span>
#include <filesystem>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "platform/host/memory_map_document.h"
#include "common/bench_frame.h"
#include "common/gdal_floor.h"
#include "common/inventory.h"
#include "common/quiet_application.h"
#include "platform/host/map_document.h"
#include "waypoints/create_waypoint_file.h"
#include "waypoints/waypoint_checks.h"
#include "waypoints/waypoint_record.h"

namespace tarnwick::bench {
namespace {

constexpr std::uint64_t kSeed = 20261123;

// Where the tool's time per point goes: each step it takes for every point,
// timed alone on the same points (read back with GDAL first, not timed).
void PrintCostBreakdown(const std::string& pointsPath, platform::FeatureClass& featureClass, double toolSeconds) {
  const Stopwatch readWatch;
  std::int64_t features = 0;
  {
    auto cursor = featureClass.Search();
    while (auto feature = cursor->NextFeature()) features += feature->shape.IsEmpty() ? 0 : 1;
  }
  const double readSeconds = readWatch.Seconds();

  const auto points = GdalReadPointXY(pointsPath, "Plots");
  const auto utm = platform::SpatialReference::FromEpsg(26910);
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  const double n = static_cast<double>(points.size());
  std::vector<platform::XY> geographic;
  geographic.reserve(points.size());

  const Stopwatch oneByOneWatch;
  for (const auto& p : points) {
    const platform::Geometry point = platform::Geometry::MakePoint(p.x, p.y, utm);
    geographic.push_back(point.Project(wgs84).PointXY());
  }
  const double oneByOneSeconds = oneByOneWatch.Seconds();

  // The tool projects a batch of points at a time.
  std::vector<platform::XY> batched = points;
  const Stopwatch projectWatch;
  constexpr std::size_t kBatch = 4096;
  for (std::size_t first = 0; first < batched.size(); first += kBatch) {
    const std::size_t count = std::min(kBatch, batched.size() - first);
    platform::ProjectPoints(std::span(batched).subspan(first, count), utm, wgs84);
  }
  const double projectSeconds = projectWatch.Seconds();
  if (batched != geographic) throw std::runtime_error("batched projection differs from one point at a time");

  std::size_t bytes = 0;
  const Stopwatch formatWatch;
  for (const auto& g : geographic) bytes += FormatWaypointCoordinate(g.y).size() + FormatWaypointCoordinate(g.x).size();
  const double formatSeconds = formatWatch.Seconds();

  long long sum = 0;
  const Stopwatch roundWatch;
  for (const auto& g : geographic) sum += RoundDecimalHalfAway(g.y * 1e4) + RoundDecimalHalfAway(g.x * 1e4);
  const double roundSeconds = roundWatch.Seconds();

  const platform::Value plotId = std::int64_t{123456};
  const platform::Value elevation = 812.0;
  std::string text;
  text.reserve(geographic.size() * 64);  // as the tool does
  const Stopwatch recordWatch;
  for (const auto& g : geographic) {
    AppendWaypointRecord(text, plotId, g.y, g.x, &elevation, nullptr);
    text += "\r\n";
  }
  const double recordSeconds = recordWatch.Seconds();
  bytes += text.size();

  auto row = [&](FigureTable& table, const std::string& label, double seconds) {
    table.Add(label, fmt::format("{:.2f} s  {:.2f} us/point  {:.0f}% of the tool", seconds, 1e6 * seconds / n,
                                 100 * seconds / toolSeconds));
  };
  FigureTable table("cost breakdown: steps of the tool timed alone on the same points");
  row(table, "read every feature (platform cursor)", readSeconds);
  row(table, "ProjectPoints to WGS 1984, 4096 at a time", projectSeconds);
  row(table, "  (Geometry::Project one point at a time)", oneByOneSeconds);
  row(table, "AppendWaypointRecord", recordSeconds);
  row(table, "  of which 2 x FormatWaypointCoordinate", formatSeconds);
  row(table, "  of which 2 x RoundDecimalHalfAway", roundSeconds);
  table.Add("(checksums)", fmt::format("{} {} {}", features, bytes, sum));
  table.Print();
}

int Main(int argc, char** argv) {
  const std::int64_t pointCount = CountArgument(argc, argv, 1, 1000000);
  const std::string folder = WorkFolder(argc, argv, 2, "waypoints_bench");
  const std::string pointsPath = folder + "/points.gpkg";
  const std::string wayPath = folder + "/points.way";
  fmt::print("waypoints_bench: {} points, work folder {}\n", pointCount, folder);
  for (const auto& path : {pointsPath, wayPath}) std::filesystem::remove(path);

  // Points over about 100 km by 100 km of UTM zone 10N.
  const Stopwatch generationWatch;
  WriteRandomPoints(pointsPath, "Plots", pointCount, {400000, 4800000, 500000, 4900000}, kSeed);
  const double generationSeconds = generationWatch.Seconds();
  const double floorSeconds = GdalReadPoints(pointsPath, "Plots");

  WaypointParameters parameters;
  parameters.pointLayer = platform::OpenFeatureLayer(pointsPath + "|layername=Plots");
  auto& featureClass = *parameters.pointLayer.featureClass;
  parameters.plotIdField = featureClass.Fields().at(static_cast<size_t>(featureClass.FindField("PlotID")));
  parameters.elevationField = featureClass.Fields().at(static_cast<size_t>(featureClass.FindField("Elevation")));
  parameters.convertAll = true;
  parameters.outputPath = wayPath;

  QuietApplication application;
  platform::host::MemoryMapDocument document("", "bench");
  const double baselineRss = CurrentRssMiB();
  ResetPeakRss();
  const Stopwatch watch;
  const WaypointResult result = CreateWaypointFile(application, &document, parameters);
  const double toolSeconds = watch.Seconds();
  const double toolPeakRss = PeakRssMiB();
  if (!result.Succeeded()) throw std::runtime_error("the waypoint conversion failed:\n" + result.errorText);

  // The dialog and the command line check the Plot IDs for duplicates
  // before converting; the dialog repaints its progress text and lets the
  // host's events through each time the text changes. It runs second here
  // so that the memory it frees, which the allocator keeps, does not hide
  // the conversion's own peak.
  const double checkBaselineRss = CurrentRssMiB();
  ResetPeakRss();
  const Stopwatch checkWatch;
  std::int64_t progressTexts = 0;
  const auto problems = CheckPlotIDsForConversion(parameters, [&](const std::string&) {
    ++progressTexts;
    application.DoEvents();
  });
  if (problems) throw std::runtime_error("duplicate plot IDs:\n" + problems->text);
  const double checkSeconds = checkWatch.Seconds();
  const double checkPeakRss = PeakRssMiB();

  FigureTable table("waypoint file of every point (PlotID, Elevation; UTM 10N to WGS 1984)");
  table.Add("records written", fmt::format("{}", result.records));
  table.Add("tool seconds", toolSeconds, 2, "s");
  table.Add("points/s", fmt::format("{:.0f}/s", static_cast<double>(result.records) / toolSeconds));
  table.Add("floor: GDAL reads the points", floorSeconds, 2, "s");
  table.Add("floor points/s", fmt::format("{:.0f}/s", static_cast<double>(pointCount) / floorSeconds));
  table.Add("ratio tool/floor", RatioText(toolSeconds, floorSeconds, 1.5));
  table.Add("file size", fmt::format("{:.1f} MiB ({} bytes)", FileSize(wayPath) / 1048576.0, FileSize(wayPath)));
  table.Add("duplicate Plot ID check", checkSeconds, 2, "s");
  table.Add("progress texts shown (host turns)", fmt::format("{}", progressTexts));
  table.Add("growth during the check", checkPeakRss - checkBaselineRss, 1, "MiB (one entry per distinct ID)");
  table.Add("points generation", generationSeconds, 2, "s");
  table.Add("resident before the run", baselineRss, 1, "MiB");
  table.Add("peak resident during the run", toolPeakRss, 1, "MiB");
  table.Add("growth during the run", toolPeakRss - baselineRss, 1, "MiB (the file's text included)");
  table.Print();
  PrintCostBreakdown(pointsPath, featureClass, toolSeconds);
  return 0;
}

}  // namespace
}  // namespace tarnwick::bench

int main(int argc, char** argv) {
  return tarnwick::bench::RunBenchmark("waypoints_bench", tarnwick::bench::Main, argc, argv);
}
