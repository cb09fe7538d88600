#include "transforms/transform_candidates.h"

#include "presentation/error_handling.h"

namespace tarnwick {

namespace {

constexpr const char* kNoneKnown = "<-- No Known Transformations for these two GCSs -->";

// The catalogue row of each entry, for entries that were not measured.
void AttachCatalogueRows(TransformRanking& ranking) {
  const TransformColl& coll = ReturnTransformColl();
  const TransformColl2& byName = ReturnTransformColl2();
  for (auto& entry : ranking.entries) {
    if (entry.row != nullptr) continue;
    entry.key = TransformCatalogueKey(entry.transformation, byName);
    if (auto it = coll.find(entry.key); it != coll.end()) entry.row = &it->second;
  }
}

}  // namespace

TransformCandidates FindTransformCandidates(platform::host::Application& app, const SearchObject& object1,
                                            const SearchObject& object2, const platform::Geometry* place) {
  return Guarded("FindTransformCandidates", "TransformFunctions", [&] {
    TransformCandidates found;
    std::string name1 = "No name specified";
    std::string name2 = "No name specified";
    auto list = ReturnArrayOfTransformsForSpRefs(app, object1, object2, found.failed, found.failure, found.sameGcs,
                                                 name1, name2);
    if (!list) {
      found.failed = true;
      return found;
    }
    found.unranked = std::move(*list);
    if (found.unranked.empty()) {
      found.message = kNoneKnown;
      return found;
    }

    const auto* dataset = std::get_if<platform::FeatureLayer>(&object1);
    if (dataset == nullptr) dataset = std::get_if<platform::FeatureLayer>(&object2);
    if (place != nullptr) dataset = nullptr;
    if (dataset != nullptr || place != nullptr) {
      // A ranking that fails is reported and does not cost the list.
      try {
        found.ranked = RankTransformsByDatasetCentroid(app, found.unranked, dataset, ReturnTransformColl(),
                                                       ReturnTransformColl2(), place);
      } catch (...) {
        HandleErrorAtEntryPoint("FindTransformCandidates", "TransformFunctions", &app, nullptr);
      }
    }
    if (found.ranked.entries.empty()) {
      for (const auto& t : found.unranked) found.ranked.entries.push_back({t, "", nullptr, 0, 0, 0});
    }
    AttachCatalogueRows(found.ranked);
    return found;
  });
}

}  // namespace tarnwick
