#pragma once
// Before a plot run writes anything: about how many plots it will lay out,
// from each stand's area and the spacing (or the target count), and whether
// every stand can be read and every number in the stand fields the run uses
// can be used. The command line refuses a run above a limit the user can
// raise; the Plot Layout dialog asks the same question as a Yes/No box.
#include <string>

#include "plot/plot_layout_parameters.h"
#include "support/number_text.h"

namespace tarnwick {

inline constexpr long kDefaultMaxPlots = 50'000'000;
// The highest limit a run takes: what a user who asked for more than the
// default is held to.
inline constexpr long kLargestPlotLimit = 1'000'000'000'000;

struct PlotCountEstimate {
  double plots = 0;  // about this many plots over the run's stands
  long stands = 0;   // stands read
  // The first stand that cannot be read or whose field value cannot be used,
  // naming the stand, the field and the value ("" when none).
  std::string problem;
};

// Reads the stands the run will use (all of them, or the layer's selection
// as the run picks it). The buffer is left out, so the estimate errs high.
PlotCountEstimate EstimatePlotCount(const PlotLayoutParameters& parameters);

// "This run would lay out about 61,234,567 plots, more than the limit of
// 50,000,000."
std::string PlotCountAboveLimitText(const PlotCountEstimate& estimate, long limit);

// The range of a grid orientation, in compass degrees.
inline constexpr double kLargestOrientation = 360;
NumberLimits OrientationLimits();

// The problem with a stand's number in a field the run reads ("" when it
// can be used): finite, and an orientation within a turn either way, a plot
// count 0 or more, a spacing not 0.
enum class StandNumberRole { Orientation, PlotCount, Spacing };
std::string StandNumberProblem(const std::string& standId, const std::string& fieldName, const platform::Value& value,
                               StandNumberRole role);

}  // namespace tarnwick
