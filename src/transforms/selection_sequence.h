#pragma once
// The fixed sequence by which the tools settle the geographic transformation
// between two objects before a run: none when both lie on the same
// geographic system, else one stored in the map, else the first candidate of
// the search (which is then stored in the map for the next run).
#include <optional>
#include <string>

#include "platform/geometry.h"
#include "platform/host/application.h"
#include "presentation/dialog_checks.h"
#include "transforms/search_types.h"

namespace tarnwick {

struct TransformationChoice {
  enum class Origin {
    InvalidSpatialReference,  // a side has no usable spatial reference; see message
    SameGcs,                  // no transformation needed
    Memory,                   // found among the map's stored transformations
    Search,                   // first candidate of the search, now stored in the map
    NoneKnown,                // no candidate: the run goes on without one
  };
  Origin origin = Origin::SameGcs;
  std::optional<platform::GeoTransformation> transformation;
  platform::TransformDirection direction = platform::TransformDirection::Forward;
  bool needed = false;
  std::string message;  // why a spatial reference is invalid
};

// Runs the sequence for two layers or spatial references. pPoint (may be
// nullptr) is where the candidates are judged; without it they are judged at
// the data of the first side that is a layer.
TransformationChoice SelectGeoTransformation(platform::host::Application& app, platform::host::Map& map,
                                             TransformationDefaults& defaults, const SearchObject& object1,
                                             const SearchObject& object2, const platform::Geometry* pPoint = nullptr);

// Refuses a choice the sequence could not make because a side has no usable
// spatial reference.
std::optional<CheckMessage> CheckChoiceSpatialReferences(const TransformationChoice& choice);

// The sequence as the last check before a tool runs: refused when a side has
// no usable spatial reference, or when the transformation it settles on
// cannot run on this machine (its grid files are missing).
Checked<TransformationChoice> SelectGeoTransformationForRun(platform::host::Application& app,
                                                            platform::host::Map& map, TransformationDefaults& defaults,
                                                            const SearchObject& object1, const SearchObject& object2,
                                                            const platform::Geometry* pPoint = nullptr);

}  // namespace tarnwick
