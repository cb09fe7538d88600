#include "host/marker_registry.h"

#include <algorithm>

#include <qgsmapcanvas.h>
#include <qgsvertexmarker.h>

#include "support/text_operations.h"

namespace tarnwick::desktop {

MarkerRegistry::MarkerRegistry(QgsMapCanvas* canvas) : canvas_(canvas) {
  // The canvas's scene deletes its items with it: from then on they are not ours to delete.
  if (canvas_) {
    canvasGone_ = QObject::connect(canvas_, &QObject::destroyed, [this] {
      for (auto& marker : markers_) static_cast<void>(marker.second.release());
      markers_.clear();
    });
  }
}

MarkerRegistry::~MarkerRegistry() { QObject::disconnect(canvasGone_); }

std::vector<std::string> MarkerRegistry::Names() const {
  std::vector<std::string> names;
  for (const auto& marker : markers_) names.push_back(marker.first);
  return names;
}

void MarkerRegistry::Add(const platform::host::MarkerGraphic& graphic) {
  if (!canvas_) return;
  auto marker = std::make_unique<QgsVertexMarker>(canvas_);
  marker->setIconType(QgsVertexMarker::ICON_CIRCLE);
  // The graphic's size is in points; the canvas draws in pixels.
  marker->setIconSize(std::max(1, qRound(graphic.sizePoints * canvas_->logicalDpiX() / 72.0)));
  marker->setColor(QColor(graphic.color.red, graphic.color.green, graphic.color.blue));
  marker->setPenWidth(2);
  marker->setCenter(QgsPointXY(graphic.x, graphic.y));
  markers_.emplace_back(graphic.name, std::move(marker));
}

void MarkerRegistry::DeleteByName(std::string_view name) {
  std::erase_if(markers_, [name](const auto& marker) { return EqualsIgnoreCase(marker.first, name); });
}

std::vector<const QgsVertexMarker*> MarkerRegistry::Markers() const {
  std::vector<const QgsVertexMarker*> items;
  for (const auto& marker : markers_) items.push_back(marker.second.get());
  return items;
}

}  // namespace tarnwick::desktop
