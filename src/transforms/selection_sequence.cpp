#include "presentation/error_handling.h"
#include "transforms/selection_sequence.h"

#include "transforms/transform_candidates.h"
#include "transforms/transform_checks.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

std::optional<platform::SpatialReference> GcsOfObject(const SearchObject& object, bool& booError,
                                                      std::string& strErrMsg) {
  std::optional<platform::SpatialReference> pcs;
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) {
    return ReturnGCSFromDataset(*layer, booError, strErrMsg, pcs);
  }
  strErrMsg.clear();
  return ReturnGCSFromSpRef(std::get_if<platform::SpatialReference>(&object), booError, strErrMsg, pcs);
}

}  // namespace

TransformationChoice SelectGeoTransformation(platform::host::Application& app, platform::host::Map& map,
                                             TransformationDefaults& defaults, const SearchObject& object1,
                                             const SearchObject& object2, const platform::Geometry* pPoint) {
  return Guarded("SelectGeoTransformation", "TransformFunctions", [&] {
    TransformationChoice choice;
    bool booError = false;
    std::string strErrMsg;
    const auto gcs1 = GcsOfObject(object1, booError, strErrMsg);
    if (!booError && gcs1) {
      const auto gcs2 = GcsOfObject(object2, booError, strErrMsg);
      if (!booError && gcs2 && gcs1->FactoryCode() == gcs2->FactoryCode()) return choice;  // SameGcs
    }
    if (booError) {
      choice.origin = TransformationChoice::Origin::InvalidSpatialReference;
      choice.message = strErrMsg;
      return choice;
    }

    std::optional<platform::GeoTransformation> stored;
    bool needed = false;
    auto direction = platform::TransformDirection::Forward;
    ReturnTransformFromMemory(object1, object2, stored, needed, direction, booError, strErrMsg, map, defaults,
                              "Layer_1", "Layer_2");
    if (!booError && stored) {
      choice.origin = TransformationChoice::Origin::Memory;
      choice.transformation = stored;
      choice.direction = direction;
      choice.needed = true;
      return choice;
    }

    // The platform's order decides; the ranking (at pPoint, else at the data)
    // only matters to those who show the list.
    const TransformList list = FindTransformCandidates(app, object1, object2, pPoint).unranked;
    if (list.empty()) {
      choice.origin = TransformationChoice::Origin::NoneKnown;
      return choice;
    }
    const platform::GeoTransformation& first = list.front();
    AddTransformToDocIfItDoesNotExist(first, booError, strErrMsg, map, defaults);
    std::string strName1 = "Layer_1";
    std::string strName2 = "Layer_2";
    ReturnFromToTransform(object1, object2, &first, needed, direction, booError, strErrMsg, strName1, strName2);
    choice.origin = TransformationChoice::Origin::Search;
    choice.transformation = first;
    choice.direction = direction;
    choice.needed = needed;
    return choice;
  });
}

std::optional<CheckMessage> CheckChoiceSpatialReferences(const TransformationChoice& choice) {
  if (choice.origin != TransformationChoice::Origin::InvalidSpatialReference) return std::nullopt;
  return CheckMessage{"  --> " + choice.message, "Invalid Spatial Reference:", platform::host::MessageIcon::Exclamation};
}

Checked<TransformationChoice> SelectGeoTransformationForRun(platform::host::Application& app,
                                                            platform::host::Map& map, TransformationDefaults& defaults,
                                                            const SearchObject& object1, const SearchObject& object2,
                                                            const platform::Geometry* pPoint) {
  TransformationChoice choice = SelectGeoTransformation(app, map, defaults, object1, object2, pPoint);
  if (auto refusal = CheckChoiceSpatialReferences(choice)) return *refusal;
  if (choice.needed && choice.transformation) {
    if (auto refusal = CheckTransformationRuns(*choice.transformation)) return *refusal;
  }
  return choice;
}

}  // namespace tarnwick
