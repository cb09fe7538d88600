// The geographic coordinate system behind a dataset or a spatial reference.
#include "presentation/error_handling.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

constexpr std::string_view kModule = "TransformFunctions";

std::optional<platform::SpatialReference> GcsOf(const platform::SpatialReference* spRef, bool& booError,
                                                 std::string& strErrMsg,
                                                 std::optional<platform::SpatialReference>& pPCS) {
  if (spRef == nullptr) {
    booError = true;
    strErrMsg = "Spatial Reference is nothing!";
    return std::nullopt;
  }
  if (spRef->IsUnknown()) {
    booError = true;
    strErrMsg = "Spatial Reference is unknown!";
    return std::nullopt;
  }
  if (spRef->IsProjected()) {
    pPCS = *spRef;
    return spRef->GeographicCoordinateSystem();
  }
  pPCS.reset();
  return *spRef;
}

}  // namespace

std::optional<platform::SpatialReference> ReturnGCSFromDataset(const platform::FeatureLayer& pGeoDataset,
                                                                bool& booError, std::string& strErrMsg,
                                                                std::optional<platform::SpatialReference>& pPCS) {
  return Guarded("ReturnGCSFromDataset", kModule, [&]() -> std::optional<platform::SpatialReference> {
    booError = false;
    strErrMsg.clear();
    if (!pGeoDataset.featureClass) return GcsOf(nullptr, booError, strErrMsg, pPCS);
    const platform::SpatialReference spRef = pGeoDataset.featureClass->GetSpatialReference();
    return GcsOf(&spRef, booError, strErrMsg, pPCS);
  });
}

std::optional<platform::SpatialReference> ReturnGCSFromSpRef(const platform::SpatialReference* pSpRef,
                                                              bool& booError, std::string& strErrMsg,
                                                              std::optional<platform::SpatialReference>& pPCS) {
  return Guarded("ReturnGCSFromSpRef", kModule, [&] {
    booError = false;  // the message is left as it was found
    return GcsOf(pSpRef, booError, strErrMsg, pPCS);
  });
}

}  // namespace tarnwick
