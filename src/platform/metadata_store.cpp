// The metadata document's place in each kind of store (see metadata_store.h
// for the choice per store).
#include "platform/metadata_store.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/errors.h"
#include "platform/file_replace.h"
#include "platform/internal/gpkg_metadata.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;
constexpr const char* kSource = "MetadataStore";
// The layer metadata domain that held the document in a GeoPackage before
// it had a gpkg_metadata row of its own.
constexpr const char* kLegacyDocumentDomain = "xml:documentation";

// Writable for this run: the system allows it and the item is not marked
// read-only (no write permission bits), which holds even for the superuser.
bool IsWritable(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return false;
  if ((info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return false;
  return ::access(path.c_str(), W_OK) == 0;
}

bool WritableIfPresent(const std::string& path) {
  std::error_code ec;
  return !fs::exists(path, ec) || IsWritable(path);
}

std::string FolderOf(const std::string& path) {
  const std::string parent = fs::path(path).parent_path().string();
  return parent.empty() ? "." : parent;
}

std::string Reason() { return errno != 0 ? std::strerror(errno) : "unknown reason"; }

// The GDAL layer behind a class, when the class is one of ours.
internal::OgrFeatureClass* OgrClass(FeatureClass& dataset) { return dynamic_cast<internal::OgrFeatureClass*>(&dataset); }

bool InGeoPackageLayer(FeatureClass& dataset) {
  return dataset.GetWorkspace()->Kind() == WorkspaceKind::GeoPackage && OgrClass(dataset) != nullptr;
}

// The class's .shp where it lies now: in an edit session's copy while a
// shapefile session writes it.
std::string ShapefilePath(FeatureClass& dataset) {
  if (auto* ogr = OgrClass(dataset)) return ogr->StorageFullPath();
  return dataset.FullPath();
}

// The sidecar file of a shapefile or a geodatabase class (or of any class
// whose layer cannot be reached).
std::string SidecarPath(FeatureClass& dataset) {
  const auto workspace = dataset.GetWorkspace();
  if (workspace->Kind() == WorkspaceKind::ShapefileFolder) return ShapefilePath(dataset) + ".xml";
  return MetadataSidecarPath(workspace->Kind(), workspace->PathName(), dataset.Name());
}

std::optional<std::string> ReadFile(const std::string& path) {
  std::error_code ec;
  if (!fs::exists(path, ec)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  if (in) text << in.rdbuf();
  if (!in || in.bad()) {
    throw PlatformError(kErrPermissionDenied, kSource, "Cannot read the metadata document '" + path + "': " + Reason());
  }
  return text.str();
}

// A sidecar belongs to the data: a shapefile's is written with its
// session's copy, a geodatabase's when its session is saved.
void WriteSidecar(FeatureClass& dataset, const std::string& path, const std::string& xml) {
  try {
    auto* ogr = OgrClass(dataset);
    if (ogr != nullptr && dataset.GetWorkspace()->Kind() != WorkspaceKind::ShapefileFolder) {
      ogr->Store().WriteDataFile(path, xml);
    } else {
      ReplaceFile(path, {xml});
    }
  } catch (const PlatformError& e) {
    throw PlatformError(kErrPermissionDenied, kSource, std::string("Cannot write the metadata document: ") + e.what());
  }
}

// The documentation a file geodatabase keeps for a class in its item table.
std::optional<std::string> GeodatabaseDocumentation(const std::string& gdbPath, const std::string& name) {
  internal::QuietGdalErrors quiet;
  const char* drivers[] = {"OpenFileGDB", nullptr};
  const char* options[] = {"LIST_ALL_TABLES=YES", nullptr};
  GDALDatasetUniquePtr gdb(GDALDataset::Open(gdbPath.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, drivers, options, nullptr));
  if (!gdb) return std::nullopt;
  OGRLayer* items = gdb->GetLayerByName("GDB_Items");
  if (items == nullptr || items->GetLayerDefn()->GetFieldIndex("Documentation") < 0) return std::nullopt;
  for (auto& item : *items) {
    if (!EQUAL(item->GetFieldAsString("Name"), name.c_str())) continue;
    const std::string documentation = item->GetFieldAsString("Documentation");
    if (!documentation.empty()) return documentation;
  }
  return std::nullopt;
}

const char* StoreKindText(WorkspaceKind kind) {
  switch (kind) {
    case WorkspaceKind::ShapefileFolder: return "Shapefile";
    case WorkspaceKind::FileGeodatabase: return "File Geodatabase Feature Class";
    case WorkspaceKind::GeoPackage: return "GeoPackage Feature Class";
  }
  return "";
}

}  // namespace

MetadataStore::MetadataStore(FeatureClass& dataset) : dataset_(dataset) {}

std::string MetadataStore::Location() const {
  if (InGeoPackageLayer(dataset_)) {
    return dataset_.GetWorkspace()->PathName() + " (gpkg_metadata of '" + dataset_.Name() + "')";
  }
  return SidecarPath(dataset_);
}

std::optional<std::string> MetadataStore::Read() const {
  if (InGeoPackageLayer(dataset_)) {
    internal::OgrFeatureClass* ogr = OgrClass(dataset_);
    if (auto document = internal::ReadGeoPackageDocument(ogr->Store().Dataset(), dataset_.Name())) return document;
    // Earlier versions kept the document in a GDAL metadata domain.
    internal::QuietGdalErrors quiet;
    char** items = ogr->Layer().GetMetadata(kLegacyDocumentDomain);
    if (items == nullptr || items[0] == nullptr || items[0][0] == '\0') return std::nullopt;
    return std::string(items[0]);
  }
  auto document = ReadFile(SidecarPath(dataset_));
  if (!document && dataset_.GetWorkspace()->Kind() == WorkspaceKind::FileGeodatabase) {
    document = GeodatabaseDocumentation(dataset_.GetWorkspace()->PathName(), dataset_.Name());
  }
  return document;
}

bool MetadataStore::CanEdit() const {
  const auto workspace = dataset_.GetWorkspace();
  if (auto* ogr = OgrClass(dataset_); ogr != nullptr && ogr->Store().ReadOnly()) return false;
  switch (workspace->Kind()) {
    case WorkspaceKind::ShapefileFolder:
      return IsWritable(workspace->PathName()) && IsWritable(ShapefilePath(dataset_)) &&
             WritableIfPresent(SidecarPath(dataset_));
    case WorkspaceKind::GeoPackage:
      // SQLite keeps its journal beside the file, so the folder must take writes too.
      if (!IsWritable(workspace->PathName()) || !IsWritable(FolderOf(workspace->PathName()))) return false;
      return InGeoPackageLayer(dataset_) || WritableIfPresent(SidecarPath(dataset_));
    case WorkspaceKind::FileGeodatabase:
      return IsWritable(workspace->PathName()) && IsWritable(FolderOf(workspace->PathName())) &&
             WritableIfPresent(SidecarPath(dataset_));
  }
  return false;
}

void MetadataStore::Write(const std::string& xml) const {
  if (!CanEdit()) {
    throw PlatformError(kErrPermissionDenied, kSource,
                        "Cannot write the metadata document '" + Location() + "': the dataset is read-only");
  }
  internal::OgrFeatureClass* ogr = OgrClass(dataset_);
  if (ogr != nullptr) ogr->Store().PrepareToWrite(*ogr);
  if (!InGeoPackageLayer(dataset_)) {
    WriteSidecar(dataset_, SidecarPath(dataset_), xml);
    return;
  }
  try {
    internal::WriteGeoPackageDocument(ogr->Store().Dataset(), dataset_.Name(), xml);
  } catch (const PlatformError& e) {
    throw PlatformError(e.Number(), kSource, "Cannot write the metadata document '" + Location() + "': " + e.what());
  }
}

std::string MetadataSidecarPath(WorkspaceKind kind, const std::string& workspacePath, const std::string& name) {
  if (kind == WorkspaceKind::ShapefileFolder) return (fs::path(workspacePath) / (name + ".shp.xml")).string();
  return workspacePath + "." + name + ".xml";
}

DatasetDescription MetadataStore::Describe() const {
  DatasetDescription description;
  description.name = dataset_.Name();
  description.fullPath = dataset_.FullPath();
  description.storeKind = StoreKindText(dataset_.GetWorkspace()->Kind());
  description.shapeType = dataset_.ShapeType();
  description.featureCount = dataset_.FeatureCount();
  description.extent = dataset_.Extent();
  description.spatialReference = dataset_.GetSpatialReference();
  description.fields = dataset_.Fields();
  return description;
}

}  // namespace tarnwick::platform
