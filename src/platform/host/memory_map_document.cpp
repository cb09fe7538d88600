#include "platform/host/memory_map_document.h"

#include <strings.h>

namespace tarnwick::platform::host {

std::vector<std::string> MemoryMap::GraphicNames() {
  std::vector<std::string> names;
  for (const auto& graphic : graphics) names.push_back(graphic.name);
  return names;
}

void MemoryMap::DeleteGraphicsByName(std::string_view name) {
  const std::string wanted(name);
  std::erase_if(graphics, [&](const MarkerGraphic& g) { return strcasecmp(g.name.c_str(), wanted.c_str()) == 0; });
}

}  // namespace tarnwick::platform::host
