// The platform's predefined transformations that join two geographic systems.
#include "presentation/error_handling.h"
#include "platform/predefined_transformations.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

constexpr std::string_view kModule = "TransformFunctions";
constexpr const char* kRoutine = "ReturnArrayOfTransformsForSpRefs";

// Reads one side's geographic system. On failure returns the number of the
// message box (dataset, spatial reference, neither: 1, 2, 3 for object 1).
std::optional<platform::SpatialReference> SideGcs(const SearchObject& object, int objectNumber,
                                                  std::string& strName, bool& booError, std::string& strErrMsg,
                                                  int& failedBox) {
  std::optional<platform::SpatialReference> pcs;
  std::optional<platform::SpatialReference> gcs;
  const int first = objectNumber == 1 ? 1 : 4;
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) {
    strName = layer->featureClass ? layer->featureClass->Name() : layer->name;
    gcs = ReturnGCSFromDataset(*layer, booError, strErrMsg, pcs);
    failedBox = first;
  } else if (const auto* spRef = std::get_if<platform::SpatialReference>(&object)) {
    gcs = ReturnGCSFromSpRef(spRef, booError, strErrMsg, pcs);
    failedBox = first + 1;
  } else {
    booError = true;
    strErrMsg = "Object " + std::to_string(objectNumber) + " [" + strName +
                "] is neither a Geodataset nor a Spatial Reference!  Bailing out...";
    failedBox = first + 2;
  }
  return booError ? std::nullopt : gcs;
}

void ShowProblem(platform::host::Application& app, int box, const std::string& strErrMsg) {
  app.MessageBox(std::to_string(box) + ": Problem in " + kRoutine + "\n  --> " + strErrMsg, "",
                 platform::host::MessageButtons::OK);
}

}  // namespace

std::optional<TransformList> ReturnArrayOfTransformsForSpRefs(platform::host::Application& app,
                                                              const SearchObject& object1,
                                                              const SearchObject& object2, bool& booError,
                                                              std::string& strErrMsg, bool& booSameGCS,
                                                              std::string& strName1, std::string& strName2) {
  return Guarded(kRoutine, kModule, [&]() -> std::optional<TransformList> {
    booError = false;
    strErrMsg.clear();
    booSameGCS = false;
    int box = 0;
    const auto gcs1 = SideGcs(object1, 1, strName1, booError, strErrMsg, box);
    if (booError) {
      ShowProblem(app, box, strErrMsg);
      return std::nullopt;
    }
    const auto gcs2 = SideGcs(object2, 2, strName2, booError, strErrMsg, box);
    if (booError) {
      ShowProblem(app, box, strErrMsg);
      return std::nullopt;
    }

    TransformList list;
    const int code1 = gcs1->FactoryCode();
    const int code2 = gcs2->FactoryCode();
    booSameGCS = code1 == code2;
    if (booSameGCS) return list;
    // Factory codes alone decide: never names or definitions.
    for (const auto& t : platform::PredefinedGeoTransformations()) {
      if ((t.fromGcsCode == code1 && t.toGcsCode == code2) || (t.fromGcsCode == code2 && t.toGcsCode == code1)) {
        list.push_back(t);
      }
    }
    return list;
  });
}

}  // namespace tarnwick
