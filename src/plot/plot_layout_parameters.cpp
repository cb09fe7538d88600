#include "plot/plot_layout_parameters.h"

namespace tarnwick {

SpacingRatio SpacingRatio::Of(SpacingRatioOption option, double userX, double userY) {
  switch (option) {
    case SpacingRatioOption::Square:
      return {option, 1, 1, 1};
    case SpacingRatioOption::OneToTwo:
      return {option, 1, 2, 0.5};
    case SpacingRatioOption::OneToTwoPointFive:
      return {option, 1, 2.5, 1 / 2.5};
    case SpacingRatioOption::UserDefined:
      break;
  }
  return {SpacingRatioOption::UserDefined, userX, userY, userX / userY};
}

}  // namespace tarnwick
