#include "platform/dataset_files.h"

#include <filesystem>

#include "platform/internal/shapefile_files.h"

namespace tarnwick::platform {

std::string DatasetPathOf(const std::string& workspacePath, const std::string& name) {
  if (Workspace::KindOfPath(workspacePath) != WorkspaceKind::ShapefileFolder) return workspacePath;
  return (std::filesystem::path(workspacePath) / (name + ".shp")).string();
}

std::string DatasetPath(const FeatureClass& featureClass) {
  return DatasetPathOf(featureClass.GetWorkspace()->PathName(), featureClass.Name());
}

std::vector<std::string> DatasetFiles(const FeatureClass& featureClass) {
  const auto workspace = featureClass.GetWorkspace();
  if (workspace->Kind() != WorkspaceKind::ShapefileFolder) return {workspace->PathName()};
  return internal::ShapefileCompanions(workspace->PathName(), featureClass.Name());
}

std::string FindDatasetDamage(const FeatureClass& featureClass) {
  const auto workspace = featureClass.GetWorkspace();
  if (workspace->Kind() != WorkspaceKind::ShapefileFolder) return "";
  return internal::ShapefileDamage(workspace->PathName(), featureClass.Name());
}

}  // namespace tarnwick::platform
