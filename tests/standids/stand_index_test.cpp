#include "standids/stand_index.h"

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <random>

#include "standids/transfer_fixtures.h"

namespace tarnwick {
namespace {

using namespace testfix;

// The grid must give the same stand as trying every stand in feature order.
TEST(StandIndex, AgreesWithTryingEveryStandInFeatureOrder) {
  testkit::TempDir dir;
  std::mt19937 random(7);
  std::uniform_real_distribution<double> corner(0, 1000);
  std::uniform_real_distribution<double> size(5, 150);
  std::vector<testkit::Row> rows;
  std::vector<std::string> wkts;
  for (int i = 0; i < 300; ++i) {
    const double x = corner(random), y = corner(random), w = size(random), h = size(random);
    // Triangles, so that envelope hits are not always polygon hits.
    const std::string wkt = fmt::format("POLYGON(({0} {1},{2} {1},{0} {3},{0} {1}))", x, y, x + w, y + h);
    wkts.push_back(wkt);
    rows.push_back({wkt, {Value{"S" + std::to_string(i)}, Value{std::int64_t{i}}}});
  }
  auto stands = MakeStands(dir / "s.gpkg", 26910, rows);
  const StandIndex index(*stands, {stands->FindField("StandID"), stands->FindField("Age")});
  EXPECT_EQ(index.StandCount(), 300u);

  const auto sr = platform::SpatialReference::FromEpsg(26910);
  std::vector<platform::PreparedPolygon> polygons;
  for (const auto& wkt : wkts) polygons.emplace_back(platform::Geometry::FromWkt(wkt, sr));
  std::uniform_real_distribution<double> anywhere(-50, 1200);
  int hits = 0;
  for (int i = 0; i < 3000; ++i) {
    // Some points exactly on stand corners and edges.
    double x = anywhere(random), y = anywhere(random);
    if (i % 10 == 0) {
      const auto env = platform::Geometry::FromWkt(wkts[static_cast<size_t>(i / 10)], sr).GetEnvelope();
      x = env.xMin;
      y = (env.yMin + env.yMax) / 2;
    }
    std::optional<std::int64_t> expected;
    for (size_t s = 0; s < polygons.size() && !expected; ++s) {
      if (polygons[s].Covers(x, y)) expected = static_cast<std::int64_t>(s);
    }
    const auto* found = index.Find(x, y);
    ASSERT_EQ(found != nullptr, expected.has_value()) << x << " " << y;
    if (found) {
      ++hits;
      EXPECT_EQ((*found)[1], Value{*expected}) << x << " " << y;
      EXPECT_EQ((*found)[0], Value{"S" + std::to_string(*expected)});
    }
  }
  EXPECT_GT(hits, 300);
}

}  // namespace
}  // namespace tarnwick
