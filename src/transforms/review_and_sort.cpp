// The candidate list the tools take their transformation from.
#include "presentation/error_handling.h"
#include "platform/errors.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

constexpr std::string_view kModule = "TransformFunctions";
constexpr const char* kRoutine = "ReviewAndSortTransforms_ReturnList";

}  // namespace

TransformList ReviewAndSortTransforms_ReturnList(platform::host::Application& app, const SearchObject& object1,
                                                 const SearchObject& object2, std::string& strMessage,
                                                 const platform::Geometry* pPoint) {
  return Guarded(kRoutine, kModule, [&] {
    strMessage.clear();
    const auto* dataset1 = std::get_if<platform::FeatureLayer>(&object1);

    const TransformColl& coll = ReturnTransformColl();
    const TransformColl2& coll2 = ReturnTransformColl2();

    std::string strName1 = "No name specified";
    std::string strName2 = "No name specified";
    bool booError = false;
    bool booSameGCS = false;
    std::string strErrMsg;
    const auto list = ReturnArrayOfTransformsForSpRefs(app, object1, object2, booError, strErrMsg, booSameGCS,
                                                       strName1, strName2);
    if (!list) {
      RaiseError(platform::kErrObjectNotSet, std::string(kModule), "Object variable or With block variable not set");
    }
    if (!list->empty()) {
      // The ranking is worked out and set aside: callers see the platform's
      // order. A failure in it is reported and does not cost the list.
      try {
        if (pPoint == nullptr) {
          (void)SortTransformsByDatasetCentroid(app, *list, dataset1, coll, coll2, nullptr);
        } else {
          (void)SortTransformsByDatasetCentroid(app, *list, nullptr, coll, coll2, pPoint);
        }
      } catch (...) {
        HandleErrorAtEntryPoint(kRoutine, kModule, &app, nullptr);
      }
    } else {
      strMessage = "<-- No Known Transformations for these two GCSs -->";
    }
    return *list;
  });
}

}  // namespace tarnwick
