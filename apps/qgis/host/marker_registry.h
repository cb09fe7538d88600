#pragma once
// The map's marker graphics as canvas items, kept by name so that a tool can
// find and delete them again.
#include <QMetaObject>
#include <QPointer>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host/map_document.h"

class QgsMapCanvas;
class QgsVertexMarker;

namespace tarnwick::desktop {

class MarkerRegistry {
 public:
  explicit MarkerRegistry(QgsMapCanvas* canvas);
  ~MarkerRegistry();
  MarkerRegistry(const MarkerRegistry&) = delete;
  MarkerRegistry& operator=(const MarkerRegistry&) = delete;

  std::vector<std::string> Names() const;
  void Add(const platform::host::MarkerGraphic& graphic);
  // Removes every marker of this name, ignoring case.
  void DeleteByName(std::string_view name);
  // The canvas items, for tests and screenshots.
  std::vector<const QgsVertexMarker*> Markers() const;

 private:
  QPointer<QgsMapCanvas> canvas_;
  QMetaObject::Connection canvasGone_;
  std::vector<std::pair<std::string, std::unique_ptr<QgsVertexMarker>>> markers_;
};

}  // namespace tarnwick::desktop
