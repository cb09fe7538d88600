#pragma once
// The checks a plot layout request passes before it runs, each in one place
// for the Plot Layout dialog and the command line. Each check takes what the
// user gave (texts as typed, whether a list entry is chosen) and returns
// nothing when it passes, or the failure: the message box's head, body,
// title and icon, and the controls to mark.
//
// The dialog calls them in its order and shows the first failure; the
// command line prints the head and the body and exits 2.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/application.h"
#include "platform/spatial_reference.h"
#include "platform/workspace.h"
#include "support/path_operations.h"

namespace tarnwick {

struct PlotCheckFailure {
  int number = 0;  // the check's place in the dialog's order, 1 to 35
  std::string head;
  std::string body;
  std::string title;  // empty: the host's default title
  platform::host::MessageIcon icon = platform::host::MessageIcon::None;
  std::vector<std::string> marked;  // controls turned yellow
  std::string focus;                // the control that takes the focus; empty for none
  // The box's text: head, an empty line, body.
  std::string Text() const { return head + "\n\n" + body; }
};
using PlotCheck = std::optional<PlotCheckFailure>;

// The kinds of field offered for each role, as masks of ReturnFieldsByType:
// the stand ID may be text or a number; the plot count, spacings, orientation
// and an existing layer's plot ID must be numbers. The run writes text plot
// IDs as well, so a plot ID field named rather than picked from the list may
// also be text.
inline constexpr long kStandIdFieldKinds = 1 | 2;
inline constexpr long kNumericFieldKinds = 2;
inline constexpr long kNamedPlotIdFieldKinds = 1 | 2;

// The fields a list offers for a role: those of the kinds, less the area and
// length a geodatabase computes itself.
std::vector<platform::Field> FieldsOffered(const std::vector<platform::Field>& fields, long kinds);
// The field of that name (matched as FindField matches) among those offered;
// nullopt when there is none, which counts as no field chosen.
std::optional<platform::Field> FieldOffered(const platform::FeatureClass& featureClass, std::string_view name,
                                            long kinds);

// The value of a text that passes the numeric test: a finite number in
// plain or exponent notation, with "." or "," as the decimal mark; nullopt
// for any other text.
std::optional<double> NumberOfText(std::string_view text);

// The stand field, the units and the spacing, the orientation, the buffer
// and the first plot number (checks 1 to 18). Option and ratio positions are
// those of the dialog's lists, -1 for none; a field is "chosen" when an
// entry other than the list's "<-- Select Field -->" is.
struct GridEntries {
  bool standFieldChosen = false;
  std::string unitsText;
  int plotsOption = -1;  // 0 count, 1 count field, 2 spacing, 3 spacing fields
  int ratioOption = -1;  // 0 1:1, 1 1:2, 2 1:2.5, 3 user-defined
  std::string xRatioText;
  std::string yRatioText;
  std::string numPlotsText;
  bool plotsFieldChosen = false;
  std::string xSpacingText;
  std::string ySpacingText;
  bool xSpacingFieldChosen = false;
  bool ySpacingFieldChosen = false;
  bool orientationFromField = false;
  bool orientationFieldChosen = false;
  std::string orientationText;
  std::string bufferText;
  std::string bufferUnitsText;
  std::string startNumberText;
  bool startAboveHighest = false;
};
PlotCheck CheckGridEntries(const GridEntries& entries);

// A new output class (checks 19 to 21); data is the path taken apart. The
// command line reads the path more narrowly than the dialog: a GeoPackage or
// file geodatabase that does not exist yet, in a folder that does, passes
// (the run makes the store), and a shapefile exists only when the folder
// named holds it (the dialog also refuses one in a folder below).
enum class OutputPathReading { Dialog, CommandLine };
PlotCheck CheckNewOutput(std::string_view outputText, FClassPathData& data,
                         OutputPathReading reading = OutputPathReading::Dialog);

// Adding to an existing point layer (checks 22 and 23).
PlotCheck CheckExistingOutputChoice(bool layerChosen, bool plotIdFieldChosen, std::string_view layerText);

// The stand layer's and the existing point layer's spatial references when
// plots are added to an existing layer (checks 24 and 25).
PlotCheck CheckStandLayerReference(const platform::FeatureLayer& standLayer);
PlotCheck CheckPointLayerReference(const platform::FeatureLayer& pointLayer);

// The anchor's entries (checks 26 to 32). option 1 takes the first (selected)
// point of a layer, option 0 a point clicked on the map; reference is the
// layer class's or the map's.
struct AnchorEntries {
  int option = 0;
  bool layerChosen = false;
  std::string layerText;
  std::string layerOptionCaption;  // "Use first selected point in" or "Use first point in"
  std::string xText;
  std::string yText;
  platform::SpatialReference reference;
};
PlotCheck CheckAnchorEntries(const AnchorEntries& entries);

// The geographic systems behind the anchor and the output (checks 33 to 35).
PlotCheck CheckAnchorReference(const platform::SpatialReference& anchorReference);
PlotCheck CheckNewOutputReference(std::string_view standLayerName, const platform::SpatialReference& standReference);
PlotCheck CheckExistingOutputReference(std::string_view layerName, const platform::SpatialReference& reference);

// A layer the dialog listed that has left the map (or can no longer be read)
// by the time OK is pressed.
PlotCheckFailure LayerGoneFailure(std::string_view layerName, std::string_view control);

// The anchor point a point layer gives: its first selected point, or its
// first point when nothing is selected.
struct AnchorPointReading {
  std::string caption;  // "Use first selected point in" or "Use first point in"
  std::optional<platform::XY> point;  // nullopt for an empty point or an empty layer
  // What the anchor boxes show: the coordinates, or "<-- Empty Point -->".
  std::string xText;
  std::string yText;
};
AnchorPointReading ReadAnchorPoint(const platform::FeatureLayer& layer);

// A coordinate as the anchor boxes show it: 8 decimals in a geographic
// system, 3 in any other.
std::string AnchorCoordinateText(double value, bool geographic);

}  // namespace tarnwick
