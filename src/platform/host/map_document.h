#pragma once
// The map document a run works in: its path and title, the focus map with
// its layers, graphics and stored geographic transformations, and the table
// of contents' selection. The command line and the tests keep all of it in
// memory (memory_map_document.h); the desktop maps it onto the QGIS project.
#include <string>
#include <string_view>
#include <vector>

#include "platform/spatial_reference.h"
#include "platform/transformation.h"
#include "platform/workspace.h"

namespace tarnwick::platform::host {

struct TransformationUse {
  int fromGcsCode = 0;
  int toGcsCode = 0;
  GeoTransformation transformation;
};

struct Rgb {
  int red = 0;
  int green = 0;
  int blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

// A point marker drawn on the map, found again by its name.
struct MarkerGraphic {
  std::string name;
  double x = 0;  // in the map's coordinate system
  double y = 0;
  double sizePoints = 12;  // a circle this many points across
  Rgb color;
};

class Map {
 public:
  virtual ~Map() = default;
  // Feature layers in table-of-contents order, each with its selection as it
  // stands now. A layer whose data cannot be read is listed with valid false.
  virtual std::vector<FeatureLayer> Layers() = 0;
  virtual void AddLayer(FeatureLayer layer) = 0;
  // The coordinate system the map is drawn in (unknown when it has none).
  virtual SpatialReference GetSpatialReference() = 0;
  virtual std::vector<std::string> GraphicNames() = 0;
  virtual void AddGraphic(const MarkerGraphic& graphic) = 0;
  // Removes every graphic of this name, ignoring case.
  virtual void DeleteGraphicsByName(std::string_view name) = 0;
  // The map's geographic transformations, consulted before the platform's.
  virtual std::vector<TransformationUse>& Transformations() = 0;
};

class MapDocument {
 public:
  virtual ~MapDocument() = default;
  // Path of the document file; empty for a run without one.
  virtual std::string Path() const = 0;
  virtual std::string Title() const = 0;
  virtual Map& FocusMap() = 0;
  virtual bool IsDirty() const = 0;
  virtual void SetDirty(bool dirty) = 0;
  // The feature layers selected in the table of contents, in its order.
  virtual std::vector<FeatureLayer> SelectedLayers() = 0;
};

}  // namespace tarnwick::platform::host
