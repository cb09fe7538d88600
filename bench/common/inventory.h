#pragma once
// Generated inventories written to a GeoPackage for the benchmarks, and the
// process figures the benchmarks print.
#include <cstdint>
#include <string>

namespace tarnwick::bench {

struct InventoryExtent {
  double xMin, yMin, xMax, yMax;
};

// Writes count generated stands (2-80 ha, NAD 1983 UTM 10N) as class layer of
// the GeoPackage, streaming them; returns the area they cover.
InventoryExtent WriteInventory(const std::string& gpkgPath, const std::string& layer, std::int64_t count,
                               std::uint64_t seed);
// Writes count plot points spread uniformly over the extent, with PlotID
// (integer) and Elevation fields.
void WriteRandomPoints(const std::string& gpkgPath, const std::string& layer, std::int64_t count,
                       const InventoryExtent& extent, std::uint64_t seed);

double PeakRssMiB();  // the process's peak resident memory so far
// Starts a new peak: PeakRssMiB then reports the peak since this call (the
// current resident size at first). False when the system does not allow it.
bool ResetPeakRss();
double CurrentRssMiB();

}  // namespace tarnwick::bench
