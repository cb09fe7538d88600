// The plot count a run will reach, and the stand values it cannot use (the
// command line's data-safety test sees an infinite orientation and the
// text of a count above the limit).
#include "plot/plot_count_estimate.h"

#include <gtest/gtest.h>

#include "plot/plot_fixtures.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using namespace plotfix;

TEST(PlotCountEstimate, AreaOverCellOrTheCountsAndTheFirstUnusableValue) {
  testkit::TempDir dir;
  const auto utm = platform::SpatialReference::FromEpsg(26910);
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 100), "A", std::int64_t{7}, 10.0, 20.0, 0.0},
                                  {Square(500200, 4000000, 200), "B", std::int64_t{5}, 10.0, 10.0, 0.0}});
  PlotLayoutParameters p;
  p.stands = StandsOf(stands);
  p.units = "Meters";
  p.spacing = ManualSpacing{10, 10};
  EXPECT_NEAR(EstimatePlotCount(p).plots, 100 + 400, 1e-6);
  p.units = "Feet";  // a foot is 0.3048 m
  EXPECT_NEAR(EstimatePlotCount(p).plots, 500 / (0.3048 * 0.3048), 1e-3);
  p.units = "Meters";
  p.spacing = SpacingFromFields{kXSpacingIndex, FieldAt(stands, kXSpacingIndex), kYSpacingIndex,
                                FieldAt(stands, kYSpacingIndex)};
  EXPECT_NEAR(EstimatePlotCount(p).plots, 50 + 400, 1e-6);
  p.spacing = PlotsFromField{kPlotsIndex, FieldAt(stands, kPlotsIndex), {}};
  const PlotCountEstimate counted = EstimatePlotCount(p);
  EXPECT_EQ(counted.plots, 12);
  EXPECT_EQ(counted.stands, 2);
  EXPECT_EQ(counted.problem, "");

  const std::pair<StandRow, std::string> cases[] = {
      {{Square(500200, 4000000, 200), "B", std::int64_t{-5}},
       "Stand 'B': the plot count in field 'Plots' is -5, which is not usable: it must be at least 0"},
      {{Square(500200, 4000000, 200), "B", std::int64_t{5}, {}, {}, 400.0},
       "Stand 'B': the orientation in field 'Orient' is 400, which is not usable: it must be at most 360"},
  };
  for (const auto& [second, problem] : cases) {
    testkit::TempDir other;
    const auto layer = MakeStands(other / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}, second});
    PlotLayoutParameters q;
    q.stands = StandsOf(layer);
    q.spacing = PlotsFromField{kPlotsIndex, FieldAt(layer, kPlotsIndex), {}};
    q.orientation = OrientationFromField{kOrientationIndex, FieldAt(layer, kOrientationIndex)};
    EXPECT_EQ(EstimatePlotCount(q).problem, problem);
  }
}

}  // namespace
}  // namespace tarnwick
