// Ranking of candidate transformations by how near and how accurate they are
// for the data at hand.
#include <charconv>

#include "presentation/error_handling.h"
#include "platform/errors.h"
#include "support/geographic_buffer.h"
#include "support/sorting.h"
#include "support/spheroid_operations.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

constexpr std::string_view kModule = "TransformFunctions";
constexpr double kSphereRadius = 6371000.79000915;  // metres
constexpr double kMetresPerKm = 1000;
constexpr double kDefaultAccuracy = 10;
constexpr double kUnknownMeasure = 10000;
constexpr const char* kUnknownKey = "-9999";

struct LonLat {
  double lon = 0;
  double lat = 0;
};

// The centre of the dataset's extent, on its geographic system.
LonLat DatasetCentre(platform::host::Application& app, const platform::FeatureLayer& dataset) {
  if (!dataset.featureClass) {
    RaiseError(platform::kErrObjectNotSet, std::string(kModule), "Object variable or With block variable not set");
  }
  const platform::SpatialReference sr = dataset.featureClass->GetSpatialReference();
  platform::Envelope extent = dataset.featureClass->Extent();
  if (sr.IsProjected()) {
    platform::Geometry polygon = EnvelopeToPolygon(extent, sr);
    ProjectGeometryToGeographicCoordinates(app, polygon);
    extent = polygon.GetEnvelope();
  }
  return {extent.Width() / 2 + extent.xMin, extent.Height() / 2 + extent.yMin};
}

LonLat PointLocation(platform::host::Application& app, const platform::Geometry& point) {
  platform::Geometry clone = point;
  ProjectGeometryToGeographicCoordinates(app, clone);
  const platform::XY xy = clone.PointXY();
  return {xy.x, xy.y};
}

// The accuracy text as a number, or the default when it is none.
double AccuracyOf(const std::string& text) {
  double value = 0;
  const char* begin = text.data();
  const char* end = begin + text.size();
  while (begin != end && *begin == ' ') ++begin;
  auto [stop, ec] = std::from_chars(begin, end, value);
  return (ec == std::errc() && stop == end && begin != end) ? value : kDefaultAccuracy;
}

}  // namespace

std::string TransformCatalogueKey(const platform::GeoTransformation& t, const TransformColl2& byName) {
  if (t.code != 0) return std::to_string(t.code);
  if (auto it = byName.find(t.name); it != byName.end()) return std::to_string(it->second);
  return kUnknownKey;
}

TransformRanking RankTransformsByDatasetCentroid(platform::host::Application& app, const TransformList& pList,
                                                 const platform::FeatureLayer* pGeoDataset,
                                                 const TransformColl& pTransformColl,
                                                 const TransformColl2& pTransformColl2,
                                                 const platform::Geometry* pPoint) {
  return Guarded("SortTransformsByDatasetCentroid", kModule, [&] {
    TransformRanking ranking;
    if (pList.size() < 2) {
      for (const auto& t : pList) ranking.entries.push_back({t, "", nullptr, 0, 0, 0});
      return ranking;
    }
    LonLat at;
    if (pGeoDataset) {
      at = DatasetCentre(app, *pGeoDataset);
    } else if (pPoint) {
      at = PointLocation(app, *pPoint);
    } else {
      RaiseError(platform::kErrObjectNotSet, std::string(kModule), "Object variable or With block variable not set");
    }
    ranking.measured = true;
    ranking.lon = at.lon;
    ranking.lat = at.lat;

    std::vector<double> measures;
    std::vector<RankedTransformation> entries;
    for (const auto& t : pList) {
      RankedTransformation entry{t, TransformCatalogueKey(t, pTransformColl2), nullptr, 0, 0, kUnknownMeasure};
      if (auto it = pTransformColl.find(entry.key); it != pTransformColl.end()) {
        const CatalogueRow& row = it->second;
        double bearing = 0;
        entry.row = &row;
        entry.accuracy = AccuracyOf(row.accuracy);
        entry.distanceKm =
            DistanceHaversineNumbers(at.lat, at.lon, row.centreLat, row.centreLon, kSphereRadius, false, bearing) /
            kMetresPerKm;
        entry.measure = entry.distanceKm * entry.accuracy;
      }
      measures.push_back(entry.measure);
      entries.push_back(std::move(entry));
    }
    DoubleAscendingWithObjects(measures, entries, 0, static_cast<long>(entries.size()) - 1);
    ranking.entries = std::move(entries);
    return ranking;
  });
}

TransformList SortTransformsByDatasetCentroid(platform::host::Application& app, const TransformList& pList,
                                              const platform::FeatureLayer* pGeoDataset,
                                              const TransformColl& pTransformColl,
                                              const TransformColl2& pTransformColl2,
                                              const platform::Geometry* pPoint) {
  TransformList result;
  for (auto& entry :
       RankTransformsByDatasetCentroid(app, pList, pGeoDataset, pTransformColl, pTransformColl2, pPoint).entries) {
    result.push_back(std::move(entry.transformation));
  }
  return result;
}

}  // namespace tarnwick
