#include "support/feature_class_rules.h"

#include <algorithm>
#include <cmath>

#include "support/text_operations.h"

namespace tarnwick {

double SpatialGridSize(const std::optional<platform::Envelope>& envelope, long expectedCount) {
  double size = 100;
  if (envelope && !envelope->empty && expectedCount > 0) {
    const double width = envelope->Width();
    const double height = envelope->Height();
    size = std::sqrt(width * height / (static_cast<double>(expectedCount) / 200.0));
    if (size > width) size = width;
    if (size > height) size = height;
  }
  return size;
}

std::optional<FeatureTypeClass> ClassForFeatureType(int featureType, platform::GeometryType geometryType) {
  using platform::GeometryType;
  switch (featureType) {
    case 1:
      return FeatureTypeClass{"esriGeoDatabase.Feature",
                              geometryType == GeometryType::Line ? GeometryType::Polyline : geometryType};
    case 7: return FeatureTypeClass{"esriGeoDatabase.SimpleJunctionFeature", GeometryType::Point};
    case 8: return FeatureTypeClass{"esriGeoDatabase.SimpleEdgeFeature", GeometryType::Polyline};
    case 9: return FeatureTypeClass{"esriGeoDatabase.ComplexJunctionFeature", GeometryType::Point};
    case 10: return FeatureTypeClass{"esriGeoDatabase.ComplexEdgeFeature", GeometryType::Polyline};
    case 11: return std::nullopt;
    default:
      if (featureType < 1 || featureType > 11) return std::nullopt;
      return FeatureTypeClass{"", geometryType};
  }
}

std::string NumberedFieldName(const std::string& base, int width, const std::vector<platform::Field>& extraFields) {
  const auto taken = [&](const std::string& name) {
    return std::any_of(extraFields.begin(), extraFields.end(),
                       [&](const platform::Field& f) { return EqualsIgnoreCase(f.name, name); });
  };
  std::string name = base;
  for (long n = 1; taken(name); ++n) {
    const std::string digits = std::to_string(n);
    const int keep = std::max(0, width - static_cast<int>(digits.size()));
    name = base.substr(0, static_cast<std::size_t>(keep)) + digits;
  }
  return name;
}

}  // namespace tarnwick
