#include "forest_generator.h"

#include <cmath>
#include <fmt/core.h>

namespace tarnwick::samples {
namespace {

constexpr double kPi = 3.14159265358979323846;

platform::Ring Rectangle(double x0, double y0, double x1, double y1) {
  return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}, {x0, y0}};
}

platform::Ring Reversed(platform::Ring ring) { return {ring.rbegin(), ring.rend()}; }

}  // namespace

platform::Ring LobedRing(double cx, double cy, double area, std::mt19937_64& random, int vertices) {
  std::uniform_real_distribution<double> phase(0, 2 * kPi);
  std::uniform_real_distribution<double> depth(0.12, 0.3);
  const double p3 = phase(random), p5 = phase(random), p7 = phase(random);
  const double a3 = depth(random), a5 = depth(random) / 2, a7 = depth(random) / 3;
  const double stretch = std::uniform_real_distribution<double>(0.7, 1.4)(random);
  std::vector<double> radius(vertices);
  double sumSquares = 0;
  for (int i = 0; i < vertices; ++i) {
    const double t = 2 * kPi * i / vertices;
    radius[i] = 1 + a3 * std::sin(3 * t + p3) + a5 * std::sin(5 * t + p5) + a7 * std::sin(7 * t + p7);
    sumSquares += radius[i] * radius[i];
  }
  // Area of a star-shaped ring of unit scale is about pi * mean(r^2).
  const double scale = std::sqrt(area / (kPi * sumSquares / vertices));
  platform::Ring ring;
  for (int i = 0; i < vertices; ++i) {
    const double t = 2 * kPi * i / vertices;
    ring.push_back({cx + scale * stretch * radius[i] * std::cos(t), cy + scale / stretch * radius[i] * std::sin(t)});
  }
  ring.push_back(ring.front());
  return ring;
}

std::vector<Stand> SampleForest() {
  std::mt19937_64 random(1902);
  const double x0 = 452000, y0 = 4923000;  // Oregon Coast Range, UTM 10N
  std::vector<Stand> stands;
  auto add = [&](std::string id, std::vector<platform::PolygonRings> parts, int plots, double spacing,
                 double orientation, int age) {
    stands.push_back({std::move(id), std::move(parts), plots, spacing, spacing, orientation, age});
  };
  const double ha = 10000;
  int n = 0;
  for (int row = 0; row < 3; ++row) {
    for (int col = 0; col < 3; ++col, ++n) {
      const double area = (8 + 7 * ((n * 5) % 9)) * ha;
      const double cx = x0 + col * 700 + (row % 2) * 120, cy = y0 - row * 650;
      add(fmt::format("{}{:02d}", "ABCDEFGHJ"[n], 10 + n), {{LobedRing(cx, cy, area, random)}},
          6 + (n * 7) % 25, 264 + 66 * (n % 3), (n * 17) % 90, 15 + (n * 13) % 70);
    }
  }
  // A stand around a wet meadow: a hole inside.
  {
    auto outer = LobedRing(x0 + 2150, y0 - 200, 40 * ha, random);
    auto hole = Reversed(LobedRing(x0 + 2150, y0 - 200, 5 * ha, random, 24));
    add("K20", {{outer, hole}}, 20, 330, 30, 62);
  }
  // One stand in two parts, split by a creek.
  add("L21", {{LobedRing(x0 + 2100, y0 - 900, 12 * ha, random)}, {LobedRing(x0 + 2450, y0 - 1250, 9 * ha, random)}},
      15, 264, 0, 41);
  // A thin riparian strip along a road: 40 m wide, 1.2 km long.
  add("M22", {{Rectangle(x0 - 400, y0 - 1700, x0 + 800, y0 - 1660)}}, 5, 198, 0, 95);
  return stands;
}

InventoryGenerator::InventoryGenerator(std::int64_t count, std::uint64_t seed, double originX, double originY)
    : count_(count), random_(seed), originX_(originX), originY_(originY) {
  columns_ = std::max<std::int64_t>(1, static_cast<std::int64_t>(std::ceil(std::sqrt(double(count)))));
}

bool InventoryGenerator::Next(Stand& stand) {
  if (index_ >= count_) return false;
  const std::int64_t i = index_++;
  // Cells of 1.4 km hold stands up to 80 ha (about 1 km across with lobes).
  const double cell = 1400;
  const double cx = originX_ + (i % columns_) * cell + cell / 2;
  const double cy = originY_ + (i / columns_) * cell + cell / 2;
  const double hectares = std::uniform_real_distribution<double>(2, 80)(random_);
  stand.standId = fmt::format("S-{:05d}", i + 1);
  stand.parts = {{LobedRing(cx, cy, hectares * 10000, random_)}};
  stand.plotCount = std::max(2, static_cast<int>(hectares / 2));
  stand.xSpacing = stand.ySpacing = 330;
  stand.orientation = std::uniform_real_distribution<double>(0, 360)(random_);
  stand.age = std::uniform_int_distribution<int>(10, 120)(random_);
  return true;
}

std::vector<platform::XY> ScatterPoints(const std::vector<Stand>& stands, int perStand, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::vector<platform::XY> points;
  for (const auto& stand : stands) {
    double xMin = 1e300, yMin = 1e300, xMax = -1e300, yMax = -1e300;
    for (const auto& part : stand.parts)
      for (const auto& p : part.front()) {
        xMin = std::min(xMin, p.x), xMax = std::max(xMax, p.x);
        yMin = std::min(yMin, p.y), yMax = std::max(yMax, p.y);
      }
    std::uniform_real_distribution<double> x(xMin, xMax), y(yMin, yMax);
    for (int i = 0; i < perStand; ++i) points.push_back({x(random), y(random)});
  }
  return points;
}

}  // namespace tarnwick::samples
