// Feature layers named by path ("PATH" or "PATH|layername=NAME") and the
// split of a class path into its workspace and class name.
#include <algorithm>
#include <cctype>
#include <filesystem>

#include "platform/errors.h"
#include "platform/internal/shapefile_files.h"
#include "platform/workspace.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "OpenFeatureLayer";

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

bool IsStoreSegment(const std::string& segment) {
  const std::string lower = Lower(segment);
  auto endsWith = [&lower](const std::string& tail) {
    return lower.size() > tail.size() && lower.compare(lower.size() - tail.size(), tail.size(), tail) == 0;
  };
  return endsWith(".gdb") || endsWith(".gpkg") || endsWith(".mdb");
}

std::string Normalized(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

ClassPath SplitClassPath(const std::string& rawPath) {
  const std::string path = Normalized(rawPath);
  const auto slash = path.find_last_of('/');
  const std::string parent = slash == std::string::npos ? "" : path.substr(0, slash);
  const std::string leaf = slash == std::string::npos ? path : path.substr(slash + 1);
  const std::string lowerLeaf = Lower(leaf);
  if (lowerLeaf.size() > 4 && lowerLeaf.compare(lowerLeaf.size() - 4, 4, ".shp") == 0) {
    return {parent.empty() ? "." : parent, leaf.substr(0, leaf.size() - 4)};
  }
  // "x.gdb/Plots" or "x.gpkg/Plots"; also "x.gdb/Dataset/Plots" (a feature dataset).
  std::string workspace = parent;
  while (!workspace.empty()) {
    const auto cut = workspace.find_last_of('/');
    const std::string segment = cut == std::string::npos ? workspace : workspace.substr(cut + 1);
    if (IsStoreSegment(segment)) return {workspace, leaf};
    if (cut == std::string::npos) break;
    workspace = workspace.substr(0, cut);
  }
  return {parent.empty() ? "." : parent, leaf};
}

FeatureLayer OpenFeatureLayer(const std::string& layerSource) {
  std::string path = layerSource;
  std::string layerName;
  if (const auto bar = layerSource.find('|'); bar != std::string::npos) {
    path = layerSource.substr(0, bar);
    const std::string option = layerSource.substr(bar + 1);
    const std::string key = "layername=";
    if (Lower(option.substr(0, key.size())) != key) {
      throw PlatformError(kErrInvalidProcedureCall, kSource,
                          "Cannot open layer '" + layerSource + "': expected PATH|layername=NAME");
    }
    layerName = option.substr(key.size());
  }
  path = Normalized(path);

  std::shared_ptr<Workspace> workspace;
  std::error_code ec;
  const bool isStore = IsStoreSegment(path) || std::filesystem::is_directory(path, ec);
  if (!layerName.empty() || isStore) {
    workspace = Workspace::Open(path);
    if (layerName.empty()) {
      const auto names = workspace->FeatureClassNames();
      if (names.size() != 1) {
        throw PlatformError(kErrPlatform, kSource,
                            "Cannot open layer '" + layerSource + "': the workspace holds " + std::to_string(names.size()) +
                                " feature classes; name one with |layername=NAME");
      }
      layerName = names.front();
    }
  } else {
    const ClassPath split = SplitClassPath(path);
    workspace = Workspace::Open(split.workspace);
    layerName = split.name;
  }
  if (!workspace->NameExists(layerName)) {
    // A shapefile that is there but that the driver passed over: say why.
    if (workspace->Kind() == WorkspaceKind::ShapefileFolder) {
      const std::string damage = internal::ShapefileDamage(workspace->PathName(), layerName);
      if (!damage.empty() && std::filesystem::exists(path, ec)) {
        throw PlatformError(kErrDamagedData, kSource, "Cannot open layer '" + layerSource + "': " + damage);
      }
    }
    throw PlatformError(kErrPlatform, kSource,
                        "Cannot open layer '" + layerSource + "': no feature class named '" + layerName + "' in '" +
                            workspace->PathName() + "'");
  }
  FeatureLayer layer;
  layer.featureClass = workspace->OpenFeatureClass(layerName);
  layer.name = layer.featureClass->Name();
  return layer;
}

}  // namespace tarnwick::platform
