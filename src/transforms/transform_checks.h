#pragma once
// The checks on coordinate systems and transformations that the tools make
// before a run, in the dialogs and on the command line alike.
#include <optional>
#include <string>

#include "platform/transformation.h"
#include "presentation/dialog_checks.h"
#include "transforms/search_types.h"

namespace tarnwick {

// "Invalid Spatial Reference:" when the geographic system behind the layer
// cannot be read (no reference, or an unknown one).
std::optional<CheckMessage> CheckSpatialReference(const platform::FeatureLayer& layer, const std::string& control = "");

// Refuses a transformation that cannot run on this machine (its grid files
// are missing), before anything is written.
std::optional<CheckMessage> CheckTransformationRuns(const platform::GeoTransformation& transformation);

// A transformation the user named, "NAME" or "CODE", optionally with
// ":forward" or ":reverse", checked against the two objects.
struct NamedTransformation {
  std::optional<platform::GeoTransformation> transformation;  // none when the two share their system
  platform::TransformDirection direction = platform::TransformDirection::Forward;
  bool needed = false;
};
// Refused when no predefined transformation has that name or code, when it
// does not join the two systems (with the text that tells which side it was
// not designed for), and when the direction given disagrees.
Checked<NamedTransformation> ResolveNamedTransformation(const std::string& text, const SearchObject& object1,
                                                        const SearchObject& object2);

// A name for messages: the layer's name or the reference's.
std::string DisplayName(const SearchObject& object);

// "NAME (AUTHORITY:CODE)" and "FORWARD"/"REVERSE", as messages name them.
std::string DescribeTransformation(const platform::GeoTransformation& transformation);
const char* DirectionName(platform::TransformDirection direction);

}  // namespace tarnwick
