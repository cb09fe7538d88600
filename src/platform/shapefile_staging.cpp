#include "platform/internal/shapefile_staging.h"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <vector>

#include "platform/errors.h"
#include "platform/file_replace.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"
#include "platform/internal/shapefile_files.h"

namespace tarnwick::platform::internal {

namespace {

namespace fs = std::filesystem;
constexpr const char* kSource = "ShapefileEdit";

std::string Key(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
  return name;
}

std::vector<fs::path> FilesIn(const std::string& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

[[noreturn]] void ThrowWriteError(const std::string& shapefile, const std::string& reason) {
  throw PlatformError(kErrPlatform, kSource, "Cannot write '" + shapefile + "': " + reason);
}

}  // namespace

ShapefileStaging::ShapefileStaging(std::string folder) : workspaceFolder_(std::move(folder)) {
  std::string pattern = (fs::path(workspaceFolder_) / ".tarnwick-edit-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw PlatformError(kErrPermissionDenied, kSource,
                        "Cannot edit the shapefiles in '" + workspaceFolder_ + "': " + std::strerror(errno));
  }
  root_ = pattern;
}

ShapefileStaging::~ShapefileStaging() {
  QuietGdalErrors quiet;
  classes_.clear();  // closes the staged datasets before their files go
  std::error_code ec;
  fs::remove_all(root_, ec);
}

OGRLayer* ShapefileStaging::Find(const std::string& name) const {
  const auto found = classes_.find(Key(name));
  if (found == classes_.end() || !found->second.dataset) return nullptr;
  return found->second.dataset->GetLayerByName(found->second.name.c_str());
}

std::string ShapefileStaging::FolderOf(const std::string& name) const {
  const auto found = classes_.find(Key(name));
  return found == classes_.end() ? std::string() : found->second.folder;
}

ShapefileStaging::StagedClass& ShapefileStaging::Add(const std::string& name) {
  StagedClass staged;
  staged.name = name;
  staged.folder = (fs::path(root_) / std::to_string(++folders_)).string();
  std::error_code ec;
  if (!fs::create_directory(staged.folder, ec)) {
    throw PlatformError(kErrPermissionDenied, kSource, "Cannot edit '" + name + "': " + ec.message());
  }
  return classes_[Key(name)] = std::move(staged);
}

OGRLayer* ShapefileStaging::CopyIn(const std::string& name) {
  StagedClass& staged = Add(name);
  for (const auto& file : ShapefileCompanions(workspaceFolder_, name)) {
    std::error_code ec;
    fs::copy_file(file, fs::path(staged.folder) / fs::path(file).filename(), ec);
    if (ec) ThrowWriteError(file, "it cannot be copied for editing: " + ec.message());
  }
  QuietGdalErrors quiet;
  staged.dataset = OpenOgrDataset(staged.folder, WorkspaceKind::ShapefileFolder, true);
  OGRLayer* layer = staged.dataset ? staged.dataset->GetLayerByName(name.c_str()) : nullptr;
  if (layer == nullptr) ThrowGdalError(kSource, "Cannot open the copy of '" + name + "' for editing");
  return layer;
}

GDALDataset& ShapefileStaging::NewClassFolder(const std::string& name) {
  StagedClass& staged = Add(name);
  QuietGdalErrors quiet;
  staged.dataset.reset(
      OgrDriver(WorkspaceKind::ShapefileFolder)->Create(staged.folder.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  if (!staged.dataset) ThrowGdalError(kSource, "Cannot make a new shapefile '" + name + "'");
  return *staged.dataset;
}

void ShapefileStaging::Delete(const std::string& name) {
  deleted_[Key(name)] = name;
  classes_.erase(Key(name));
}

bool ShapefileStaging::Deletes(const std::string& name) const { return deleted_.count(Key(name)) != 0; }

void ShapefileStaging::Commit() {
  QuietGdalErrors quiet;
  for (auto& [key, staged] : classes_) {
    const std::string shapefile = (fs::path(workspaceFolder_) / (staged.name + ".shp")).string();
    OGRLayer* layer = staged.dataset->GetLayerByName(staged.name.c_str());
    if (layer == nullptr || layer->SyncToDisk() != OGRERR_NONE)
      ThrowGdalError(kSource, "Cannot write '" + shapefile + "'");
    const std::int64_t features = layer->GetFeatureCount(TRUE);
    staged.dataset.reset();
    if (CPLGetLastErrorType() >= CE_Failure) ThrowGdalError(kSource, "Cannot write '" + shapefile + "'");
    // The driver may lose a failed write at close without saying so; the
    // files must agree with what the session wrote.
    if (const std::string damage = ShapefileDamage(staged.folder, staged.name, features); !damage.empty()) {
      ThrowWriteError(shapefile, damage);
    }
    for (const auto& file : FilesIn(staged.folder)) SyncPathToDisk(file.string());
  }
  for (auto& [key, staged] : classes_) {
    SwapIn(staged.name, staged.folder);
    deleted_.erase(key);
  }
  for (const auto& [key, name] : deleted_) SwapIn(name, "");
  SyncPathToDisk(workspaceFolder_);
  classes_.clear();
  deleted_.clear();
}

void ShapefileStaging::SwapIn(const std::string& name, const std::string& stagedFolder) {
  const fs::path workspace(workspaceFolder_);
  const fs::path backup = fs::path(root_) / ("backup-" + std::to_string(++folders_));
  fs::create_directory(backup);
  const std::vector<std::string> originals = ShapefileCompanions(workspaceFolder_, name);
  // The old files stay reachable under a second name until the swap is done.
  for (const auto& file : originals) {
    const fs::path kept = backup / fs::path(file).filename();
    if (::link(file.c_str(), kept.c_str()) != 0) fs::copy_file(file, kept);
  }
  std::set<std::string> movedIn;
  try {
    if (!stagedFolder.empty()) {
      for (const auto& file : FilesIn(stagedFolder)) {
        fs::rename(file, workspace / file.filename());
        movedIn.insert(file.filename().string());
      }
    }
    for (const auto& file : originals) {
      if (movedIn.count(fs::path(file).filename().string()) == 0) fs::remove(file);
    }
  } catch (const fs::filesystem_error& e) {
    std::error_code ec;
    for (const auto& file : FilesIn(backup.string())) fs::rename(file, workspace / file.filename(), ec);
    for (const auto& moved : movedIn) {
      if (!fs::exists(backup / moved)) fs::remove(workspace / moved, ec);
    }
    ThrowWriteError((workspace / (name + ".shp")).string(), e.code().message());
  }
}

}  // namespace tarnwick::platform::internal
