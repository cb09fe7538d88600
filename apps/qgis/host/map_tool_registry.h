#pragma once
// The plugin's map tools by their command's ProgID, so that the host's
// CurrentTool can be read and set by name ("Tarnwick.clsSelPointTool").
#include <QPointer>
#include <map>
#include <string>

#include <qgsmaptool.h>

namespace tarnwick::desktop {

class MapToolRegistry {
 public:
  // The tool stays owned by its creator; an entry of a deleted tool is dropped.
  void Register(const std::string& progId, QgsMapTool* tool) { tools_[progId] = tool; }
  QgsMapTool* Find(const std::string& progId) const {
    const auto found = tools_.find(progId);
    return found == tools_.end() ? nullptr : found->second.data();
  }
  // The ProgID of a registered tool, or "" for any other.
  std::string ProgIdOf(const QgsMapTool* tool) const {
    for (const auto& [progId, registered] : tools_) {
      if (tool && registered == tool) return progId;
    }
    return {};
  }

 private:
  std::map<std::string, QPointer<QgsMapTool>> tools_;
};

}  // namespace tarnwick::desktop
