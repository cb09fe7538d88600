#pragma once
// Makes forest-like stand polygons and plot points for the sample data and
// the benchmarks: irregular, concave stands with wavy edges, some with
// holes, some in two parts, and thin strips along roads.
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace tarnwick::samples {

struct Stand {
  std::string standId;  // e.g. "S-0001"
  std::vector<platform::PolygonRings> parts;
  int plotCount = 0;     // target plots for a count-based run
  double xSpacing = 0;   // spacing in feet for a spacing-based run
  double ySpacing = 0;
  double orientation = 0;
  int age = 0;
};

// A lobed, concave ring of about the given area (square map units) around
// a centre, counter-clockwise.
platform::Ring LobedRing(double cx, double cy, double area, std::mt19937_64& random, int vertices = 48);

// The hand-made sample forest: twelve stands in UTM zone 10N metres,
// including one with a hole, one in two parts and a thin strip.
std::vector<Stand> SampleForest();

// count stands of 2 to 80 hectares laid on a grid of cells without overlap.
// Deterministic for a seed. Stands come one by one so that large
// inventories need not be held in memory.
class InventoryGenerator {
 public:
  InventoryGenerator(std::int64_t count, std::uint64_t seed, double originX = 400000, double originY = 4800000);
  bool Next(Stand& stand);

 private:
  std::int64_t count_;
  std::int64_t index_ = 0;
  std::mt19937_64 random_;
  double originX_, originY_;
  std::int64_t columns_;
};

// Plot points scattered over the stands' boxes (some fall outside every
// stand), with plot IDs from 1.
std::vector<platform::XY> ScatterPoints(const std::vector<Stand>& stands, int perStand, std::uint64_t seed);

}  // namespace tarnwick::samples
