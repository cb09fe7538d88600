#include "transforms/transformation_menu.h"

#include "presentation/error_handling.h"
#include "shell/extension.h"
#include "support/lookups.h"
#include "transforms/transform_checks.h"
#include "transforms/transform_chooser_dialog.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

constexpr const char* kTitle = " Geographic Transformation:";
constexpr const char* kPairInstructions =
    "Pick two layers, or a layer and the map, that lie on different geographic coordinate systems. The next window "
    "ranks the transformations between them; the one you apply is saved in the project, and the tools use it from "
    "then on.";

int PositionOf(const std::vector<platform::FeatureLayer>& layers, const platform::FeatureLayer& wanted) {
  for (size_t i = 0; i < layers.size(); ++i) {
    if (SameLayer(layers[i], wanted)) return static_cast<int>(i);
  }
  return -1;
}

std::optional<platform::SpatialReference> GcsOf(const SearchObject& object) {
  bool booError = false;
  std::string message;
  std::optional<platform::SpatialReference> pcs;
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) {
    return ReturnGCSFromDataset(*layer, booError, message, pcs);
  }
  return ReturnGCSFromSpRef(std::get_if<platform::SpatialReference>(&object), booError, message, pcs);
}

}  // namespace

TransformationPairDialog::TransformationPairDialog(HostArray host)
    : ToolDialogModel("TransformationPairDialog"), host_(host) {
  SetErrorHost(&host_.application, &host_.document);
  caption = " Choose Two Layers:";
  formBounds = {0, 0, 5400, 3555};
  AddControl("lblMessage", ControlKind::Label, {240, 180, 4920, 1260}, kPairInstructions);
  AddControl("lblLayer1", ControlKind::Label, {240, 1560, 4920, 255}, "-- Select First Layer --");
  AddControl("cbxLayer1", ControlKind::ComboBox, {240, 1830, 4920, 315});
  AddControl("lblLayer2", ControlKind::Label, {240, 2280, 4920, 255}, "-- Select Second Layer or the Map --");
  AddControl("cbxLayer2", ControlKind::ComboBox, {240, 2550, 4920, 315});
  AddControl("cmdCancel", ControlKind::CommandButton, {2700, 3060, 1140, 375}, "Cancel");
  AddControl("cmdOK", ControlKind::CommandButton, {4020, 3060, 1140, 375}, "OK");
  anchorModes_ = {{"lblMessage", 3, 2}, {"cbxLayer1", 3, 2}, {"cbxLayer2", 3, 2}, {"cmdCancel", 5, 5}, {"cmdOK", 5, 5}};
  On("cbxLayer1", ControlEvent::Click, [this] { CheckEnable(); });
  On("cbxLayer2", ControlEvent::Click, [this] { CheckEnable(); });
  On("cmdOK", ControlEvent::Click, [this] { cmdOK_Click(); });
  On("cmdCancel", ControlEvent::Click, [this] { unloaded = true; });

  AsEntryPoint("Form_Load ", [this] {
    layers_ = ReturnLayersByType(host_.document.FocusMap(), 1);
    Control& first = (*this)["cbxLayer1"];
    Control& second = (*this)["cbxLayer2"];
    second.entries.push_back(kMapCoordinateSystemEntry);
    for (const auto& layer : layers_) {
      first.entries.push_back(layer.name);
      second.entries.push_back(layer.name);
    }
    // The layers selected in the table of contents are the defaults.
    const auto selected = host_.document.SelectedLayers();
    const int selected1 = selected.empty() ? -1 : PositionOf(layers_, selected[0]);
    const int selected2 = selected.size() < 2 ? -1 : PositionOf(layers_, selected[1]);
    first.listIndex = selected1 >= 0 ? selected1 : (layers_.empty() ? -1 : 0);
    second.listIndex = selected2 >= 0 ? selected2 + 1 : 0;
    CheckEnable();
  });
}

void TransformationPairDialog::CheckEnable() {
  const int first = (*this)["cbxLayer1"].listIndex;
  const int second = (*this)["cbxLayer2"].listIndex;
  (*this)["cmdOK"].enabled = first >= 0 && second >= 0 && second != first + 1;
}

void TransformationPairDialog::cmdOK_Click() {
  platform::host::Application& app = host_.application;
  platform::host::Map& map = host_.document.FocusMap();
  const int first = (*this)["cbxLayer1"].listIndex;
  const int second = (*this)["cbxLayer2"].listIndex;
  if (first < 0 || second < 0) return;

  const auto layer1 = CheckLayerStillInMap(map, layers_.at(static_cast<size_t>(first)), "cbxLayer1");
  if (const auto* refusal = Refusal(layer1)) return Refuse(app, *refusal);
  if (auto refusal = CheckSpatialReference(std::get<platform::FeatureLayer>(layer1), "cbxLayer1")) {
    return Refuse(app, *refusal);
  }
  Pair pair{std::get<platform::FeatureLayer>(layer1), {}, layers_.at(static_cast<size_t>(first)).name, {}};
  if (second == 0) {
    const platform::SpatialReference mapSystem = map.GetSpatialReference();
    if (mapSystem.IsUnknown()) {
      return Refuse(app, {"The map has no coordinate system!\n\nPlease choose a second layer.",
                          "Invalid Spatial Reference:", platform::host::MessageIcon::Exclamation, "cbxLayer2"});
    }
    pair.object2 = mapSystem;
    pair.name2 = "Map (" + mapSystem.Name() + ")";
  } else {
    const auto layer2 = CheckLayerStillInMap(map, layers_.at(static_cast<size_t>(second - 1)), "cbxLayer2");
    if (const auto* refusal = Refusal(layer2)) return Refuse(app, *refusal);
    if (auto refusal = CheckSpatialReference(std::get<platform::FeatureLayer>(layer2), "cbxLayer2")) {
      return Refuse(app, *refusal);
    }
    pair.object2 = std::get<platform::FeatureLayer>(layer2);
    pair.name2 = layers_.at(static_cast<size_t>(second - 1)).name;
  }
  chosen_ = std::move(pair);
  unloaded = true;
}

TransformationMenuOutcome RunGeographicTransformationMenu(HostArray host, TransformationDefaults& defaults,
                                                          const ShowModalDialog& showModal) {
  using Kind = TransformationMenuOutcome::Kind;
  TransformationMenuOutcome outcome;
  try {
    TransformationPairDialog pairDialog(host);
    showModal(pairDialog);
    if (!pairDialog.Chosen()) return outcome;
    const auto& pair = *pairDialog.Chosen();

    const auto gcs1 = GcsOf(pair.object1);
    const auto gcs2 = GcsOf(pair.object2);
    if (gcs1 && gcs2 && gcs1->FactoryCode() == gcs2->FactoryCode()) {
      host.application.MessageBox("'" + pair.name1 + "' and '" + pair.name2 +
                                      "' lie on the same geographic "
                                      "coordinate system (" +
                                      gcs1->Name() +
                                      "):\n\nNo geographic transformation is "
                                      "needed.",
                                  kTitle, platform::host::MessageButtons::OK, platform::host::MessageIcon::Information);
      outcome.kind = Kind::NotNeeded;
      return outcome;
    }

    frmTransform chooser(host, {pair.object1, pair.object2, pair.name1, pair.name2, std::nullopt});
    showModal(chooser);
    clsExtension& extension = host.extension;
    if (extension.ChoseToSkipGeoTransformation) outcome.kind = Kind::Skipped;
    if (!extension.SelectedGeoTransformation || !extension.SpecifiedGeoTransform) return outcome;

    const platform::GeoTransformation chosen = *extension.SpecifiedGeoTransform;
    if (auto refusal = CheckTransformationRuns(chosen)) {
      host.application.MessageBox(refusal->text, refusal->title, platform::host::MessageButtons::OK, refusal->icon);
      outcome.kind = Kind::Refused;
      return outcome;
    }
    StoreChosenTransformation(chosen, host.document.FocusMap(), defaults);
    host.document.SetDirty(true);
    outcome.kind = Kind::Stored;
    outcome.stored = chosen;
  } catch (...) {
    HandleErrorAtEntryPoint("RunGeographicTransformationMenu ", "TransformationMenu", &host.application,
                            &host.document);
  }
  return outcome;
}

}  // namespace tarnwick
