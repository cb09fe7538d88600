// Opening and creating workspaces: a folder of shapefiles, a .gdb file
// geodatabase or a .gpkg GeoPackage, all through OGR.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "platform/errors.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;
constexpr const char* kSource = "Workspace";

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

std::string WithoutTrailingSlash(std::string path) {
  while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.pop_back();
  return path;
}

bool EndsWith(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() && Lower(text.substr(text.size() - tail.size())) == tail;
}

const char* DriverName(WorkspaceKind kind) {
  switch (kind) {
    case WorkspaceKind::ShapefileFolder: return "ESRI Shapefile";
    case WorkspaceKind::FileGeodatabase: return "OpenFileGDB";
    case WorkspaceKind::GeoPackage: return "GPKG";
  }
  return "";
}

void RejectPersonalGeodatabase(const std::string& path) {
  std::string lower = Lower(path);
  std::replace(lower.begin(), lower.end(), '\\', '/');
  if (EndsWith(lower, ".mdb") || lower.find(".mdb/") != std::string::npos) {
    throw PlatformError(kErrPlatform, kSource,
                        "Cannot use '" + path +
                            "': a personal geodatabase (.mdb) cannot be written on this platform; "
                            "use a file geodatabase (.gdb) or a GeoPackage (.gpkg) instead");
  }
}

// Writable for this run: the system allows it and the item is not marked
// read-only (no write permission bits), which holds even for the superuser.
bool IsWritable(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return false;
  if ((info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return false;
  return ::access(path.c_str(), W_OK) == 0;
}

// GDAL finds no driver until they are registered once in the process.
void RegisterDrivers() {
  if (GetGDALDriverManager()->GetDriverByName("GPKG") == nullptr) GDALAllRegister();
}

// Why a store that exists could not be opened: GDAL's reason, or what the
// path is not when GDAL gave none (a file that is not what its name says).
std::string OpenFailureReason(const std::string& path, WorkspaceKind kind) {
  std::string reason = CPLGetLastErrorMsg();
  if (!reason.empty()) return reason;
  switch (kind) {
    case WorkspaceKind::GeoPackage: return "it is not a GeoPackage (GDAL cannot read it as one)";
    case WorkspaceKind::FileGeodatabase: return "it is not a file geodatabase (GDAL cannot read it as one)";
    case WorkspaceKind::ShapefileFolder: return "GDAL cannot read the shapefiles in it";
  }
  return "";
}

}  // namespace

namespace internal {

GDALDriver* OgrDriver(WorkspaceKind kind) {
  RegisterDrivers();
  GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(DriverName(kind));
  if (driver == nullptr) {
    throw PlatformError(kErrPlatform, kSource, std::string("The GDAL driver ") + DriverName(kind) + " is missing");
  }
  return driver;
}

GDALDatasetUniquePtr OpenOgrDataset(const std::string& path, WorkspaceKind kind, bool update) {
  RegisterDrivers();
  const char* drivers[] = {DriverName(kind), nullptr};
  unsigned flags = GDAL_OF_VECTOR | (update ? GDAL_OF_UPDATE : GDAL_OF_READONLY);
  // A GeoPackage is one SQLite database: a second connection to it could not
  // commit while the first one reads (for example plots written into the
  // package the stands are read from). All workspaces on one package share
  // GDAL's one connection instead; GDALClose counts the references.
  if (kind == WorkspaceKind::GeoPackage) flags |= GDAL_OF_SHARED;
  GDALDatasetUniquePtr dataset(GDALDataset::Open(path.c_str(), flags, drivers, nullptr, nullptr));
  return dataset;
}

}  // namespace internal

WorkspaceKind Workspace::KindOfPath(const std::string& path) {
  const std::string p = WithoutTrailingSlash(path);
  if (EndsWith(p, ".gdb")) return WorkspaceKind::FileGeodatabase;
  if (EndsWith(p, ".gpkg")) return WorkspaceKind::GeoPackage;
  return WorkspaceKind::ShapefileFolder;
}

std::shared_ptr<Workspace> Workspace::Open(const std::string& rawPath) {
  const std::string path = WithoutTrailingSlash(rawPath);
  RejectPersonalGeodatabase(path);
  const WorkspaceKind kind = KindOfPath(path);
  std::error_code ec;
  if (path.empty() || !fs::exists(path, ec)) {
    throw PlatformError(kErrPathNotFound, kSource, "Cannot open workspace '" + path + "': it does not exist");
  }
  const bool isDirectory = fs::is_directory(path, ec);
  if (kind == WorkspaceKind::ShapefileFolder && !isDirectory) {
    throw PlatformError(kErrPathNotFound, kSource, "Cannot open workspace '" + path + "': it is not a folder");
  }
  if (::access(path.c_str(), R_OK) != 0) {
    throw PlatformError(kErrPermissionDenied, kSource,
                        "Cannot open workspace '" + path + "': permission denied");
  }
  const bool readOnly = !IsWritable(path);
  internal::QuietGdalErrors quiet;
  GDALDatasetUniquePtr dataset = internal::OpenOgrDataset(path, kind, !readOnly);
  if (!dataset && kind == WorkspaceKind::ShapefileFolder) {
    // A folder without shapefiles yet: the driver opens it through Create.
    dataset.reset(internal::OgrDriver(kind)->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  }
  if (!dataset) {
    const std::string reason = OpenFailureReason(path, kind);
    CPLErrorReset();
    throw PlatformError(kErrDamagedData, kSource, "Cannot open '" + path + "': " + reason);
  }
  return std::make_shared<internal::OgrWorkspace>(kind, path, std::move(dataset), readOnly);
}

std::shared_ptr<Workspace> Workspace::OpenOrCreate(const std::string& rawPath) {
  const std::string path = WithoutTrailingSlash(rawPath);
  RejectPersonalGeodatabase(path);
  std::error_code ec;
  if (fs::exists(path, ec)) return Open(path);
  const WorkspaceKind kind = KindOfPath(path);
  const fs::path parent = fs::path(path).parent_path();
  if (!parent.empty()) fs::create_directories(parent, ec);
  if (kind == WorkspaceKind::ShapefileFolder) {
    if (!fs::create_directories(path, ec) && ec) {
      throw PlatformError(kErrPathNotFound, kSource,
                          "Cannot create folder '" + path + "': " + ec.message());
    }
    return Open(path);
  }
  internal::QuietGdalErrors quiet;
  GDALDatasetUniquePtr dataset(internal::OgrDriver(kind)->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  if (!dataset) internal::ThrowGdalError(kSource, "Cannot create workspace '" + path + "'");
  dataset.reset();  // reopened the ordinary way, so that later openings share it
  return Open(path);
}

}  // namespace tarnwick::platform
