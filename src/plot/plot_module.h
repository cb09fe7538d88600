#pragma once
// The source module name the plot routines give the error road.
#include <string_view>

namespace tarnwick {

inline constexpr std::string_view kPlotModule = "PlotLayoutFunctions";

}  // namespace tarnwick
