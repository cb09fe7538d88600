// The OGR dataset behind a workspace: its classes, and creating and deleting them.
#include "platform/internal/ogr_workspace.h"

#include <cpl_string.h>

#include <filesystem>

#include "platform/errors.h"
#include "platform/internal/gpkg_metadata.h"
#include "platform/metadata_store.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/spatial_reference_impl.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "Workspace";

std::string WithoutShpExtension(const std::string& name) {
  if (name.size() > 4 && EQUAL(name.substr(name.size() - 4).c_str(), ".shp")) return name.substr(0, name.size() - 4);
  return name;
}

OGRwkbGeometryType OgrGeometryType(const Workspace::NewFeatureClass& newClass, WorkspaceKind kind) {
  // Geodatabases and GeoPackages hold lines and polygons as multi-part types.
  const bool multi = kind != WorkspaceKind::ShapefileFolder;
  OGRwkbGeometryType type = wkbUnknown;
  switch (newClass.geometryType) {
    case GeometryType::Point: type = wkbPoint; break;
    case GeometryType::Multipoint: type = wkbMultiPoint; break;
    case GeometryType::Polyline:
    case GeometryType::Line: type = multi ? wkbMultiLineString : wkbLineString; break;
    case GeometryType::Polygon: type = multi ? wkbMultiPolygon : wkbPolygon; break;
    case GeometryType::Null: type = wkbNone; break;
  }
  if (type == wkbNone) return type;
  return OGR_GT_SetModifier(type, newClass.hasZ ? TRUE : FALSE, newClass.hasM ? TRUE : FALSE);
}

}  // namespace

OgrWorkspace::OgrWorkspace(WorkspaceKind kind, std::string path, GDALDatasetUniquePtr dataset, bool readOnly)
    : kind_(kind), path_(std::move(path)), dataset_(std::move(dataset)), readOnly_(readOnly) {}

void OgrWorkspace::RequireWritable(const std::string& what) const {
  if (readOnly_) {
    throw PlatformError(kErrPermissionDenied, kSource,
                        "Cannot " + what + ": workspace '" + path_ + "' is read-only");
  }
}

OGRLayer* OgrWorkspace::FindLayer(const std::string& rawName) {
  const std::string name = kind_ == WorkspaceKind::ShapefileFolder ? WithoutShpExtension(rawName) : rawName;
  for (int i = 0; i < dataset_->GetLayerCount(); ++i) {
    OGRLayer* layer = dataset_->GetLayer(i);
    if (EQUAL(layer->GetName(), name.c_str())) return layer;
  }
  return nullptr;
}

bool OgrWorkspace::NameExists(const std::string& name) { return FindLayer(name) != nullptr; }

std::vector<std::string> OgrWorkspace::FeatureClassNames() {
  std::vector<std::string> names;
  for (int i = 0; i < dataset_->GetLayerCount(); ++i) names.emplace_back(dataset_->GetLayer(i)->GetName());
  return names;
}

std::shared_ptr<FeatureClass> OgrWorkspace::OpenFeatureClass(const std::string& name) {
  OGRLayer* layer = FindLayer(name);
  if (layer == nullptr) {
    throw PlatformError(kErrPlatform, kSource, "Feature class '" + name + "' not found in '" + path_ + "'");
  }
  return std::make_shared<OgrFeatureClass>(shared_from_this(), layer);
}

std::shared_ptr<FeatureClass> OgrWorkspace::CreateFeatureClass(const NewFeatureClass& newClass) {
  RequireWritable("create feature class '" + newClass.name + "'");
  if (NameExists(newClass.name)) {
    throw PlatformError(kErrPlatform, kSource,
                        "Cannot create feature class '" + newClass.name + "': it already exists in '" + path_ + "'");
  }
  QuietGdalErrors quiet;
  CPLStringList options;
  if (kind_ != WorkspaceKind::ShapefileFolder) {
    if (!newClass.oidFieldName.empty()) options.SetNameValue("FID", newClass.oidFieldName.c_str());
    if (!newClass.shapeFieldName.empty()) options.SetNameValue("GEOMETRY_NAME", newClass.shapeFieldName.c_str());
  }
  const std::unique_ptr<OGRSpatialReference> srs = CopyOgr(newClass.spatialReference);
  OGRLayer* layer = dataset_->CreateLayer(newClass.name.c_str(), srs.get(), OgrGeometryType(newClass, kind_), options.List());
  if (layer == nullptr) ThrowGdalError(kSource, "Cannot create feature class '" + newClass.name + "' in '" + path_ + "'");
  for (const Field& field : newClass.fields) {
    auto defn = OgrFromField(field, kind_);
    if (layer->CreateField(defn.get()) != OGRERR_NONE) {
      ThrowGdalError(kSource, "Cannot add field '" + field.name + "' to '" + newClass.name + "'");
    }
  }
  if (layer->SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot write feature class '" + newClass.name + "'");
  return std::make_shared<OgrFeatureClass>(shared_from_this(), layer);
}

void OgrWorkspace::DeleteFeatureClass(const std::string& name) {
  RequireWritable("delete feature class '" + name + "'");
  QuietGdalErrors quiet;
  OGRLayer* layer = FindLayer(name);
  if (layer == nullptr) return;
  const std::string className = layer->GetName();
  for (int i = 0; i < dataset_->GetLayerCount(); ++i) {
    if (dataset_->GetLayer(i) == layer) {
      if (dataset_->DeleteLayer(i) != OGRERR_NONE) {
        ThrowGdalError(kSource, "Cannot delete feature class '" + name + "' from '" + path_ + "'");
      }
      break;
    }
  }
  // The class's metadata document goes with it, so that a new class of the
  // same name starts its own record.
  if (kind_ == WorkspaceKind::GeoPackage) {
    DeleteGeoPackageDocuments(*dataset_, className);
    return;
  }
  std::error_code ec;
  std::filesystem::remove(MetadataSidecarPath(kind_, path_, className), ec);
  if (ec) {
    throw PlatformError(kErrPermissionDenied, kSource,
                        "Cannot delete the metadata document of '" + name + "': " + ec.message());
  }
}

}  // namespace tarnwick::platform::internal
