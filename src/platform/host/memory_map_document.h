#pragma once
// A map document held in memory: the command line's (which has no document
// file) and the tests'.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/host/map_document.h"

namespace tarnwick::platform::host {

class MemoryMap : public Map {
 public:
  std::vector<FeatureLayer> Layers() override { return layers; }
  void AddLayer(FeatureLayer layer) override { layers.push_back(std::move(layer)); }
  SpatialReference GetSpatialReference() override { return spatialReference; }
  std::vector<std::string> GraphicNames() override;
  void AddGraphic(const MarkerGraphic& graphic) override { graphics.push_back(graphic); }
  void DeleteGraphicsByName(std::string_view name) override;
  std::vector<TransformationUse>& Transformations() override { return transformations; }

  std::vector<FeatureLayer> layers;
  SpatialReference spatialReference;
  std::vector<MarkerGraphic> graphics;
  std::vector<TransformationUse> transformations;
};

class MemoryMapDocument : public MapDocument {
 public:
  explicit MemoryMapDocument(std::string path = "", std::string title = "Untitled") : path_(std::move(path)), title_(std::move(title)) {}
  std::string Path() const override { return path_; }
  std::string Title() const override { return title_; }
  MemoryMap& FocusMap() override { return map_; }
  bool IsDirty() const override { return dirty_; }
  void SetDirty(bool dirty) override { dirty_ = dirty; }
  std::vector<FeatureLayer> SelectedLayers() override { return selectedLayers; }

  std::vector<FeatureLayer> selectedLayers;

 private:
  std::string path_;
  std::string title_;
  MemoryMap map_;
  bool dirty_ = false;
};

}  // namespace tarnwick::platform::host
