// Checks a chosen transformation against two layers or spatial references
// and finds its direction.
#include "support/lookups.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

struct Side {
  std::optional<platform::SpatialReference> gcs;
  std::optional<platform::SpatialReference> full;  // the projected system where there is one, else the GCS
};

// Reads one side; false when it failed (the error pair tells why).
bool ReadSide(const SearchObject& object, int objectNumber, std::string& strName, Side& side, bool& booError,
              std::string& strErrMsg) {
  std::optional<platform::SpatialReference> pcs;
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) {
    strName = layer->name;
    side.gcs = ReturnGCSFromDataset(*layer, booError, strErrMsg, pcs);
  } else if (const auto* spRef = std::get_if<platform::SpatialReference>(&object)) {
    side.gcs = ReturnGCSFromSpRef(spRef, booError, strErrMsg, pcs);
  } else {
    booError = true;
    strErrMsg = "Object " + std::to_string(objectNumber) +
                " is neither a Layer nor a Spatial Reference!  Bailing out...";
  }
  if (booError) return false;
  side.full = pcs ? pcs : side.gcs;
  return true;
}

// The lines that name a side's coordinate system. A projected one is named
// on both lines: the second line shows the projected system's name too.
std::string SystemLines(const platform::SpatialReference& full) {
  if (!full.IsProjected()) return "    --> Coordinate System = " + full.Name() + "\n";
  return "    --> Projected Coordinate System = " + full.Name() + "\n" +
         "    --> Geographic Coordinate System = " + full.Name() + "\n";
}

std::string Problem(int number, const std::string& name, const std::string& closing,
                    const platform::SpatialReference& full) {
  return "  " + std::to_string(number) + "] This transformation does not " +
         "appear to be designed for your layer '" + name + closing + "\n" + SystemLines(full);
}

}  // namespace

void ReturnFromToTransform(const SearchObject& object1, const SearchObject& object2,
                           const platform::GeoTransformation* pTransform, bool& booNeeded,
                           platform::TransformDirection& lngDirection, bool& booError, std::string& strErrMsg,
                           std::string& strName1, std::string& strName2) {
  booError = false;
  strErrMsg.clear();
  if (pTransform == nullptr) {
    booNeeded = false;
    return;
  }
  Side side1;
  Side side2;
  if (!ReadSide(object1, 1, strName1, side1, booError, strErrMsg)) return;
  if (!ReadSide(object2, 2, strName2, side2, booError, strErrMsg)) return;

  bool equal = false;
  bool precisionEqual = false;
  CompareSpatialReferences(&*side1.gcs, &*side2.gcs, equal, precisionEqual);
  if (equal) {
    booNeeded = false;
    return;
  }
  booNeeded = true;
  const int code1 = side1.gcs->FactoryCode();
  const int code2 = side2.gcs->FactoryCode();
  const bool oneIsFrom = code1 == pTransform->fromGcsCode;
  const bool oneIsTo = code1 == pTransform->toGcsCode;
  const bool twoIsFrom = code2 == pTransform->fromGcsCode;
  const bool twoIsTo = code2 == pTransform->toGcsCode;
  if (oneIsFrom && twoIsTo) {
    lngDirection = platform::TransformDirection::Forward;
    return;
  }
  if (oneIsTo && twoIsFrom) {
    lngDirection = platform::TransformDirection::Reverse;
    return;
  }
  booError = true;
  strErrMsg = "There appear to be problems with the geographic transformation you selected:\n"
              "  --> Transformation = '" + pTransform->name + "'\n\n";
  int problems = 0;
  if (!oneIsFrom && !oneIsTo) strErrMsg += Problem(++problems, strName1, "'", *side1.full);
  if (!twoIsFrom && !twoIsTo) strErrMsg += Problem(++problems, strName2, "' coordinate system!", *side2.full);
}

}  // namespace tarnwick
