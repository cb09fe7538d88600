// The Plot Layout dialog's handlers for spacing, orientation, output and
// its buttons, and the rule that enables OK.
#include <cmath>
#include <string>

#include "platform/host/application.h"
#include "plot/plot_layout_checks.h"
#include "plot/plot_layout_dialog.h"
#include "plot/plot_texts.h"
#include "shell/extension.h"
#include "support/field_names.h"
#include "support/path_operations.h"
#include "support/text_operations.h"
#include "support/unique_names.h"

namespace tarnwick {

namespace {

constexpr const char* kRatioRow[] = {"txtXRatio", "txtYRatio", "lblRatio", "lblRatio2", "lblRatio3"};

bool OneOf(std::string_view text, std::initializer_list<std::string_view> values) {
  for (const auto value : values) {
    if (text == value) return true;
  }
  return false;
}

// The output kind of a location's category in the save dialog; 0 for one
// the tool cannot write to.
long KindOfCategory(std::string_view category) {
  if (OneOf(category, {"Shapefile", "Folder", "dBASE Table"})) return 1;
  if (OneOf(category, {"File Geodatabase Feature Class", "File Geodatabase Raster Catalog", "File Geodatabase",
                       "File Geodatabase Feature Dataset", "File Geodatabase Table"})) {
    return 2;
  }
  // A GeoPackage is this platform's single-file database.
  if (OneOf(category, {"Personal Geodatabase Feature Class", "Personal Geodatabase Raster Catalog",
                       "Personal Geodatabase", "Personal Geodatabase Feature Dataset", "Personal Geodatabase Table",
                       "GeoPackage", "GeoPackage Feature Class"})) {
    return 4;
  }
  return 0;
}

}  // namespace

void frmPlotLayout::RegisterHandlers() {
  using E = ControlEvent;
  for (const char* name : {"lbxStandFields", "optAll", "optSel", "txtNumPlots", "cbxPlotsField", "cbxXSpacing",
                           "cbxYSpacing", "txtXRatio", "txtYRatio", "cbxOrientationField", "txtGridOrientation",
                           "txtBuffer", "cbxBufferUnits", "txtGridStartingNumber", "txtOutput",
                           "cbxExistingIDField"}) {
    const std::string control = name;
    On(control, (*this)[control].kind == ControlKind::TextBox ? E::Change : E::Click, [this, control] { Touch(control); });
  }
  On("lbxPolygons", E::Click, [this] { lbxPolygons_Click(); });
  On("lblAll", E::Click, [this] {
    SetValue("optAll", 1);
    CheckEnable();
  });
  On("lblSelected", E::Click, [this] {
    SetValue("optSel", 1);
    CheckEnable();
  });
  On("cbxUnits", E::Click, [this] { cbxUnits_Click(); });
  On("cbxPlotsOption", E::Click, [this] { cbxPlotsOption_Click(); });
  On("cbxSpacingRatioOptions", E::Click, [this] { cbxSpacingRatioOptions_Click(); });
  On("txtXSpacing", E::Change, [this] { txtXSpacing_Change(); });
  On("txtYSpacing", E::Change, [this] { txtYSpacing_Change(); });
  for (const char* name : {"optOrientFieldOn", "optOrientFieldOff", "lblOrientField", "optOrientEnterOn",
                           "optOrientEnterOff", "lblOrientConstant"}) {
    const bool fromField = std::string_view(name).find("Field") != std::string_view::npos;
    On(name, E::Click, [this, fromField] {
      orientationFromField_ = fromField;
      AdjustOrientiationVisibilities();
      CheckEnable();
    });
  }
  On("cbxCreatePointsIn", E::Click, [this] { cbxCreatePointsIn_Click(); });
  On("chkGridStartAtHighest", E::Click, [this] { chkGridStartAtHighest_Click(); });
  On("lblGridCheck", E::Click, [this] { chkGridStartAtHighest_Click(); });
  On("cbxExistingPointLayer", E::Click, [this] { cbxExistingPointLayer_Click(); });
  On("cmdGetWorkspace", E::Click, [this] { cmdGetWorkspace_Click(); });
  On("chkApplyAnchor", E::Click, [this] {
    (*this)["chkApplyAnchor"].backColor = kWhite;
    ImplementAnchorChoice();
  });
  On("lblForceGrid", E::Click, [this] { ImplementAnchorChoice(); });
  On("cbxAnchorOption", E::Click, [this] { cbxAnchorOption_Click(); });
  On("imgButtonUp", E::Click, [this] { imgButtonUp_Click(); });
  On("imgButtonDown", E::Click, [this] { imgButtonDown_Click(); });
  On("cbxAnchorLayer", E::Click, [this] { cbxAnchorLayer_Click(); });
  On("txtAnchorX", E::Change, [this] { txtAnchorX_Change(); });
  On("txtAnchorY", E::Change, [this] { txtAnchorY_Change(); });
  On("cmdManual", E::Click, [this] { cmdManual_Click(); });
  On("cmdCancel", E::Click, [this] { cmdCancel_Click(); });
  On("cmdOK", E::Click, [this] { cmdOK_Click(); });
  On("cbxUserDefinedOptions", E::Click, [this] { cbxUserDefinedOptions_Click(); });
}

void frmPlotLayout::Touch(std::string_view control) {
  (*this)[control].backColor = kWhite;
  CheckEnable();
}

void frmPlotLayout::SetVisible(std::initializer_list<std::string_view> controls, bool visible) {
  for (const auto name : controls) (*this)[name].visible = visible;
}

void frmPlotLayout::SetEnabled(std::initializer_list<std::string_view> controls, bool enabled) {
  for (const auto name : controls) (*this)[name].enabled = enabled;
}

void frmPlotLayout::cbxPlotsOption_Click() {
  (*this)["cbxPlotsOption"].backColor = kWhite;
  const int option = (*this)["cbxPlotsOption"].listIndex;
  if (option >= 0 && option <= 3) {
    const bool byCount = option <= 1;
    SetVisible({"lblEnterNumPoints", "txtNumPlots"}, option == 0);
    SetVisible({"lblSelAttField", "cbxPlotsField"}, option == 1);
    // The ratio choice serves every option but spacing read from fields.
    SetVisible({"lblSpacingRatio", "cbxSpacingRatioOptions"}, option != 3);
    Control& ratio = (*this)["cbxSpacingRatioOptions"];
    ratio.enabled = option != 3;
    ratio.backColor = option != 3 ? kWhite : kSwitchedOffGrey;
    for (const char* name : kRatioRow) (*this)[name].visible = byCount && ratio.listIndex == 3;
    SetVisible({"lblXSpacing", "lblYSpacing", "lblXUnits", "lblYUnits"}, !byCount);
    SetVisible({"txtXSpacing", "txtYSpacing"}, option == 2);
    SetVisible({"cbxXSpacing", "cbxYSpacing"}, option == 3);
    if (!byCount) {
      SetEnabled({"txtXSpacing", "txtYSpacing"}, option == 2);
      SetEnabled({"cbxXSpacing", "cbxYSpacing"}, option == 3);
    }
  }
  CheckEnable();
}

void frmPlotLayout::cbxSpacingRatioOptions_Click() {
  (*this)["cbxSpacingRatioOptions"].backColor = kWhite;
  const int ratio = (*this)["cbxSpacingRatioOptions"].listIndex;
  if (ratio >= 0 && ratio <= 2) {
    for (const char* name : kRatioRow) (*this)[name].visible = false;
    // Let the Y spacing follow the new ratio.
    if (!NumberOfText((*this)["txtXSpacing"].text)) SetText("txtXSpacing", "1");
    txtXSpacing_Change();
  } else if (ratio == 3) {
    const int option = (*this)["cbxPlotsOption"].listIndex;
    for (const char* name : kRatioRow) (*this)[name].visible = option == 0 || option == 1;
  }
  CheckEnable();
}

// The two spacing boxes follow each other by the fixed ratios (Y = 2 X for
// 1:2); each guard stops the other box's handler from writing back.
void frmPlotLayout::txtXSpacing_Change() { FollowSpacing("txtXSpacing", "txtYSpacing", xSpacingChanging_, ySpacingChanging_); }

void frmPlotLayout::txtYSpacing_Change() { FollowSpacing("txtYSpacing", "txtXSpacing", ySpacingChanging_, xSpacingChanging_); }

void frmPlotLayout::FollowSpacing(std::string_view changed, std::string_view follower, bool& changing,
                                  bool otherChanging) {
  (*this)[changed].backColor = kWhite;
  if (otherChanging) return;
  changing = true;
  const int ratio = (*this)["cbxSpacingRatioOptions"].listIndex;
  if (const auto value = NumberOfText((*this)[changed].text); value && ratio >= 0 && ratio <= 2) {
    const double factor = ratio == 0 ? 1 : ratio == 1 ? 2 : 2.5;
    SetText(follower, NumberText(changed == "txtXSpacing" ? *value * factor : *value / factor));
  }
  changing = false;
  CheckEnable();
}

void frmPlotLayout::cbxUnits_Click() {
  (*this)["cbxUnits"].backColor = kWhite;
  const std::string units = (*this)["cbxUnits"].SelectedEntry();
  (*this)["lblXUnits"].caption = units;
  (*this)["lblYUnits"].caption = units;
  CheckEnable();
}

void frmPlotLayout::AdjustOrientiationVisibilities() {
  SetVisible({"cbxOrientationField", "optOrientFieldOn", "optOrientEnterOff"}, orientationFromField_);
  SetVisible({"txtGridOrientation", "optOrientFieldOff", "optOrientEnterOn"}, !orientationFromField_);
}

void frmPlotLayout::cbxCreatePointsIn_Click() {
  (*this)["cbxCreatePointsIn"].backColor = kWhite;
  const int position = (*this)["cbxCreatePointsIn"].listIndex;
  if (position == 0 || position == 1) {
    const bool existing = position == 1;
    (*this)["lblOutputName"].caption = existing ? "Select Existing Point Feature Class and Plot ID Field:"
                                                : "New Cruise Point Feature Class:";
    SetVisible({"txtOutput", "cmdGetWorkspace"}, !existing);
    SetVisible({"cbxExistingPointLayer", "cbxExistingIDField", "chkGridStartAtHighest", "lblGridCheck"}, existing);
    (*this)["chkGridStartAtHighest"].enabled = existing;
  }
  CheckEnable();
}

void frmPlotLayout::chkGridStartAtHighest_Click() {
  const bool checked = (*this)["chkGridStartAtHighest"].value == 1;
  Control& start = (*this)["txtGridStartingNumber"];
  start.enabled = !checked;
  start.backColor = checked ? kDisabledNumberGrey : kWhite;
  CheckEnable();
}

// Never filled, so never chosen; a choice would switch the spacing controls
// between usable and grey.
void frmPlotLayout::cbxUserDefinedOptions_Click() {
  const bool usable = (*this)["cbxUserDefinedOptions"].listIndex == 0;
  for (const char* name : {"cbxSpacingRatioOptions", "cbxXSpacing", "cbxYSpacing", "txtXSpacing", "txtYSpacing"}) {
    (*this)[name].enabled = usable;
    (*this)[name].backColor = usable ? kWhite : kSwitchedOffGrey;
  }
  CheckEnable();
}

void frmPlotLayout::cmdGetWorkspace_Click() {
  platform::host::Application& app = *application_;
  const std::string text = (*this)["txtOutput"].text;
  const std::string suggested = Subst(outputKind_ == 1 ? MakeUniqueShapeFilename(text) : text, ":", "/");
  for (;;) {
    const auto choice = app.BrowseForNewDataset("Enter the name of your new Feature Class or Shapefile:", suggested);
    if (!choice) return;
    const long kind = KindOfCategory(choice->category);
    if (kind == 0) {
      const auto answer = app.MessageBox(
          "Unexpected Feature Class Type (" + choice->category +
              ")!\n\nThis function will only create shapefiles or feature classes in File or Personal GeoDatabases.  "
              "Please click 'OK' to select a new Feature Class Name, or 'Cancel' to bail out.",
          "Invalid Feature Class Type:", platform::host::MessageButtons::OKCancel);
      if (answer == platform::host::MessageResult::OK) continue;
      return;
    }
    std::string name = choice->name;
    if (kind != 1) {
      if (name.size() >= 4 && EqualsIgnoreCase(name.substr(name.size() - 4), ".shp")) name.resize(name.size() - 4);
      name = ReplaceBadChars(name, true, true, true, true);
    }
    const bool inDataset = choice->category.find("Feature Dataset") != std::string::npos;
    outputKind_ = kind;
    outputName_ = name;
    outputInFeatureDataset_ = inDataset;
    outputFeatureDataset_ = inDataset ? ReturnFilename2(choice->location) : std::string();
    outputWorkspacePath_ = inDataset ? ReturnDir2(choice->location, false) : choice->location;
    std::string path = outputWorkspacePath_;
    if (inDataset) path += "/" + outputFeatureDataset_;
    path += "/" + outputName_;
    SetText("txtOutput", path);
    (*this)["txtOutput"].selStart = static_cast<int>(path.size());
    CheckEnable();
    return;
  }
}

void frmPlotLayout::cmdManual_Click() {
  application_->OpenDocument(application_->ProgramFolder() + "/TNWK_ArcGIS_Tools.pdf");
}

void frmPlotLayout::cmdCancel_Click() {
  extension_->ShouldContinue = false;
  extension_->frmPlotLayoutReturn.reset();
  Form_Unload();
}

void frmPlotLayout::CheckEnable() {
  if (initializingForm_) return;
  (*this)["cmdOK"].enabled = OkAllowed();
}

bool frmPlotLayout::OkAllowed() const {
  const auto& c = *this;
  auto chosen = [&](std::string_view name) { return c[name].listIndex >= 0; };
  auto filled = [&](std::string_view name) { return !c[name].text.empty(); };
  if (!chosen("lbxPolygons") || !chosen("lbxStandFields")) return false;
  if (c["optAll"].value == 0 && c["optSel"].value == 0) return false;
  if (!chosen("cbxUnits")) return false;

  const int ratio = c["cbxSpacingRatioOptions"].listIndex;
  const bool ratioComplete = ratio >= 0 && (ratio != 3 || (filled("txtXRatio") && filled("txtYRatio")));
  switch (c["cbxPlotsOption"].listIndex) {
    case 0:
      if (!filled("txtNumPlots") || !ratioComplete) return false;
      break;
    case 1:
      if (!chosen("cbxPlotsField") || !ratioComplete) return false;
      break;
    case 2:
      if (!filled("txtXSpacing") || !filled("txtYSpacing")) return false;
      break;
    case 3:
      if (!chosen("cbxXSpacing") || !chosen("cbxYSpacing")) return false;
      break;
    default:
      return false;
  }
  if (!filled("txtGridOrientation") && !(orientationFromField_ && c["cbxOrientationField"].listIndex >= 1)) {
    return false;
  }
  if (filled("txtBuffer") && !chosen("cbxBufferUnits")) return false;

  const int output = c["cbxCreatePointsIn"].listIndex;
  if (output == 0 && !filled("txtOutput")) return false;
  if (output == 1) {
    if (!chosen("cbxExistingPointLayer") || c["cbxExistingIDField"].listIndex < 1) return false;
    if (c["chkGridStartAtHighest"].value == 0 && !filled("txtGridStartingNumber")) return false;
  }
  if (output != 0 && output != 1) return false;
  return c["chkApplyAnchor"].value == 0 ||
         (NumberOfText(c["txtAnchorX"].text).has_value() && NumberOfText(c["txtAnchorY"].text).has_value());
}

}  // namespace tarnwick
