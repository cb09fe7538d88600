#include "standids/transfer_stand_ids_dialog.h"

#include <algorithm>

#include "shell/extension.h"
#include "shell/field_histories.h"
#include "standids/transfer_checks.h"
#include "support/lookups.h"
#include "support/text_operations.h"
#include "transforms/selection_sequence.h"

namespace tarnwick {

namespace {

using platform::FieldType;

constexpr const char* kInstructions =
    "Select the Polygon Stand feature class, plus any attribute values you wish to transfer.  You may select any or "
    "all of these attributes to transfer to your Plot points.  Next, select the Plot Point feature class to transfer "
    "the stand attributes to. ";

// Text, numeric and date fields, without the kinds no transfer can carry.
std::vector<platform::Field> OfferedFields(const platform::FeatureLayer& layer) {
  std::vector<platform::Field> offered;
  for (auto& field : ReturnFieldsByType(layer.featureClass->Fields(), 7)) {
    switch (field.type) {
      case FieldType::Geometry:
      case FieldType::Blob:
      case FieldType::Raster:
      case FieldType::GUID:
      case FieldType::XML:
        continue;
      default:
        offered.push_back(std::move(field));
    }
  }
  return offered;
}

int PositionOfName(const std::vector<platform::FeatureLayer>& layers, const std::string& name) {
  for (size_t i = 0; i < layers.size(); ++i) {
    if (layers[i].name == name) return static_cast<int>(i);
  }
  return -1;
}

const platform::FeatureLayer* LayerAt(const std::vector<platform::FeatureLayer>& layers, int index) {
  return index >= 0 && index < static_cast<int>(layers.size()) ? &layers[static_cast<size_t>(index)] : nullptr;
}

}  // namespace

frmTransferStandIDs::frmTransferStandIDs(HostArray host, TransformationDefaults& defaults)
    : ModalToolDialogModel("..\\frmTransferStandIDs", host, &clsExtension::frmTransferStandIDReturn),
      defaults_(defaults) {
  caption = "  Import Stand ID Parameters:";
  AddControls();
  On("lbxLayers", ControlEvent::Click, [this] { lbxLayers_Click(); });
  On("cbxStandID", ControlEvent::Click, [this] { cbxStandID_Click(); });
  On("lbxFields", ControlEvent::Click, [this] { CheckEnable(); });
  On("cbxExistingPointLayer", ControlEvent::Click, [this] { cbxExistingPointLayer_Click(); });
  On("cbxExistingIDField", ControlEvent::Click, [this] {
    Whiten("cbxExistingIDField");
    CheckEnable();
  });
  On("cmdOK", ControlEvent::Click, [this] { cmdOK_Click(); });
  AsEntryPoint("ArcApplication ", [this] { ArcApplication(); });
}

void frmTransferStandIDs::AddControls() {
  formBounds = {0, 0, 6300, 7035};
  AddControl("imgBackTop", ControlKind::Image, {0, 0, 6300, 1260});
  auto& message = AddControl("txtMessage", ControlKind::TextBox, {240, 120, 5820, 1020}, "Instructions");
  message.locked = true;
  AddControl("lblLayer", ControlKind::Label, {240, 1320, 5820, 255}, "-- Select Stand Layer --");
  AddControl("lbxLayers", ControlKind::ListBox, {240, 1590, 5820, 1020});
  AddControl("lblStandID", ControlKind::Label, {240, 2700, 5820, 255}, "-- Select Stand ID Field --");
  AddControl("cbxStandID", ControlKind::ComboBox, {240, 2970, 5820, 315});
  AddControl("lblFields", ControlKind::Label, {240, 3390, 5820, 255}, "-- Additional Fields to Transfer --");
  AddControl("lbxFields", ControlKind::MultiSelectListBox, {240, 3660, 5820, 1260});
  AddControl("lblPlotLayer", ControlKind::Label, {240, 5010, 5820, 255}, "-- Select Plot Point Layer --");
  AddControl("cbxExistingPointLayer", ControlKind::ComboBox, {240, 5280, 5820, 315});
  AddControl("lblPlotStandIDField", ControlKind::Label, {240, 5700, 5820, 255}, "-- Select Plot Stand ID Field --");
  AddControl("cbxExistingIDField", ControlKind::ComboBox, {240, 5970, 5820, 315});
  AddButtonBand(6660);
  anchorModes_ = {{"cmdCancel", 2, 5},
                  {"cmdManual", 2, 5},
                  {"cmdOK", 2, 5},
                  {"imgBackTop", 3, 3},
                  {"imgBackBottom", 3, 5},
                  {"imgCornerBars", 5, 5},
                  {"lblFields", 4, 2},
                  {"lblLayer", 4, 2},
                  {"lblStandID", 4, 2},
                  {"cbxStandID", 0, 2},
                  {"lbxFields", 0, 3},
                  {"lbxLayers", 0, 3},
                  {"txtMessage", 3, 2},
                  {"lblPlotLayer", 4, 5},
                  {"lblPlotStandIDField", 4, 5},
                  {"cbxExistingPointLayer", 0, 5},
                  {"cbxExistingIDField", 0, 5},
                  {"lblToolVersion", 2, 5}};
}

void frmTransferStandIDs::ArcApplication() {
  // The table of contents' selection names the default layers: its first
  // polygon layer and its first point layer.
  for (const auto& layer : host_.document.SelectedLayers()) {
    if (!layer.featureClass) continue;
    const auto shape = layer.featureClass->ShapeType();
    if (shape == platform::GeometryType::Polygon && defaultStandLayer_.empty()) defaultStandLayer_ = layer.name;
    if (shape == platform::GeometryType::Point && defaultPointLayer_.empty()) defaultPointLayer_ = layer.name;
  }
  host_.extension.ShouldContinue = false;

  platform::host::Map& map = host_.document.FocusMap();
  polygonLayers_ = ReturnLayersByType(map, 32);
  Control& standList = (*this)["lbxLayers"];
  standList.entries.clear();
  for (const auto& layer : polygonLayers_) standList.entries.push_back(layer.name);
  if (!polygonLayers_.empty()) {
    SetListIndex("lbxLayers", std::max(0, PositionOfName(polygonLayers_, defaultStandLayer_)));
  }

  pointLayers_ = ReturnLayersByType(map, 8);
  Control& pointCombo = (*this)["cbxExistingPointLayer"];
  pointCombo.entries.clear();
  for (const auto& layer : pointLayers_) pointCombo.entries.push_back(layer.name);
  if (!pointLayers_.empty()) {
    SetListIndex("cbxExistingPointLayer", std::max(0, PositionOfName(pointLayers_, defaultPointLayer_)));
  }

  (*this)["txtMessage"].text = kInstructions;
  host_.extension.frmTransferStandIDReturn.reset();
  CheckEnable();
}

bool frmTransferStandIDs::TransferNameInStandIDHistory(const std::string& name) {
  return NameInHistory(host_.extension, FieldHistory::StandID, name);
}

void frmTransferStandIDs::TransferAddFieldNameToStandIDHistory(const std::string& name) {
  AddFieldNameToHistory(host_.extension, FieldHistory::StandID, name);
}

void frmTransferStandIDs::RefillAdditionalFields(const std::vector<std::string>& names) {
  Control& list = (*this)["lbxFields"];
  KeyedCollection<bool> wasSelected;
  for (size_t i = 0; i < list.entries.size(); ++i) {
    wasSelected[list.entries[i]] = i < list.selected.size() && list.selected[i];
  }
  list.entries = names;
  list.selected.assign(names.size(), false);
  for (size_t i = 0; i < names.size(); ++i) {
    if (auto it = wasSelected.find(names[i]); it != wasSelected.end()) list.selected[i] = it->second;
  }
  list.listIndex = -1;
}

void frmTransferStandIDs::lbxLayers_Click() {
  Whiten("lbxLayers");
  const platform::FeatureLayer* layer = LayerAt(polygonLayers_, (*this)["lbxLayers"].listIndex);
  if (layer == nullptr || !layer->featureClass) return CheckEnable();

  Control& standId = (*this)["cbxStandID"];
  standId.entries = {kSelectFieldEntry};
  standFieldNames_.clear();
  int historyMatch = 0;
  for (const auto& field : OfferedFields(*layer)) {
    // The last field the history knows (by alias or name) is the default.
    const std::string& alias = field.alias.empty() ? field.name : field.alias;
    if (TransferNameInStandIDHistory(alias) || TransferNameInStandIDHistory(field.name)) {
      historyMatch = static_cast<int>(standId.entries.size());
    }
    standId.entries.push_back(field.name);
    standFieldNames_.push_back(field.name);
  }
  RefillAdditionalFields(standFieldNames_);
  SetListIndex("cbxStandID", historyMatch);
  CheckEnable();
}

void frmTransferStandIDs::cbxStandID_Click() {
  Whiten("cbxStandID");
  const std::string chosen = (*this)["cbxStandID"].SelectedEntry();
  if (chosen.empty() || chosen == kSelectFieldEntry) return CheckEnable();

  // The Stand ID cannot be an additional attribute too.
  std::vector<std::string> others;
  for (const auto& name : standFieldNames_) {
    if (!EqualsIgnoreCase(name, chosen)) others.push_back(name);
  }
  RefillAdditionalFields(others);

  const auto& pointFields = (*this)["cbxExistingIDField"].entries;
  for (size_t i = 0; i < pointFields.size(); ++i) {
    if (EqualsIgnoreCase(pointFields[i], chosen)) SetListIndex("cbxExistingIDField", static_cast<int>(i));
  }
  CheckEnable();
}

void frmTransferStandIDs::cbxExistingPointLayer_Click() {
  Whiten("cbxExistingPointLayer");
  const platform::FeatureLayer* layer = LayerAt(pointLayers_, (*this)["cbxExistingPointLayer"].listIndex);
  if (layer == nullptr || !layer->featureClass) return CheckEnable();

  std::string standId = (*this)["cbxStandID"].SelectedEntry();
  if (standId == kSelectFieldEntry) standId.clear();

  Control& pointField = (*this)["cbxExistingIDField"];
  pointField.entries = {kClonePolygonFieldEntry};
  int match = 0;  // cloning, unless a point field bears the Stand ID's name
  for (const auto& field : OfferedFields(*layer)) {
    if (!standId.empty() && (EqualsIgnoreCase(field.name, standId) || EqualsIgnoreCase(field.alias, standId))) {
      match = static_cast<int>(pointField.entries.size());
    }
    pointField.entries.push_back(field.name);
  }
  SetListIndex("cbxExistingIDField", match);
  CheckEnable();
}

void frmTransferStandIDs::CheckEnable() {
  const std::string standId = (*this)["cbxStandID"].SelectedEntry();
  (*this)["cmdOK"].enabled = (*this)["lbxLayers"].listIndex >= 0 && !standId.empty() && standId != kSelectFieldEntry &&
                             !(*this)["cbxExistingPointLayer"].SelectedEntry().empty() &&
                             !(*this)["cbxExistingIDField"].SelectedEntry().empty();
}

void frmTransferStandIDs::cmdOK_Click() {
  platform::host::Application& app = host_.application;
  platform::host::Map& map = host_.document.FocusMap();
  const platform::FeatureLayer* chosenStands = LayerAt(polygonLayers_, (*this)["lbxLayers"].listIndex);
  if (chosenStands == nullptr) return;

  // The layers as the map holds them now: one removed meanwhile is refused.
  TransferStandIDChoices choices;
  const auto stands = CheckLayerStillInMap(map, *chosenStands, "lbxLayers");
  if (const auto* refusal = Refusal(stands)) return Refuse(app, *refusal);
  choices.standLayer = std::get<platform::FeatureLayer>(stands);
  choices.standIdField = (*this)["cbxStandID"].SelectedEntry();
  const Control& attributes = (*this)["lbxFields"];
  for (size_t i = 0; i < attributes.entries.size(); ++i) {
    if (i < attributes.selected.size() && attributes.selected[i]) {
      choices.additionalFields.push_back(attributes.entries[i]);
    }
  }
  if (const auto* chosenPoints = LayerAt(pointLayers_, (*this)["cbxExistingPointLayer"].listIndex)) {
    const auto points = CheckLayerStillInMap(map, *chosenPoints, "cbxExistingPointLayer");
    if (const auto* refusal = Refusal(points)) return Refuse(app, *refusal);
    choices.pointLayer = std::get<platform::FeatureLayer>(points);
  }
  choices.pointStandIdField = (*this)["cbxExistingIDField"].SelectedEntry();

  auto checked = CheckTransferStandIDChoices(app, choices);
  if (const auto* refusal = Refusal(checked)) return Refuse(app, *refusal);
  auto& parameters = std::get<TransferStandIDParameters>(checked);

  // The overlay runs in the stands' coordinates: the points are taken there.
  host_.extension.ChoseToSkipGeoTransformation = false;
  const auto choice = SelectGeoTransformationForRun(app, map, defaults_, parameters.pointLayer, parameters.standLayer);
  if (const auto* refusal = Refusal(choice)) return Refuse(app, *refusal);
  if (const auto& settled = std::get<TransformationChoice>(choice); settled.needed) {
    parameters.transformation = settled.transformation;
    parameters.direction = settled.direction;
  }

  Accept(std::move(parameters));
}

}  // namespace tarnwick
