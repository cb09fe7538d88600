#pragma once
// Where a dataset's metadata document lives: NAME.shp.xml beside a
// shapefile; for a geodatabase or GeoPackage the store's own metadata place
// where GDAL can write it, else an XML sidecar beside the store.
#include <optional>
#include <string>

#include "platform/field.h"
#include "platform/geometry.h"
#include "platform/spatial_reference.h"

namespace tarnwick::platform {

class FeatureClass;

// What synchronising a document takes from the dataset.
struct DatasetDescription {
  std::string name;
  std::string fullPath;
  std::string storeKind;  // "Shapefile", "File Geodatabase Feature Class", "GeoPackage Feature Class"
  GeometryType shapeType = GeometryType::Null;
  std::int64_t featureCount = 0;
  Envelope extent;
  SpatialReference spatialReference;
  std::vector<Field> fields;
};

class MetadataStore {
 public:
  explicit MetadataStore(const FeatureClass& dataset);
  // The stored document, or nullopt when the dataset has none yet.
  std::optional<std::string> Read() const;
  // False when the dataset or its store cannot be written (read-only).
  bool CanEdit() const;
  // Writes the document; throws PlatformError when it cannot.
  void Write(const std::string& xml) const;
  DatasetDescription Describe() const;
  std::string Location() const;  // the file or table the document lives in

 private:
  const FeatureClass& dataset_;
};

}  // namespace tarnwick::platform
