#pragma once
// Where a dataset's metadata document lives:
// - a shapefile: NAME.shp.xml beside it;
// - a GeoPackage: a row of its own in the file's gpkg_metadata table,
//   referenced to the class's table;
// - a file geodatabase: GDAL 3.6 cannot update a class's documentation in
//   the geodatabase, so the document is a sidecar "STORE.gdb.NAME.xml"
//   beside the .gdb folder; a document the geodatabase itself holds is read
//   as the starting point while no sidecar exists.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/geometry.h"
#include "platform/spatial_reference.h"
#include "platform/workspace.h"

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
  // The store reads the class's extent and count, hence the non-const class.
  explicit MetadataStore(FeatureClass& dataset);
  // The stored document, or nullopt when the dataset has none yet.
  std::optional<std::string> Read() const;
  // False when the dataset or its store cannot be written (read-only).
  bool CanEdit() const;
  // Writes the document; throws PlatformError naming the location when it
  // cannot (read-only store included).
  void Write(const std::string& xml) const;
  DatasetDescription Describe() const;
  std::string Location() const;  // the file or table the document lives in

 private:
  FeatureClass& dataset_;
};

// The sidecar document of a shapefile ("dir/NAME.shp.xml") or of a file
// geodatabase class ("x.gdb.NAME.xml").
std::string MetadataSidecarPath(WorkspaceKind kind, const std::string& workspacePath, const std::string& name);

}  // namespace tarnwick::platform
