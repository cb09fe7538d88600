#include "transforms/transform_checks.h"

#include "platform/errors.h"
#include "platform/predefined_transformations.h"
#include "transforms/transform_search.h"

namespace tarnwick {

std::optional<CheckMessage> CheckSpatialReference(const platform::FeatureLayer& layer, const std::string& control) {
  bool booError = false;
  std::string problem;
  std::optional<platform::SpatialReference> projected;
  ReturnGCSFromDataset(layer, booError, problem, projected);
  if (!booError) return std::nullopt;
  return CheckMessage{"There is a problem with the spatial reference for '" + layer.name + "':\n\n  --> " + problem +
                          "\n\nPlease select a different layer, or fix the spatial reference before running this "
                          "tool.",
                      "Invalid Spatial Reference:", platform::host::MessageIcon::Exclamation, control};
}

std::optional<CheckMessage> CheckTransformationRuns(const platform::GeoTransformation& transformation) {
  try {
    platform::CheckTransformationUsable(transformation);
    return std::nullopt;
  } catch (const platform::PlatformError& e) {
    return CheckMessage{
        std::string(e.what()) + ".\n\nInstall the grid files, or choose another geographic transformation.",
        "Unusable Geographic Transformation:", platform::host::MessageIcon::Exclamation};
  }
}

Checked<NamedTransformation> ResolveNamedTransformation(const std::string& text, const SearchObject& object1,
                                                        const SearchObject& object2) {
  std::string name = text;
  std::optional<platform::TransformDirection> asked;
  if (const auto colon = text.rfind(':'); colon != std::string::npos) {
    const std::string suffix = text.substr(colon + 1);
    if (suffix == "reverse" || suffix == "forward") {
      asked = suffix == "reverse" ? platform::TransformDirection::Reverse : platform::TransformDirection::Forward;
      name = text.substr(0, colon);
    }
  }
  const auto transformation = platform::FindPredefinedGeoTransformation(name);
  if (!transformation) {
    return CheckMessage{"No geographic transformation is named '" + name + "'."};
  }
  NamedTransformation resolved;
  bool error = false;
  std::string message;
  std::string name1 = DisplayName(object1);
  std::string name2 = DisplayName(object2);
  ReturnFromToTransform(object1, object2, &*transformation, resolved.needed, resolved.direction, error, message, name1,
                        name2);
  if (error) return CheckMessage{message};
  if (!resolved.needed) return resolved;
  if (asked && *asked != resolved.direction) {
    return CheckMessage{DescribeTransformation(*transformation) + " joins these systems only in the " +
                        DirectionName(resolved.direction) + " direction, not " + DirectionName(*asked) + "."};
  }
  resolved.transformation = transformation;
  return resolved;
}

std::string DescribeTransformation(const platform::GeoTransformation& transformation) {
  return transformation.name + " (" + transformation.authority + ":" + std::to_string(transformation.code) + ")";
}

const char* DirectionName(platform::TransformDirection direction) {
  return direction == platform::TransformDirection::Forward ? "FORWARD" : "REVERSE";
}

std::string DisplayName(const SearchObject& object) {
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) return layer->name;
  if (const auto* sr = std::get_if<platform::SpatialReference>(&object)) return sr->Name();
  return "";
}

}  // namespace tarnwick
