// The Plot Layout dialog's controls: kinds, captions, tool tips, pictures and
// places (twips, in rows from top to bottom as the user goes through them),
// the lists' entries, the controls that share a place, and the key filters
// of the number boxes.
#include <utility>

#include "plot/plot_layout_dialog.h"
#include "support/key_filters.h"

namespace tarnwick {

namespace {

constexpr long kFormWidth = 7740;  // 516 pixels
constexpr long kLeft = 240;        // the left edge of a section's rows
constexpr long kHeadLeft = 120;    // the left edge of a section's heading
constexpr long kRight = 7500;      // the right margin of the rows
constexpr long kFieldLeft = 2745;  // where the boxes of the wide rows start, past their captions
constexpr long kCaptionWidth = kFieldLeft - 60 - kLeft;  // the captions before them
constexpr long kWide = kRight - kFieldLeft;
constexpr long kSpacingWidth = 6000 - 120 - kFieldLeft;  // to the unit label beside
constexpr long kNumberLeft = 3600;  // the buffer and first-number boxes, past their captions
constexpr long kLabelHeight = 225;
constexpr long kHeadHeight = 255;
constexpr long kComboHeight = 315;
constexpr long kTextHeight = 285;

Control Make(std::string name, ControlKind kind, ControlBounds bounds, std::string caption = {}) {
  Control control;
  control.name = std::move(name);
  control.kind = kind;
  control.caption = std::move(caption);
  control.bounds = bounds;
  return control;
}

// A label whose text sits 45 twips below the top of the box beside it.
ControlBounds BesideBox(long left, long boxTop, long width) { return {left, boxTop + 45, width, kLabelHeight}; }

}  // namespace

frmPlotLayout::frmPlotLayout(TransformationDefaults& defaults)
    : DialogModel("..\\frmPlotLayout.frm"), defaults_(defaults) {
  caption = " Plot Layout Parameters:";
  AddControls();
  RegisterHandlers();
}

void frmPlotLayout::AddControls() {
  using K = ControlKind;
  auto label = [&](std::string name, ControlBounds bounds, std::string text) -> Control& {
    return Add(Make(std::move(name), K::Label, bounds, std::move(text)));
  };
  auto add = [&](std::string name, K kind, ControlBounds bounds) -> Control& {
    return Add(Make(std::move(name), kind, bounds));
  };
  auto image = [&](std::string name, ControlBounds bounds, std::string picture) -> Control& {
    Control& control = Add(Make(std::move(name), K::Image, bounds));
    control.picture = std::move(picture);
    return control;
  };

  // The stands.
  label("lblSelPolygon", {kLeft, 315, 3525, kLabelHeight}, "-- Select Stand Polygon Layer --");
  label("lblStandID", {3960, 315, 3525, kLabelHeight}, "-- Select Stand ID Field --");
  label("lblChoosePolygons", {kHeadLeft, 60, 3000, kHeadHeight}, "Choose Polygons");
  add("lbxPolygons", K::ListBox, {kLeft, 540, 3525, 840});
  add("lbxStandFields", K::ListBox, {3960, 540, 3525, 840});
  label("lblAllSel1", {kLeft, 1440, 4000, kLabelHeight}, "Generate Cruise Grid on Which Stands?");
  Add(Make("optAll", K::OptionButton, {360, 1680, 255, 255})).group = "Stands";
  label("lblAll", BesideBox(660, 1650, 3000), "All Stands (n = 1,000,000)");
  Add(Make("optSel", K::OptionButton, {3960, 1680, 255, 255})).group = "Stands";
  label("lblSelected", BesideBox(4260, 1650, 3200), "Selected Stands (n = 1,000,000)");

  // Units and spacing.
  label("lblChooseUnits", BesideBox(kHeadLeft, 2010, kCaptionWidth), "Choose Units");
  add("cbxUnits", K::ComboBox, {kFieldLeft, 2010, 1800, kComboHeight});
  label("lblSpacing", BesideBox(kHeadLeft, 2400, kCaptionWidth), "Spacing and # of Plots");
  add("cbxPlotsOption", K::ComboBox, {kFieldLeft, 2400, kWide, kComboHeight});
  label("lblEnterNumPoints", BesideBox(kLeft, 2790, 3960), "Enter Number of Points per Stand Polygon:");
  add("txtNumPlots", K::TextBox, {4320, 2790, 1455, kTextHeight});
  label("lblSelAttField", BesideBox(kLeft, 2790, 3960), "Select Attribute Field Containing Plot Count::");
  add("cbxPlotsField", K::ComboBox, {4320, 2790, kRight - 4320, kComboHeight});
  label("lblSpacingRatio", BesideBox(kLeft, 3150, kCaptionWidth), "Spacing Ratio (X:Y)");
  add("cbxSpacingRatioOptions", K::ComboBox, {kFieldLeft, 3150, kWide, kComboHeight});
  label("lblRatio", {2325, 3615, 2100, kLabelHeight}, "User-Defined Ratio:  X =");
  add("txtXRatio", K::TextBox, {4470, 3570, 900, kTextHeight});
  label("lblRatio2", {5445, 3615, 555, kLabelHeight}, "to Y =");
  add("txtYRatio", K::TextBox, {6045, 3570, 900, kTextHeight});
  label("lblRatio3", {7020, 3615, kRight - 7020, kLabelHeight}, "units");
  label("lblXSpacing", BesideBox(kLeft, 3570, kCaptionWidth), "X-Spacing (East-West)");
  add("txtXSpacing", K::TextBox, {kFieldLeft, 3570, kSpacingWidth, kTextHeight});
  add("cbxXSpacing", K::ComboBox, {kFieldLeft, 3570, kSpacingWidth, kComboHeight});
  label("lblXUnits", BesideBox(6000, 3570, 1500), "");
  label("lblYSpacing", BesideBox(kLeft, 3960, kCaptionWidth), "Y-Spacing (North-South)");
  add("txtYSpacing", K::TextBox, {kFieldLeft, 3960, kSpacingWidth, kTextHeight});
  add("cbxYSpacing", K::ComboBox, {kFieldLeft, 3960, kSpacingWidth, kComboHeight});
  label("lblYUnits", BesideBox(6000, 3960, 1500), "");

  // Orientation.
  label("lblGridOrientation", {kHeadLeft, 4350, 3000, kHeadHeight}, "Grid Orientation");
  image("optOrientFieldOn", {kLeft, 4650, 255, 255}, "RadioOn");
  image("optOrientFieldOff", {kLeft, 4710, 255, 255}, "RadioOff");
  label("lblOrientField", BesideBox(540, 4620, 2800), "Value from Stand Attribute");
  image("optOrientEnterOn", {3960, 4650, 255, 255}, "RadioOn");
  image("optOrientEnterOff", {3960, 4710, 255, 255}, "RadioOff");
  label("lblOrientConstant", BesideBox(4260, 4620, 2800), "Enter Constant Value");
  label("lblGridValue", BesideBox(kLeft, 5010, kCaptionWidth), "Orientation (CW from North)");
  add("txtGridOrientation", K::TextBox, {kFieldLeft, 5010, kSpacingWidth, kTextHeight});
  add("cbxOrientationField", K::ComboBox, {kFieldLeft, 5070, 3000, kComboHeight});
  label("lblDegrees", BesideBox(6000, 5010, 1500), "Degrees (0 - 360)");

  // Buffer and first number.
  label("lblBuffer", {kHeadLeft, 5400, 3000, kHeadHeight}, "Buffer Polygons");
  label("lblBufferVal", BesideBox(kLeft, 5700, kNumberLeft - 60 - kLeft), "Buffer Distance from Stand Boundary");
  add("txtBuffer", K::TextBox, {kNumberLeft, 5700, 1215, kTextHeight}).toolTip =
      "Value always represents distance in from edge of polygon";
  add("cbxBufferUnits", K::ComboBox, {kNumberLeft + 1320, 5700, 1500, kComboHeight});
  label("lblStartingNumber", {kHeadLeft, 6090, 3000, kHeadHeight}, "Starting Number");
  label("lblGridPointStartingNumber", BesideBox(kLeft, 6390, 3000), "Grid Point Starting Number");
  add("txtGridStartingNumber", K::TextBox, {kNumberLeft, 6390, 1215, kTextHeight});

  // Output.
  label("lblChoosePoints", {kHeadLeft, 6780, 3000, kHeadHeight}, "Output Options");
  label("lblNewOrExistingLayer", BesideBox(kLeft, 7080, kCaptionWidth), "Create Cruise Points in:");
  add("cbxCreatePointsIn", K::ComboBox, {kFieldLeft, 7080, kWide, kComboHeight});
  label("lblOutputName", {kLeft, 7470, 7260, kLabelHeight}, "New Cruise Point Feature Class:");
  add("txtOutput", K::TextBox, {kLeft, 7740, 6735, kTextHeight});
  Control& browse = Add(Make("cmdGetWorkspace", K::CommandButton, {7035, 7725, 465, kComboHeight}, "..."));
  browse.toolTip = "Browse for Output Table...";
  add("cbxExistingPointLayer", K::ComboBox, {kLeft, 7740, 3600, kComboHeight});
  add("cbxExistingIDField", K::ComboBox, {3900, 7740, 3600, kComboHeight});
  add("chkGridStartAtHighest", K::CheckBox, {kLeft, 8070, 255, 255});
  label("lblGridCheck", BesideBox(540, 8040, 6000), "Determine Grid Point Starting Number from Points Layer");

  // Anchor point.
  label("lblAnchorPoint", {kHeadLeft, 8490, 3000, kHeadHeight}, "Anchor Point");
  add("chkApplyAnchor", K::CheckBox, {kLeft, 8790, 255, 255});
  label("lblForceGrid", BesideBox(540, 8760, 4500), "Force Grid to go through a specified point?");
  add("cbxAnchorOption", K::ComboBox, {540, 9150, 6960, kComboHeight});
  label("lblClickOnScreen", BesideBox(540, 9540, 4500), "Use Tarnwick Selection Tool to click on screen:");
  const std::string toolTip = "Turn on Anchor Point tool";
  image("imgButtonUp", {5160, 9510, 480, 480}, "ToggleUp").toolTip = toolTip;
  image("imgButtonDown", {5160, 9510, 480, 480}, "ToggleDown").toolTip = toolTip;
  label("lblAnchorLayerOption", BesideBox(540, 9610, 2400), "Use first selected point in");
  add("cbxAnchorLayer", K::ComboBox, {3000, 9540, 3000, kComboHeight});
  label("lblX", BesideBox(540, 10080, 400), "X = ");
  add("txtAnchorX", K::TextBox, {960, 10080, 2535, kTextHeight});
  label("lblY", BesideBox(3960, 10080, 400), "Y = ");
  add("txtAnchorY", K::TextBox, {4380, 10080, 2535, kTextHeight});

  // Buttons and foot.
  Add(Make("cmdCancel", K::CommandButton, {kLeft, 10650, 1215, 375}, "Cancel"));
  Add(Make("cmdManual", K::CommandButton, {3262, 10650, 1215, 375}, "Manual"));
  Add(Make("cmdOK", K::CommandButton, {6285, 10650, 1215, 375}, "OK")).enabled = false;
  label("lblToolVersion", {kLeft, 11130, 3000, kLabelHeight}, "");
  const ControlBounds& ok = (*this)["cmdOK"].bounds;
  formBounds = {0, 0, kFormWidth, ok.top + ok.height + 45 + 450};
  image("imgBack", formBounds, "Back");
  // Kept on the form, out of view, and never filled.
  Control& userDefined = add("cbxUserDefinedOptions", K::ComboBox, {kFormWidth + 600, 0, 1500, kComboHeight});
  userDefined.visible = false;
}

void frmPlotLayout::FillLists() {
  const std::vector<std::string> units = {"Chains", "Feet", "Meters"};
  (*this)["cbxUnits"].entries = units;
  (*this)["cbxBufferUnits"].entries = units;
  (*this)["cbxPlotsOption"].entries = {"Enter # Plots per Polygon", "Read # Plots from Stand Attribute Field",
                                       "Manually Enter X/Y Point Spacing",
                                       "Read X/Y Point Spacing from Attribute Fields"};
  (*this)["cbxSpacingRatioOptions"].entries = {"1:1 (Square pattern)", "1:2 (Rectangular pattern)",
                                               "1:2.5 (Rectangular pattern)", "User-Defined Ratio"};
  (*this)["cbxCreatePointsIn"].entries = {"Create New Feature Class or Shapefile",
                                          "Add to Existing Feature Class or Shapefile"};
  (*this)["cbxAnchorOption"].entries = {"Select Point by Clicking on Screen",
                                        "Use First Selected Point in Point Feature Class"};
}

void frmPlotLayout::ShareControlPlaces() {
  auto at = [&](std::string_view name) -> ControlBounds& { return (*this)[name].bounds; };
  auto onTopOf = [&](std::string_view name, std::string_view base, bool sameSize) {
    ControlBounds& moved = at(name);
    const ControlBounds& place = at(base);
    moved.left = place.left;
    moved.top = place.top;
    if (sameSize) {
      moved.width = place.width;
      moved.height = place.height;
    }
  };
  onTopOf("cbxPlotsField", "txtNumPlots", false);
  const ControlBounds& enter = at("lblEnterNumPoints");
  ControlBounds& select = at("lblSelAttField");
  select.left = enter.left + enter.width - select.width;
  select.top = enter.top + enter.height - select.height;
  onTopOf("txtXSpacing", "cbxXSpacing", true);
  onTopOf("txtYSpacing", "cbxYSpacing", true);
  onTopOf("cbxExistingPointLayer", "txtOutput", false);
  at("cbxExistingIDField").left = at("cbxExistingPointLayer").left + at("cbxExistingPointLayer").width + 60;
  at("cbxExistingIDField").top = at("cbxExistingPointLayer").top;
  at("chkGridStartAtHighest").top = at("txtOutput").top + at("txtOutput").height + 45;
  ControlBounds& layerOption = at("lblAnchorLayerOption");
  ControlBounds& anchorLayer = at("cbxAnchorLayer");
  layerOption.top = at("lblClickOnScreen").top;
  anchorLayer.left = at("imgBack").left + at("imgBack").width - 60 - anchorLayer.width;
  layerOption.left = anchorLayer.left - 60 - layerOption.width;
  anchorLayer.top = layerOption.top - 60;
  onTopOf("optOrientFieldOff", "optOrientFieldOn", true);
  onTopOf("optOrientEnterOff", "optOrientEnterOn", true);
  onTopOf("cbxOrientationField", "txtGridOrientation", false);
  at("cbxOrientationField").width = at("txtGridOrientation").width;
  // The user-defined ratio row has a fixed place below the ratio choice.
  constexpr std::pair<const char*, long> kRatioRow[] = {
      {"lblRatio", 2325}, {"txtXRatio", 4470}, {"lblRatio2", 5445}, {"txtYRatio", 6045}, {"lblRatio3", 7020}};
  for (const auto& [name, left] : kRatioRow) {
    at(name).left = left;
    at(name).top = (*this)[name].kind == ControlKind::TextBox ? 3570 : 3615;
  }
}

frmPlotLayout::FramePlacement frmPlotLayout::Frame(int screenWidth, int screenHeight) const {
  constexpr int kTwipsPerPixel = 15;
  const ControlBounds& ok = (*this)["cmdOK"].bounds;
  FramePlacement frame;
  frame.width = static_cast<int>(kFormWidth / kTwipsPerPixel);
  frame.height = static_cast<int>((ok.top + ok.height + 45 + 450 + 90) / kTwipsPerPixel);
  frame.left = screenWidth / 2 - frame.width / 2;
  frame.top = screenHeight / 2 - frame.height / 2;
  return frame;
}

int frmPlotLayout::KeyPress(std::string_view name, int key) {
  using Filter = void (*)(int&, TextBoxState&);
  Filter filter = nullptr;
  if (name == "txtAnchorX" || name == "txtAnchorY" || name == "txtGridOrientation") {
    filter = CheckNumericReal;
  } else if (name == "txtBuffer" || name == "txtXRatio" || name == "txtYRatio" || name == "txtXSpacing" ||
             name == "txtYSpacing") {
    filter = CheckNumericRealPositive;
  } else if (name == "txtGridStartingNumber") {
    filter = CheckNumericInteger;
  } else if (name == "txtNumPlots") {
    filter = CheckNumericIntegerPositive;
  }
  if (!filter) return key;
  Control& box = (*this)[name];
  TextBoxState state{box.text, box.selStart};
  filter(key, state);
  box.selStart = state.caret;
  SetText(name, state.text);
  return key;
}

}  // namespace tarnwick
