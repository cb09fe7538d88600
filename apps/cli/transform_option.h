#pragma once
// The --transform option a subcommand adds when its data may lie on two
// geographic systems, and how its value is resolved between two layers or
// spatial references:
//   auto (default)   the tools' own sequence: none when both lie on the same
//                    system, else one the run's map holds, else the first
//                    candidate of the search
//   none             no transformation
//   NAME[:reverse]   the named transformation (name or code); it must join
//                    the two systems, and ":reverse"/":forward", when given,
//                    must agree with the direction that does
// The choice is told on stderr.
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "platform/geometry.h"
#include "transforms/search_types.h"

namespace tarnwick::cli {

struct ResolvedTransform {
  std::optional<platform::GeoTransformation> transformation;
  platform::TransformDirection direction = platform::TransformDirection::Forward;
  bool needed = false;  // the two sides lie on different geographic systems and a transformation was found
};

class TransformOption {
 public:
  // Adds --transform to the subcommand.
  void AddTo(CLI::App& subcommand);
  const std::string& Value() const { return value_; }

  // Resolves the option between object 1 and object 2 (the data and the
  // system it is taken to). `at` (may be nullptr) is where candidates are
  // judged when object 1 is a spatial reference. Throws UsageError when a
  // named transformation is unknown or does not join the two systems, and
  // when the chosen one cannot run on this machine (missing grid files).
  ResolvedTransform Resolve(CommandContext& context, const SearchObject& object1, const SearchObject& object2,
                            const platform::Geometry* at = nullptr);

  // The choice alone, as Resolve makes it, without asking whether the
  // transformation can run on this machine.
  ResolvedTransform Choose(CommandContext& context, const SearchObject& object1, const SearchObject& object2,
                           const platform::Geometry* at = nullptr);

 private:
  std::string value_ = "auto";
  // The platform's defaults, kept for the life of the run.
  TransformationDefaults defaults_;
};

// "PATH", "PATH|layername=NAME" or "x.gpkg/NAME" as a layer when such a file
// or folder exists, else a coordinate system ("EPSG:4267", WKT, a PROJ
// string). Throws UsageError when it is neither.
SearchObject ParseLayerOrSpatialReference(const std::string& text);

// The layer's or reference's coordinate system (unknown when it has none).
platform::SpatialReference SpatialReferenceOf(const SearchObject& object);

}  // namespace tarnwick::cli
