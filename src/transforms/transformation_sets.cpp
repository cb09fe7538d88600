#include "transforms/search_types.h"

#include <algorithm>

#include "support/lookups.h"

namespace tarnwick {

namespace {

bool SameTransformation(const platform::GeoTransformation& a, const platform::GeoTransformation& b) {
  if (a.code != 0 || b.code != 0) return a.code == b.code && a.authority == b.authority;
  return !CaseInsensitiveLess{}(a.name, b.name) && !CaseInsensitiveLess{}(b.name, a.name);
}

// The use that stands for the transformation in that direction.
platform::host::TransformationUse UseFor(platform::TransformDirection direction,
                                        const platform::GeoTransformation& t) {
  const bool forward = direction == platform::TransformDirection::Forward;
  return {forward ? t.fromGcsCode : t.toGcsCode, forward ? t.toGcsCode : t.fromGcsCode, t};
}

}  // namespace

bool FindInSet(const TransformationSet& set, platform::TransformDirection direction,
               const platform::GeoTransformation& transformation) {
  const auto wanted = UseFor(direction, transformation);
  return std::any_of(set.begin(), set.end(), [&](const platform::host::TransformationUse& use) {
    return use.fromGcsCode == wanted.fromGcsCode && use.toGcsCode == wanted.toGcsCode &&
           SameTransformation(use.transformation, transformation);
  });
}

void SetInSet(TransformationSet& set, platform::TransformDirection direction,
              const platform::GeoTransformation& transformation) {
  set.push_back(UseFor(direction, transformation));
}

}  // namespace tarnwick
