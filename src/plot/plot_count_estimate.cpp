#include "plot/plot_count_estimate.h"

#include <cmath>
#include <exception>

#include "plot/plot_texts.h"
#include "plot/plot_units.h"
#include "plot/stand_origin.h"
#include "support/spherical_area.h"

namespace tarnwick {

namespace {

// The polygon's area in square metres (square units where the reference
// has no known unit).
double AreaInSquareMeters(const platform::Geometry& polygon) {
  if (polygon.IsEmpty()) return 0;
  const platform::SpatialReference& reference = polygon.SpatialRef();
  if (reference.IsGeographic()) {
    double x = 0, y = 0;
    return SphericalPolygonArea2(polygon, false, x, y, reference.SemiMajorAxis(), reference.SemiMinorAxis());
  }
  const double metersPerUnit = reference.IsProjected() ? reference.MetersPerUnit() : 1.0;
  return polygon.Area() * metersPerUnit * metersPerUnit;
}

// Plots of one stand for the spacing options: its area over the cell's.
double PlotsAtSpacing(double areaSquareMeters, double x, double y, const std::string& units) {
  const double cell = DistanceToMeters(std::fabs(x), units) * DistanceToMeters(std::fabs(y), units);
  return cell > 0 ? areaSquareMeters / cell : HUGE_VAL;
}

std::string FieldValueText(const platform::Value& value) {
  if (const auto* number = std::get_if<double>(&value)) return NumberText(*number);
  return platform::ValueToText(value);
}

}  // namespace

NumberLimits OrientationLimits() {
  NumberLimits limits;
  limits.low = -kLargestOrientation;
  limits.high = kLargestOrientation;
  return limits;
}

std::string StandNumberProblem(const std::string& standId, const std::string& fieldName, const platform::Value& value,
                               StandNumberRole role) {
  if (platform::IsNull(value)) return "";  // the run itself says what a Null does
  NumberLimits limits = OrientationLimits();
  const char* what = "the orientation";
  if (role == StandNumberRole::PlotCount) {
    what = "the plot count";
    limits = NumberLimits{};
    limits.low = 0;
  } else if (role == StandNumberRole::Spacing) {
    what = "the spacing";
    limits = NumberLimits{};
  }
  std::string problem;
  try {
    const double number = platform::ValueToDouble(value);
    problem = NumberProblem(number, limits);
    if (problem.empty() && role == StandNumberRole::Spacing && number == 0) problem = "must not be 0";
  } catch (const std::exception&) {
    problem = "is not a number";
  }
  if (problem.empty()) return "";
  return "Stand '" + standId + "': " + what + " in field '" + fieldName + "' is " + FieldValueText(value) + ", which " +
         (problem.starts_with("is ") ? problem : "is not usable: it " + problem);
}

PlotCountEstimate EstimatePlotCount(const PlotLayoutParameters& parameters) {
  PlotCountEstimate estimate;
  const platform::FeatureLayer& layer = parameters.stands.layer;
  if (!layer.featureClass) return estimate;
  try {
    const bool allStands = parameters.stands.doAllStands || layer.selection.empty();
    auto cursor = allStands ? layer.featureClass->Search() : layer.featureClass->SearchOids(layer.selection);
    const auto* orientationField = std::get_if<OrientationFromField>(&parameters.orientation);
    while (auto stand = cursor->NextFeature()) {
      ++estimate.stands;
      const std::string id = StandIdForMessages(stand->values.at(parameters.stands.standIdFieldIndex));
      auto check = [&](int index, const platform::Field& field, StandNumberRole role) {
        if (estimate.problem.empty())
          estimate.problem = StandNumberProblem(id, field.name, stand->values.at(index), role);
        return estimate.problem.empty();
      };
      if (orientationField &&
          !check(orientationField->fieldIndex, orientationField->field, StandNumberRole::Orientation)) {
        return estimate;
      }
      double plots = 0;
      if (const auto* perPolygon = std::get_if<PlotsPerPolygon>(&parameters.spacing)) {
        plots = static_cast<double>(perPolygon->plotsPerStand);
      } else if (const auto* fromField = std::get_if<PlotsFromField>(&parameters.spacing)) {
        if (!check(fromField->fieldIndex, fromField->field, StandNumberRole::PlotCount)) return estimate;
        const platform::Value& count = stand->values.at(fromField->fieldIndex);
        plots = platform::IsNull(count) ? 0 : platform::ValueToDouble(count);
      } else if (const auto* manual = std::get_if<ManualSpacing>(&parameters.spacing)) {
        plots = PlotsAtSpacing(AreaInSquareMeters(stand->shape), manual->x, manual->y, parameters.units);
      } else {
        const auto& fields = std::get<SpacingFromFields>(parameters.spacing);
        if (!check(fields.xFieldIndex, fields.xField, StandNumberRole::Spacing) ||
            !check(fields.yFieldIndex, fields.yField, StandNumberRole::Spacing)) {
          return estimate;
        }
        const platform::Value& x = stand->values.at(fields.xFieldIndex);
        const platform::Value& y = stand->values.at(fields.yFieldIndex);
        if (!platform::IsNull(x) && !platform::IsNull(y)) {
          plots = PlotsAtSpacing(AreaInSquareMeters(stand->shape), platform::ValueToDouble(x),
                                 platform::ValueToDouble(y), parameters.units);
        }
      }
      estimate.plots += plots;
    }
  } catch (const std::exception& e) {
    estimate.problem = e.what();
  }
  return estimate;
}

std::string PlotCountAboveLimitText(const PlotCountEstimate& estimate, long limit) {
  auto grouped = [](double value) {
    if (!std::isfinite(value) || value >= 1e18) return std::string("infinitely many");
    std::string digits = std::to_string(static_cast<long long>(std::round(value)));
    for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3)
      digits.insert(static_cast<std::size_t>(at), ",");
    return digits;
  };
  return "This run would lay out about " + grouped(estimate.plots) + " plots, more than the limit of " +
         grouped(static_cast<double>(limit)) + ".";
}

}  // namespace tarnwick
