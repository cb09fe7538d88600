#include "testkit/dataset_snapshot.h"

#include "platform/workspace.h"

namespace tarnwick::testkit {

std::string Snapshot(const std::string& layerSource) {
  auto featureClass = platform::OpenFeatureLayer(layerSource).featureClass;
  std::string text;
  for (const auto& field : featureClass->Fields())
    text += field.name + ":" + std::to_string(static_cast<int>(field.type)) + " ";
  text += "\n";
  auto cursor = featureClass->Search();
  while (auto feature = cursor->NextFeature()) {
    text += std::to_string(feature->oid);
    for (std::size_t i = 2; i < feature->values.size(); ++i) {
      text += "|" + (platform::IsNull(feature->values[i]) ? std::string("<Null>")
                                                          : platform::ValueToText(feature->values[i]));
    }
    text += "|" + (feature->shape.IsEmpty() ? std::string("EMPTY") : feature->shape.ToWkt()) + "\n";
  }
  return text;
}

std::set<std::string> FolderEntries(const std::filesystem::path& folder) {
  std::set<std::string> entries;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const bool harness = name == "stdout.txt" || name == "stderr.txt" || name.starts_with("Tarnwick_Error_Log_") ||
                         name.ends_with(".rtf");
    if (!harness) entries.insert(std::filesystem::relative(entry.path(), folder).string());
  }
  return entries;
}

}  // namespace tarnwick::testkit
