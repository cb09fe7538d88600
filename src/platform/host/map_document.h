#pragma once
// The map document: its path and title, the focus map with its layers and
// graphics, and the map's own set of geographic transformations.
#include <memory>
#include <string>
#include <vector>

#include "platform/transformation.h"
#include "platform/workspace.h"

namespace tarnwick::platform::host {

struct TransformationUse {
  int fromGcsCode = 0;
  int toGcsCode = 0;
  GeoTransformation transformation;
};

class Map {
 public:
  std::vector<FeatureLayer>& Layers() { return layers_; }
  void AddLayer(FeatureLayer layer) { layers_.push_back(std::move(layer)); }
  // Named graphic elements on the map.
  std::vector<std::string>& GraphicNames() { return graphicNames_; }
  // The map's geographic transformations, consulted before the platform's.
  std::vector<TransformationUse>& Transformations() { return transformations_; }

 private:
  std::vector<FeatureLayer> layers_;
  std::vector<std::string> graphicNames_;
  std::vector<TransformationUse> transformations_;
};

class MapDocument {
 public:
  MapDocument(std::string path, std::string title) : path_(std::move(path)), title_(std::move(title)) {}
  // Path of the document file; empty for a run without one.
  const std::string& Path() const { return path_; }
  const std::string& Title() const { return title_; }
  Map& FocusMap() { return map_; }
  bool IsDirty() const { return dirty_; }
  void SetDirty(bool dirty) { dirty_ = dirty; }

 private:
  std::string path_;
  std::string title_;
  Map map_;
  bool dirty_ = false;
};

}  // namespace tarnwick::platform::host
