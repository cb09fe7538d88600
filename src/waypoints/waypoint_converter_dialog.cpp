#include "waypoints/waypoint_converter_dialog.h"

#include <filesystem>

#include "shell/extension.h"
#include "support/lookups.h"
#include "support/path_operations.h"
#include "support/text_operations.h"
#include "support/unique_names.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_checks.h"
#include "waypoints/waypoint_checks.h"
#include "waypoints/waypoint_output.h"

namespace tarnwick {

namespace {

constexpr const char* kInstructions =
    "Select the Point Layer and associated Plot ID field from the list boxes below.  Optionally, you may also select "
    "a Stand ID field (which will be used to populate the Waypoint 'Description' attributes) and an Elevation field.";

bool Contains(const std::string& name, std::string_view part) {
  return ToLowerAscii(name).find(ToLowerAscii(part)) != std::string::npos;
}

bool IsShapeMeasure(const std::string& name) {
  return EqualsIgnoreCase(name, "Shape_Area") || EqualsIgnoreCase(name, "Shape_Length");
}

std::string WithSeparator(std::string folder) {
  if (folder.empty() || (folder.back() != '/' && folder.back() != '\\')) folder += "/";
  return folder;
}

// The map document's folder; the working folder for a document never saved.
std::string DocumentFolder(const platform::host::MapDocument& document) {
  const std::string path = GetMxDocPath(document);
  return path.empty() ? std::filesystem::current_path().string() : ReturnDir2(path, false);
}

}  // namespace

frmLayerID::frmLayerID(HostArray host, TransformationDefaults& defaults)
    : ModalToolDialogModel("...Form = frmLayerID", host, &clsExtension::frmLayerIDReturn), defaults_(defaults) {
  caption = " TNWK Solo Waypoint Converter:";
  AddControls();
  On("lbxLayers", ControlEvent::Click, [this] { lbxLayers_Click(); });
  for (const char* control : {"lbxFields", "lbxStandFields", "lbxElevation", "optAll", "optSel"}) {
    On(control, ControlEvent::Click, [this] { CheckEnable(); });
  }
  On("txtOutput", ControlEvent::Change, [this] { Whiten("txtOutput"); });
  On("cmdGetWorkspace", ControlEvent::Click, [this] { cmdGetWorkspace_Click(); });
  On("cmdOK", ControlEvent::Click, [this] { cmdOK_Click(); });
  AsEntryPoint("ArcApplication ", [this] { ArcApplication(); });
}

void frmLayerID::AddControls() {
  formBounds = {0, 0, 6300, 8595};
  AddControl("imgBackTop", ControlKind::Image, {0, 0, 6300, 1140});
  AddControl("txtMessage", ControlKind::TextBox, {240, 90, 5820, 960}).locked = true;
  AddControl("lblLayer", ControlKind::Label, {240, 1140, 5820, 255}, "-- Select Point Layer --");
  AddControl("lbxLayers", ControlKind::ListBox, {240, 1410, 5820, 1020});
  AddControl("lblFields", ControlKind::Label, {240, 2520, 5820, 255}, "-- Select Plot ID Field --");
  AddControl("lbxFields", ControlKind::ListBox, {240, 2790, 5820, 1020});
  AddControl("lblStandID", ControlKind::Label, {240, 3900, 5820, 255}, "-- Select Stand ID Field --");
  AddControl("lbxStandFields", ControlKind::ListBox, {240, 4170, 5820, 900});
  AddControl("lblElev", ControlKind::Label, {240, 5160, 5820, 255}, "-- Select Elevation Field --");
  AddControl("lbxElevation", ControlKind::ListBox, {240, 5430, 5820, 900});
  const ControlBounds middle{0, 6420, 6300, 780};
  AddControl("imgBackMiddle", ControlKind::Image, middle);
  AddControl("optAll", ControlKind::OptionButton, {240, 6480, 5820, 300}, "Convert All Records").group = "records";
  AddControl("optSel", ControlKind::OptionButton, {240, 6840, 5820, 300}, "Convert Selected Records").group = "records";
  // Shown in the options' place while the Plot IDs are checked (a fixed-pitch font keeps its bar steady).
  auto& progress = AddControl("txtProgress", ControlKind::TextBox, middle);
  progress.visible = false;
  progress.locked = true;
  AddControl("lblOutputName", ControlKind::Label, {240, 7260, 5820, 255}, "Output Waypoint File:");
  AddControl("txtOutput", ControlKind::TextBox, {240, 7530, 5340, 315});
  AddControl("cmdGetWorkspace", ControlKind::CommandButton, {5640, 7500, 420, 375}).toolTip =
      "Browse for Output Table...";
  AddButtonBand(8220);
  anchorModes_ = {{"cmdCancel", 2, 5},      {"cmdManual", 2, 5},     {"cmdOK", 2, 5},          {"imgBackTop", 3, 3},
                  {"imgCornerBars", 5, 5},  {"lblFields", 4, 2},     {"lblStandID", 4, 5},     {"lblElev", 4, 5},
                  {"lblLayer", 4, 2},       {"lbxFields", 0, 3},     {"lbxStandFields", 0, 5}, {"lbxElevation", 0, 5},
                  {"lbxLayers", 0, 3},      {"txtMessage", 3, 2},    {"imgBackMiddle", 3, 5},  {"optAll", 4, 5},
                  {"optSel", 4, 5},         {"imgBackBottom", 3, 5}, {"lblOutputName", 2, 5},  {"txtOutput", 3, 5},
                  {"cmdGetWorkspace", 5, 5}};
}

void frmLayerID::ArcApplication() {
  const auto selected = host_.document.SelectedLayers();
  if (!selected.empty()) defaultLayer_ = selected.front().name;
  host_.extension.ShouldContinue = false;

  layers_ = ReturnLayersByType(host_.document.FocusMap(), 8);
  Control& list = (*this)["lbxLayers"];
  list.entries.clear();
  int position = 0;
  for (size_t i = 0; i < layers_.size(); ++i) {
    list.entries.push_back(layers_[i].name);
    if (layers_[i].name == defaultLayer_) position = static_cast<int>(i);
  }
  if (!layers_.empty()) SetListIndex("lbxLayers", position);

  (*this)["txtMessage"].text = kInstructions;
  SetOutputText(MakeUniquedBASEName(OutputFolder() + "Waypoints.way"));
  if (layers_.empty()) {
    (*this)["optAll"].value = 1;
    (*this)["optSel"].value = 0;
    (*this)["cmdOK"].enabled = false;
  }
  host_.extension.frmLayerIDReturn.reset();
  CheckEnable();
}

std::string frmLayerID::OutputFolder() {
  std::string& directory = host_.extension.DirectoryPath;
  directory = TrimBlanks(directory);
  if (directory.empty()) directory = DocumentFolder(host_.document);
  return WithSeparator(directory);
}

void frmLayerID::SetOutputText(const std::string& path) {
  SetText("txtOutput", path);
  (*this)["txtOutput"].selStart = static_cast<int>(path.size());
}

void frmLayerID::lbxLayers_Click() {
  const int index = (*this)["lbxLayers"].listIndex;
  if (index < 0 || index >= static_cast<int>(layers_.size())) return CheckEnable();
  const platform::FeatureLayer& layer = layers_[static_cast<size_t>(index)];

  Control& plotIds = (*this)["lbxFields"];
  Control& standIds = (*this)["lbxStandFields"];
  Control& elevations = (*this)["lbxElevation"];
  plotIds.entries.clear();
  standIds.entries = {kNoStandIdFieldEntry};
  elevations.entries = {kNoElevationFieldEntry};
  // The last name that fits is preselected; Plot ID has no default.
  int plotId = -1;
  int standId = 0;
  int elevation = 0;
  for (const auto& field : ReturnFieldsByType(layer.featureClass->Fields(), 3)) {
    if (Contains(field.name, "PlotID")) plotId = static_cast<int>(plotIds.entries.size());
    plotIds.entries.push_back(field.name);
    if (IsShapeMeasure(field.name)) continue;
    if (Contains(field.name, "StandID")) standId = static_cast<int>(standIds.entries.size());
    standIds.entries.push_back(field.name);
  }
  for (const auto& field : ReturnFieldsByType(layer.featureClass->Fields(), 2)) {
    if (IsShapeMeasure(field.name)) continue;
    if (Contains(field.name, "DEM") || Contains(field.name, "Elev")) {
      elevation = static_cast<int>(elevations.entries.size());
    }
    elevations.entries.push_back(field.name);
  }
  SetListIndex("lbxFields", plotId);
  SetListIndex("lbxStandFields", standId);
  SetListIndex("lbxElevation", elevation);

  // An existing selection is the default choice.
  const std::string count = std::to_string(layer.featureClass->FeatureCount());
  const auto selected = static_cast<long long>(layer.selection.size());
  Control& all = (*this)["optAll"];
  Control& some = (*this)["optSel"];
  all.caption = "Convert All Records (n = " + count + ")";
  all.enabled = true;
  all.value = selected == 0 ? 1 : 0;
  some.caption = "Convert Only Selected Records (n = " + std::to_string(selected) + ")";
  some.enabled = selected > 0;
  some.value = selected > 0 ? 1 : 0;

  const std::string current = ReturnDir((*this)["txtOutput"].text);
  const std::string folder = current.empty() ? OutputFolder() : current;
  SetOutputText(DefaultWaypointOutputPath(folder, layer.name));
  CheckEnable();
}

void frmLayerID::CheckEnable() {
  (*this)["cmdOK"].enabled = !checking_ && (*this)["lbxLayers"].listIndex >= 0 && (*this)["lbxFields"].listIndex >= 0 &&
                             (*this)["lbxStandFields"].listIndex >= 0;
}

void frmLayerID::cmdGetWorkspace_Click() {
  std::string folder = ReturnDir((*this)["txtOutput"].text);
  if (folder.empty() || !ExistFileDir(folder)) folder = DocumentFolder(host_.document);
  const auto chosen =
      host_.application.BrowseForSaveFile({"Save Waypoint File as:", "Trimble Waypoint Files (*.way)|*.way",
                                           WithSeparator(folder), ReturnFilename((*this)["txtOutput"].text)});
  if (!chosen) return;
  // The file type chosen governs: a name without an extension gets ".way".
  std::string path = *chosen;
  if (!path.empty() && ClipExtension(ReturnFilename(path)) == ReturnFilename(path)) path += ".way";
  SetOutputText(path);
  if (const std::string chosenFolder = ReturnDir(path); !chosenFolder.empty()) {
    host_.extension.DirectoryPath = chosenFolder;
  }
  CheckEnable();
}

std::optional<CheckMessage> frmLayerID::CheckPlotIDsShowingProgress(const WaypointParameters& parameters) {
  Control& progress = (*this)["txtProgress"];
  progress.text = "Checking for Duplicate Plot ID values:\r\n[" + std::string(30, '.') + "]  0%";
  progress.visible = true;
  (*this)["optAll"].visible = false;
  (*this)["optSel"].value = 0;
  (*this)["imgBackMiddle"].visible = false;
  checking_ = true;
  CheckEnable();
  NotifyChanged();

  // The host's events are let through as the bar moves, so the window
  // repaints and stays responsive over a large layer.
  auto refusal = CheckPlotIDsForConversion(parameters, [this](const std::string& text) {
    (*this)["txtProgress"].text = text;
    NotifyChanged();
    host_.application.DoEvents();
  });

  checking_ = false;
  (*this)["txtProgress"].visible = false;
  (*this)["optAll"].visible = true;
  (*this)["imgBackMiddle"].visible = true;
  SetValue("optSel", 1);
  return refusal;
}

void frmLayerID::cmdOK_Click() {
  if (checking_) return;
  platform::host::Application& app = host_.application;
  platform::host::Map& map = host_.document.FocusMap();
  const int index = (*this)["lbxLayers"].listIndex;
  if (index < 0 || index >= static_cast<int>(layers_.size())) return;

  // The layer as the map holds it now, with its present selection.
  WaypointParameters parameters;
  const auto layer = CheckLayerStillInMap(map, layers_[static_cast<size_t>(index)], "lbxLayers");
  if (const auto* refusal = Refusal(layer)) return Refuse(app, *refusal);
  parameters.pointLayer = std::get<platform::FeatureLayer>(layer);
  if (auto refusal = CheckWaypointLayer(parameters.pointLayer)) return Refuse(app, *refusal);

  const auto plotId =
      FindWaypointField(parameters.pointLayer, (*this)["lbxFields"].SelectedEntry(), WaypointFieldRole::PlotID);
  if (const auto* refusal = Refusal(plotId)) return Refuse(app, *refusal);
  parameters.plotIdField = std::get<platform::Field>(plotId);
  if (const Control& list = (*this)["lbxStandFields"]; list.listIndex > 0) {
    const auto field = FindWaypointField(parameters.pointLayer, list.SelectedEntry(), WaypointFieldRole::StandID);
    if (const auto* refusal = Refusal(field)) return Refuse(app, *refusal);
    parameters.standIdField = std::get<platform::Field>(field);
  }
  if (const Control& list = (*this)["lbxElevation"]; list.listIndex > 0) {
    const auto field = FindWaypointField(parameters.pointLayer, list.SelectedEntry(), WaypointFieldRole::Elevation);
    if (const auto* refusal = Refusal(field)) return Refuse(app, *refusal);
    parameters.elevationField = std::get<platform::Field>(field);
  }
  parameters.convertAll = (*this)["optAll"].value != 0;

  const auto duplicates = CheckPlotIDsShowingProgress(parameters);
  if (unloaded) return;  // cancelled while the check read the points
  if (duplicates) return Refuse(app, *duplicates);

  const auto output = CheckWaypointOutput(app, (*this)["txtOutput"].text);
  if (const auto* refusal = Refusal(output)) return Refuse(app, *refusal);
  parameters.outputPath = std::get<std::string>(output);
  if (const std::string folder = ReturnDir(parameters.outputPath); !folder.empty()) {
    host_.extension.DirectoryPath = folder;
  }

  if (auto refusal = CheckSpatialReference(parameters.pointLayer)) return Refuse(app, *refusal);
  host_.extension.ChoseToSkipGeoTransformation = false;
  const auto choice =
      SelectGeoTransformationForRun(app, map, defaults_, parameters.pointLayer, CreateSpatialReferenceWGS84());
  if (const auto* refusal = Refusal(choice)) return Refuse(app, *refusal);
  if (const auto& settled = std::get<TransformationChoice>(choice); settled.needed) {
    parameters.transformation = settled.transformation;
    parameters.direction = settled.direction;
  }

  Accept(std::move(parameters));
}

}  // namespace tarnwick
