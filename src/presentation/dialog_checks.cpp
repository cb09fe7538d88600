#include "presentation/dialog_checks.h"

#include "support/text_operations.h"

namespace tarnwick {

std::string CheckMessageText(const CheckMessage& message) {
  return message.title.empty() ? message.text : message.title + "\n" + message.text;
}

bool SameLayer(const platform::FeatureLayer& a, const platform::FeatureLayer& b) {
  if (a.name != b.name || !a.featureClass || !b.featureClass) return false;
  return a.featureClass == b.featureClass || EqualsIgnoreCase(a.featureClass->FullPath(), b.featureClass->FullPath());
}

std::optional<platform::FeatureLayer> CurrentMapLayer(platform::host::Map& map, const platform::FeatureLayer& layer) {
  for (auto& current : map.Layers()) {
    if (current.valid && SameLayer(current, layer)) return current;
  }
  return std::nullopt;
}

Checked<platform::FeatureLayer> CheckLayerStillInMap(platform::host::Map& map, const platform::FeatureLayer& layer,
                                                     const std::string& control) {
  if (auto current = CurrentMapLayer(map, layer)) return *std::move(current);
  return CheckMessage{"The layer '" + layer.name + "' is no longer in the map!\n\nPlease select another layer.",
                      "Missing Layer:", platform::host::MessageIcon::Exclamation, control};
}

}  // namespace tarnwick
