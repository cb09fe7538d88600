// The transformations a map keeps between runs, and the platform's defaults
// standing in when the map has none.
#include "presentation/error_handling.h"
#include "support/lookups.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

constexpr std::string_view kModule = "TransformFunctions";

using platform::TransformDirection;

std::string MemoryKey(const platform::GeoTransformation& t) {
  return t.code != 0 ? std::to_string(t.code) : t.name;
}

// Stores the transformation in both directions where the set lacks it; an
// empty set takes it without looking.
void StoreBothWays(TransformationSet& set, const platform::GeoTransformation& t) {
  const bool look = !set.empty();
  for (auto direction : {TransformDirection::Forward, TransformDirection::Reverse}) {
    if (!look || !FindInSet(set, direction, t)) SetInSet(set, direction, t);
  }
}

// Removes the uses that join the two systems of t, either way round.
void DropUsesBetween(TransformationSet& set, const platform::GeoTransformation& t) {
  std::erase_if(set, [&](const platform::host::TransformationUse& use) {
    return (use.fromGcsCode == t.fromGcsCode && use.toGcsCode == t.toGcsCode) ||
           (use.fromGcsCode == t.toGcsCode && use.toGcsCode == t.fromGcsCode);
  });
}

}  // namespace

TransformList ReturnTransformsInMemory(platform::host::Map& pMap, const TransformationDefaults& defaults) {
  return Guarded("ReturnTransformsInMemory", kModule, [&] {
    TransformList result;
    KeyedCollection<bool> seen;
    const TransformationSet& set = pMap.Transformations().empty() ? defaults.set : pMap.Transformations();
    if (!set.empty()) {
      // One pass per direction; a transformation stored both ways is listed once.
      for (int pass = 0; pass < 2; ++pass) {
        for (const auto& use : set) {
          const std::string key = MemoryKey(use.transformation);
          if (!CollectionHasKey(seen, key)) {
            result.push_back(use.transformation);
            seen.emplace(key, true);
          }
        }
      }
    }
    return result;
  });
}

std::string ReturnTransformFromMemory(const SearchObject& object1, const SearchObject& object2,
                                      std::optional<platform::GeoTransformation>& pTransform, bool& booNeeded,
                                      TransformDirection& lngDirection, bool& booError, std::string& strErrMsg,
                                      platform::host::Map& pMap, const TransformationDefaults& defaults,
                                      std::string strName1, std::string strName2) {
  std::string status = "Succeeded";
  try {
    const TransformList stored = ReturnTransformsInMemory(pMap, defaults);
    booError = false;
    strErrMsg.clear();
    if (stored.empty()) {
      pTransform.reset();
      booError = true;
      strErrMsg = "No Transform in memory";
      return status;
    }
    for (const auto& candidate : stored) {
      bool needed = false;
      TransformDirection direction = lngDirection;
      ReturnFromToTransform(object1, object2, &candidate, needed, direction, booError, strErrMsg, strName1,
                            strName2);
      if (booError) continue;
      booNeeded = needed;
      if (needed) {
        pTransform = candidate;
        lngDirection = direction;
        status = candidate.name + " [Direction = " + std::to_string(static_cast<long>(direction)) + "]";
      } else {
        pTransform.reset();
        lngDirection = TransformDirection::Forward;
        status = "No Transform Necessary";
      }
      return status;
    }
    return status;  // none fitted: the last one's error pair stands
  } catch (...) {
    return "Failed";
  }
}

std::string AddTransformToDocIfItDoesNotExist(const platform::GeoTransformation& pTransform, bool& booError,
                                              std::string& strErrMsg, platform::host::Map& pMap,
                                              TransformationDefaults& defaults) {
  return Guarded("AddTransformToDocIfItDoesNotExist", kModule, [&] {
    booError = false;
    strErrMsg.clear();
    StoreBothWays(defaults.set, pTransform);
    StoreBothWays(pMap.Transformations(), pTransform);
    return std::string("Succeeded");
  });
}

void StoreChosenTransformation(const platform::GeoTransformation& chosen, platform::host::Map& pMap,
                               TransformationDefaults& defaults) {
  Guarded("StoreChosenTransformation", kModule, [&] {
    for (TransformationSet* set : {&defaults.set, &pMap.Transformations()}) {
      DropUsesBetween(*set, chosen);
      StoreBothWays(*set, chosen);
    }
  });
}

}  // namespace tarnwick
