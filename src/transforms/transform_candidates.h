#pragma once
// The one search for the transformations that join two layers or spatial
// references: the candidates in the platform's order (the tools take the
// first of these) and ranked by how near and how accurate each is for the
// data (the chooser and the command line show these).
#include <string>

#include "platform/geometry.h"
#include "platform/host/application.h"
#include "transforms/transform_search.h"

namespace tarnwick {

struct TransformCandidates {
  bool failed = false;      // a side's geographic system could not be read; a numbered box was shown
  std::string failure;      // why
  bool sameGcs = false;     // both lie on one geographic system: no search was made
  TransformList unranked;   // the platform's order
  TransformRanking ranked;  // ranked order; not measured with one candidate or no place to measure at
  std::string message;      // "<-- No Known Transformations for these two GCSs -->" when there is none
};

// Ranks at place when given (any coordinate system), else at the middle of
// object 1's data, else at object 2's; with no layer and no place the
// candidates keep the platform's order. Every ranked entry carries its
// catalogue row where the catalogue knows it.
TransformCandidates FindTransformCandidates(platform::host::Application& app, const SearchObject& object1,
                                            const SearchObject& object2, const platform::Geometry* place = nullptr);

}  // namespace tarnwick
