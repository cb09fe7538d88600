#pragma once
// The parameter set of one plot run, in the order the dialog (or the command
// line) fills it: stands, units, spacing, orientation, buffer, first plot
// number, output and anchor.
#include <optional>
#include <string>
#include <variant>

#include "platform/field.h"
#include "platform/spatial_reference.h"
#include "platform/transformation.h"
#include "platform/workspace.h"

namespace tarnwick {

// Element 0: the stand polygons.
struct StandsParameters {
  platform::FeatureLayer layer;
  int standIdFieldIndex = -1;  // index in the stand class's field list
  platform::Field standIdField;
  bool doAllStands = true;  // false: the layer's selection (all when none is selected)
};

// The X:Y proportion of the grid cell for the count-based options.
enum class SpacingRatioOption : int { Square = 0, OneToTwo = 1, OneToTwoPointFive = 2, UserDefined = 3 };

struct SpacingRatio {
  SpacingRatioOption option = SpacingRatioOption::Square;
  double x = 1;
  double y = 1;
  double xOverY = 1;  // carried for completeness, not read by the run
  static SpacingRatio Of(SpacingRatioOption option, double userX = 1, double userY = 1);
};

// Element 2, one alternative per spacing option. The option number is the
// variant's index: 0 plots per polygon, 1 plots from a field, 2 manual X/Y
// spacing, 3 X/Y spacing from fields.
struct PlotsPerPolygon {
  long plotsPerStand = 0;
  SpacingRatio ratio;
};
struct PlotsFromField {
  int fieldIndex = -1;
  platform::Field field;
  SpacingRatio ratio;
};
struct ManualSpacing {
  double x = 0;  // in plot units
  double y = 0;
};
struct SpacingFromFields {
  int xFieldIndex = -1;
  platform::Field xField;
  int yFieldIndex = -1;
  platform::Field yField;
};
using SpacingOption = std::variant<PlotsPerPolygon, PlotsFromField, ManualSpacing, SpacingFromFields>;

inline int SpacingOptionNumber(const SpacingOption& s) { return static_cast<int>(s.index()); }

// Element 3.
struct ConstantOrientation {
  double degrees = 0;  // compass degrees
};
struct OrientationFromField {
  int fieldIndex = -1;
  platform::Field field;
};
using OrientationOption = std::variant<ConstantOrientation, OrientationFromField>;

// Element 4: the internal buffer. Distance 0 means none; the sign is ignored.
struct BufferParameters {
  double distance = 0;
  std::string units;  // "Feet", "Meters", "Chains" or empty
};

// Element 6: where the plots go.
struct NewPlotClass {
  std::string fullPath;       // as typed: "dir/name.shp", "x.gdb/NAME", "x.gpkg/NAME"
  std::string workspacePath;  // the folder, .gdb or .gpkg
  std::string datasetName;
};
struct ExistingPlotLayer {
  platform::FeatureLayer layer;
  platform::Field plotIdField;
  std::string plotIdFieldName;
  int plotIdFieldIndex = -1;
  bool startAboveHighest = false;
  std::optional<platform::GeoTransformation> transformation;  // stand to point
  platform::TransformDirection direction = platform::TransformDirection::Forward;
};
using OutputOption = std::variant<NewPlotClass, ExistingPlotLayer>;

// Element 7: the point the lattice is forced through, if any.
struct NoAnchor {};
struct ClickedAnchor {
  double x = 0;
  double y = 0;
  platform::SpatialReference spatialReference;
  std::optional<platform::GeoTransformation> transformation;  // anchor to point
  platform::TransformDirection direction = platform::TransformDirection::Forward;
};
struct LayerAnchor {
  platform::FeatureLayer layer;
  std::string caption;  // the dialog's caption of the layer option
  double x = 0;
  double y = 0;
  platform::SpatialReference spatialReference;
  std::optional<platform::GeoTransformation> transformation;
  platform::TransformDirection direction = platform::TransformDirection::Forward;
};
using AnchorOption = std::variant<NoAnchor, ClickedAnchor, LayerAnchor>;

struct PlotLayoutParameters {
  StandsParameters stands;                                      // 0
  std::string units;                                            // 1
  SpacingOption spacing = PlotsPerPolygon{};                    // 2
  OrientationOption orientation = ConstantOrientation{};        // 3
  BufferParameters buffer;                                      // 4
  long firstPlotNumber = 1;                                     // 5 (0 with start above highest)
  OutputOption output = NewPlotClass{};                         // 6
  AnchorOption anchor = NoAnchor{};                             // 7
};

}  // namespace tarnwick
