#pragma once
// Finding a geographic transformation between two layers or spatial
// references: reading the geographic systems behind them, looking through
// the transformations a map already holds, listing the platform's predefined
// transformations that join the two systems, ranking them by how near their
// area of use lies to the data, and checking a given transformation.
//
// Soft failures travel in the error pair (booError, strErrMsg), cleared on
// entry; run-time errors climb the error road.
#include <optional>
#include <string>

#include "platform/geometry.h"
#include "platform/host/application.h"
#include "transforms/catalogue.h"
#include "transforms/search_types.h"

namespace tarnwick {

// The geographic system behind a layer's dataset; pPCS becomes the projected
// system when there is one. Errors: "Spatial Reference is nothing!" (no
// dataset) and "Spatial Reference is unknown!".
std::optional<platform::SpatialReference> ReturnGCSFromDataset(const platform::FeatureLayer& pGeoDataset,
                                                                bool& booError, std::string& strErrMsg,
                                                                std::optional<platform::SpatialReference>& pPCS);

// The same for a spatial reference (nullptr for none). Clears the flag but
// leaves the message as it found it.
std::optional<platform::SpatialReference> ReturnGCSFromSpRef(const platform::SpatialReference* pSpRef,
                                                              bool& booError, std::string& strErrMsg,
                                                              std::optional<platform::SpatialReference>& pPCS);

// The predefined transformations joining the two objects' geographic systems
// (compared by factory code), in the platform's order, forward and reverse
// matches mixed. Equal systems give an empty list and booSameGCS. A failure
// shows a numbered message box and gives nullopt.
std::optional<TransformList> ReturnArrayOfTransformsForSpRefs(platform::host::Application& app,
                                                              const SearchObject& object1,
                                                              const SearchObject& object2, bool& booError,
                                                              std::string& strErrMsg, bool& booSameGCS,
                                                              std::string& strName1, std::string& strName2);

// Lists the candidates and ranks them (at object 1's data, or at pPoint when
// given), but returns the list in the platform's order: callers that take
// the first element take the first in that order. An empty list sets
// strMessage to "<-- No Known Transformations for these two GCSs -->".
TransformList ReviewAndSortTransforms_ReturnList(platform::host::Application& app, const SearchObject& object1,
                                                 const SearchObject& object2, std::string& strMessage,
                                                 const platform::Geometry* pPoint);

// One candidate with the figures it was ranked by.
struct RankedTransformation {
  platform::GeoTransformation transformation;
  std::string key;                    // catalogue code text, "-9999" when unknown
  const CatalogueRow* row = nullptr;  // the catalogue row, nullptr when unknown
  double accuracy = 0;                // as ranked (10 when the text is no number)
  double distanceKm = 0;              // from the reference location to the row's centre
  double measure = 0;                 // distanceKm x accuracy; 10000 when unknown
};

struct TransformRanking {
  bool measured = false;  // false when fewer than two candidates: nothing was measured
  double lon = 0;         // the reference location
  double lat = 0;
  std::vector<RankedTransformation> entries;  // in ranked order
};

// The catalogue key of a transformation: its factory code where it has one,
// else the code stored under its name, else "-9999".
std::string TransformCatalogueKey(const platform::GeoTransformation& t, const TransformColl2& byName);

// Ranks candidates by distance from the reference location (the centre of
// the dataset's extent, else pPoint) to the centre of each one's area of
// use, times its accuracy; an unknown transformation measures 10000. Equal
// measures fall as the unstable sort leaves them.
TransformRanking RankTransformsByDatasetCentroid(platform::host::Application& app, const TransformList& pList,
                                                 const platform::FeatureLayer* pGeoDataset,
                                                 const TransformColl& pTransformColl,
                                                 const TransformColl2& pTransformColl2,
                                                 const platform::Geometry* pPoint);

// The candidates in ranked order.
TransformList SortTransformsByDatasetCentroid(platform::host::Application& app, const TransformList& pList,
                                              const platform::FeatureLayer* pGeoDataset,
                                              const TransformColl& pTransformColl,
                                              const TransformColl2& pTransformColl2,
                                              const platform::Geometry* pPoint);

// The transformations stored for the map (the platform's defaults when the
// map has none), each once.
TransformList ReturnTransformsInMemory(platform::host::Map& pMap, const TransformationDefaults& defaults);

// Finds a stored transformation that joins the two objects. Returns
// "NAME [Direction = D]", "No Transform Necessary", or "Succeeded" when none
// fits (the error pair then tells why); "Failed" on a run-time error.
std::string ReturnTransformFromMemory(const SearchObject& object1, const SearchObject& object2,
                                      std::optional<platform::GeoTransformation>& pTransform, bool& booNeeded,
                                      platform::TransformDirection& lngDirection, bool& booError,
                                      std::string& strErrMsg, platform::host::Map& pMap,
                                      const TransformationDefaults& defaults, std::string strName1,
                                      std::string strName2);

// Checks that pTransform (nullptr: none) joins the two objects' geographic
// systems and gives its direction; booNeeded is false when the systems are
// the same. A transformation that does not fit sets the error pair with a
// text that names each layer it was not designed for.
void ReturnFromToTransform(const SearchObject& object1, const SearchObject& object2,
                           const platform::GeoTransformation* pTransform, bool& booNeeded,
                           platform::TransformDirection& lngDirection, bool& booError, std::string& strErrMsg,
                           std::string& strName1, std::string& strName2);

// Stores the transformation in both directions in the platform's defaults
// and in the map's set, where not yet there. Returns "Succeeded".
std::string AddTransformToDocIfItDoesNotExist(const platform::GeoTransformation& pTransform, bool& booError,
                                              std::string& strErrMsg, platform::host::Map& pMap,
                                              TransformationDefaults& defaults);

// Stores a transformation the user chose, in both directions, in the
// platform's defaults and in the map's set, in place of any the sets held
// between the same two geographic systems: the tools' sequence, which takes
// the first stored transformation that fits, then finds this one.
void StoreChosenTransformation(const platform::GeoTransformation& chosen, platform::host::Map& pMap,
                               TransformationDefaults& defaults);

// Projects a geometry on a projected system to that system's geographic
// system, in place; a geographic one is left alone. A geometry without a
// known reference gets a message box.
void ProjectGeometryToGeographicCoordinates(platform::host::Application& app, platform::Geometry& pGeometry);

}  // namespace tarnwick
