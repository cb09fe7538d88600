// The OGR dataset behind a workspace: its classes, creating and deleting
// them, and its edit sessions.
#include "platform/internal/ogr_workspace.h"

#include <cpl_string.h>
#include <sqlite3.h>

#include <algorithm>
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

OGRLayer* LayerNamed(GDALDataset& dataset, const std::string& name) {
  for (int i = 0; i < dataset.GetLayerCount(); ++i) {
    OGRLayer* layer = dataset.GetLayer(i);
    if (EQUAL(layer->GetName(), name.c_str())) return layer;
  }
  return nullptr;
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
  if (staging_) {
    if (OGRLayer* staged = staging_->Find(name)) return staged;
    if (staging_->Deletes(name)) return nullptr;
  }
  return LayerNamed(*dataset_, name);
}

std::shared_ptr<OgrFeatureClass> OgrWorkspace::Track(OGRLayer* layer, bool staged) {
  auto featureClass = std::make_shared<OgrFeatureClass>(shared_from_this(), layer);
  if (staged) featureClass->Rebind(layer, true);
  std::erase_if(classes_, [](const std::weak_ptr<OgrFeatureClass>& c) { return c.expired(); });
  classes_.push_back(featureClass);
  return featureClass;
}

bool OgrWorkspace::NameExists(const std::string& name) { return FindLayer(name) != nullptr; }

std::vector<std::string> OgrWorkspace::FeatureClassNames() {
  std::vector<std::string> names;
  for (int i = 0; i < dataset_->GetLayerCount(); ++i) {
    const std::string name = dataset_->GetLayer(i)->GetName();
    if (FindLayer(name) != nullptr) names.push_back(name);
  }
  return names;
}

std::shared_ptr<FeatureClass> OgrWorkspace::OpenFeatureClass(const std::string& name) {
  OGRLayer* layer = FindLayer(name);
  if (layer == nullptr) {
    throw PlatformError(kErrPlatform, kSource, "Feature class '" + name + "' not found in '" + path_ + "'");
  }
  return Track(layer, staging_ && staging_->Find(layer->GetName()) == layer);
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
  // In a shapefile session the new class is made in a staged folder of its own.
  GDALDataset& target = staging_ ? staging_->NewClassFolder(newClass.name) : *dataset_;
  const std::unique_ptr<OGRSpatialReference> srs = CopyOgr(newClass.spatialReference);
  OGRLayer* layer =
      target.CreateLayer(newClass.name.c_str(), srs.get(), OgrGeometryType(newClass, kind_), options.List());
  if (layer == nullptr) ThrowGdalError(kSource, "Cannot create feature class '" + newClass.name + "' in '" + path_ + "'");
  for (const Field& field : newClass.fields) {
    auto defn = OgrFromField(field, kind_);
    if (layer->CreateField(defn.get()) != OGRERR_NONE) {
      ThrowGdalError(kSource, "Cannot add field '" + field.name + "' to '" + newClass.name + "'");
    }
  }
  if (layer->SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot write feature class '" + newClass.name + "'");
  return Track(layer, staging_ != nullptr);
}

void OgrWorkspace::DeleteFeatureClass(const std::string& name) {
  RequireWritable("delete feature class '" + name + "'");
  QuietGdalErrors quiet;
  if (FindLayer(name) == nullptr) return;
  if (staging_) {
    // The old files go only when the session is saved; a copy made in the
    // session goes now, and the class objects on it with it.
    for (const auto& weak : classes_) {
      auto featureClass = weak.lock();
      const std::string stem = WithoutShpExtension(name);
      if (featureClass && featureClass->Staged() && EQUAL(featureClass->Name().c_str(), stem.c_str())) {
        featureClass->Rebind(nullptr, false);
      }
    }
    staging_->Delete(WithoutShpExtension(name));
    return;
  }
  OGRLayer* layer = FindLayer(name);
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
  RemoveDataFile(MetadataSidecarPath(kind_, path_, className));
}

void OgrWorkspace::StartEditing() {
  RequireWritable("edit");
  if (editing_) throw PlatformError(kErrPlatform, kSource, "'" + path_ + "' is already being edited");
  QuietGdalErrors quiet;
  if (kind_ == WorkspaceKind::FileGeodatabase) {
    filesBeforeEdit_.clear();
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      filesBeforeEdit_.insert(entry.path().filename().string());
    }
  }
  if (kind_ == WorkspaceKind::ShapefileFolder) {
    staging_ = std::make_unique<ShapefileStaging>(path_);
  } else if (dataset_->StartTransaction(kind_ == WorkspaceKind::FileGeodatabase ? TRUE : FALSE) != OGRERR_NONE) {
    // A file geodatabase refuses when a run that ended without cleaning up
    // left its backup behind; GDAL's reason says how to recover.
    ThrowGdalError(kSource, "Cannot start editing '" + path_ + "'");
  }
  editing_ = true;
}

std::string OgrWorkspace::CannotSave() const { return "Cannot save the edits to '" + path_ + "'"; }

void OgrWorkspace::StopEditing(bool saveEdits) {
  if (!editing_) return;
  if (!saveEdits) {
    Discard();
    return;
  }
  QuietGdalErrors quiet;
  try {
    if (staging_) {
      staging_->Commit();
    } else {
      // What GDAL still holds for the layers (a geodatabase's headers and
      // indexes, a GeoPackage's feature counts and spatial index rows) is
      // written inside the transaction, not when the store closes.
      for (int i = 0; i < dataset_->GetLayerCount(); ++i) {
        if (dataset_->GetLayer(i)->SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, CannotSave());
      }
      if (dataset_->CommitTransaction() != OGRERR_NONE) ThrowGdalError(kSource, CannotSave());
    }
  } catch (...) {
    Discard();
    throw;
  }
  editing_ = false;
  for (StagedFile& file : waitingFiles_) file.Publish();
  waitingFiles_.clear();
  for (const std::string& path : filesToRemove_) RemoveNow(path);
  filesToRemove_.clear();
  if (staging_) {
    staging_.reset();
    Reopen();
  }
}

void OgrWorkspace::Discard() {
  QuietGdalErrors quiet;
  editing_ = false;
  waitingFiles_.clear();
  filesToRemove_.clear();
  if (staging_) {
    staging_.reset();
    for (const auto& weak : classes_) {
      if (auto featureClass = weak.lock(); featureClass && featureClass->Staged()) {
        featureClass->Rebind(LayerNamed(*dataset_, featureClass->Name()), false);
      }
    }
    return;
  }
  // SQLite ends a transaction itself when a write fails for want of space;
  // GDAL, not knowing, would then write its bookkeeping for the layers
  // (feature counts, spatial index rows) outside any transaction as it
  // rolls back. A transaction opened here takes those writes instead.
  if (kind_ == WorkspaceKind::GeoPackage) {
    auto* db = static_cast<sqlite3*>(dataset_->GetInternalHandle("SQLITE_HANDLE"));
    if (db != nullptr && sqlite3_get_autocommit(db) != 0) sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
  }
  // SQLite removes its journal as it rolls back; a file geodatabase puts its
  // backed-up tables back.
  dataset_->RollbackTransaction();
  if (kind_ == WorkspaceKind::GeoPackage) {
    // GDAL keeps some of a GeoPackage's bookkeeping (feature counts,
    // extents) in memory to write when the package closes, and would write
    // the session's figures then. Written now, in a transaction of their
    // own that is rolled back too, they are written no more.
    if (dataset_->StartTransaction() == OGRERR_NONE) {
      for (int i = 0; i < dataset_->GetLayerCount(); ++i) dataset_->GetLayer(i)->SyncToDisk();
      dataset_->FlushCache(false);
      dataset_->RollbackTransaction();
    }
  } else {
    // The geodatabase's rollback puts back the tables it backed up, but not
    // files the session added beside them (a table's list of free space,
    // which would no longer be true); they go, and the geodatabase, which
    // has a connection of its own, is read afresh.
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(path_, ec)) {
      if (entry.is_regular_file() && !filesBeforeEdit_.count(entry.path().filename().string())) {
        std::filesystem::remove(entry.path(), ec);
      }
    }
    Reopen();
  }
}

void OgrWorkspace::Reopen() {
  QuietGdalErrors quiet;
  for (const auto& weak : classes_) {
    if (auto featureClass = weak.lock()) featureClass->Rebind(nullptr, false);
  }
  dataset_.reset();
  dataset_ = OpenOgrDataset(path_, kind_, !readOnly_);
  if (!dataset_) ThrowGdalError(kSource, "Cannot open workspace '" + path_ + "' again");
  for (const auto& weak : classes_) {
    if (auto featureClass = weak.lock()) featureClass->Rebind(LayerNamed(*dataset_, featureClass->Name()), false);
  }
}

void OgrWorkspace::PrepareToWrite(OgrFeatureClass& featureClass) {
  if (!staging_ || featureClass.Staged()) return;
  featureClass.Rebind(staging_->CopyIn(featureClass.Name()), true);
}

std::string OgrWorkspace::StorageFolder(const std::string& className) const {
  if (staging_) {
    if (std::string folder = staging_->FolderOf(className); !folder.empty()) return folder;
  }
  return path_;
}

void OgrWorkspace::WriteDataFile(const std::string& path, const std::string& content) {
  std::erase(filesToRemove_, path);
  if (editing_) {
    waitingFiles_.push_back(StagedFile(path, {content}));
  } else {
    ReplaceFile(path, {content});
  }
}

void OgrWorkspace::RemoveDataFile(const std::string& path) {
  std::erase_if(waitingFiles_, [&](const StagedFile& file) { return file.Path() == path; });
  if (editing_) {
    filesToRemove_.push_back(path);
    return;
  }
  RemoveNow(path);
}

void OgrWorkspace::RemoveNow(const std::string& path) {
  std::error_code ec;
  std::filesystem::remove(path, ec);
  if (ec) throw PlatformError(kErrPermissionDenied, kSource, "Cannot delete '" + path + "': " + ec.message());
}

}  // namespace tarnwick::platform::internal
