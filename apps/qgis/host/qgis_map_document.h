#pragma once
// The map document on QGIS: the project is the document (path, title, dirty
// flag) and the canvas shows its one map. The map's layers are the project's
// layer tree in its order, limited to layers GDAL reads from files; its
// graphics are canvas markers; its stored transformations live in the
// project's properties, so they are saved with it.
#include <QPointer>

#include "host/marker_registry.h"
#include "platform/host/map_document.h"

class QgsLayerTreeView;
class QgsMapCanvas;
class QgsProject;

namespace tarnwick::desktop {

class QgisMap : public platform::host::Map {
 public:
  QgisMap(QgsProject& project, QgsMapCanvas* canvas);

  std::vector<platform::FeatureLayer> Layers() override;
  void AddLayer(platform::FeatureLayer layer) override;
  platform::SpatialReference GetSpatialReference() override;
  std::vector<std::string> GraphicNames() override { return markers_.Names(); }
  void AddGraphic(const platform::host::MarkerGraphic& graphic) override { markers_.Add(graphic); }
  void DeleteGraphicsByName(std::string_view name) override { markers_.DeleteByName(name); }
  std::vector<platform::host::TransformationUse>& Transformations() override { return transformations_; }

  // The stored transformations to and from the project's properties (when
  // the project is written and read).
  void WriteTransformations();
  void ReadTransformations();
  const MarkerRegistry& Markers() const { return markers_; }

 private:
  QgsProject& project_;
  QPointer<QgsMapCanvas> canvas_;
  MarkerRegistry markers_;
  std::vector<platform::host::TransformationUse> transformations_;
};

class QgisMapDocument : public platform::host::MapDocument {
 public:
  QgisMapDocument(QgsProject& project, QgsMapCanvas* canvas, QgsLayerTreeView* layerTreeView);

  std::string Path() const override;
  // The project file's name without its extension; for a project not yet
  // saved its title, else "Untitled".
  std::string Title() const override;
  QgisMap& FocusMap() override { return map_; }
  bool IsDirty() const override;
  void SetDirty(bool dirty) override;
  std::vector<platform::FeatureLayer> SelectedLayers() override;

  QgsProject& Project() const { return project_; }

 private:
  QgsProject& project_;
  QPointer<QgsLayerTreeView> layerTreeView_;
  QgisMap map_;
};

}  // namespace tarnwick::desktop
