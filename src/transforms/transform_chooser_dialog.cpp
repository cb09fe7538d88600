#include "transforms/transform_chooser_dialog.h"

#include "platform/predefined_transformations.h"
#include "shell/extension.h"
#include "transforms/transform_candidates.h"
#include "transforms/transform_checks.h"
#include "transforms/transform_chooser_texts.h"

namespace tarnwick {

namespace {

struct SideSystems {
  std::optional<platform::SpatialReference> gcs;
  std::optional<platform::SpatialReference> pcs;
};

SideSystems SystemsOf(const SearchObject& object) {
  SideSystems side;
  bool booError = false;
  std::string message;
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) {
    side.gcs = ReturnGCSFromDataset(*layer, booError, message, side.pcs);
  } else {
    side.gcs = ReturnGCSFromSpRef(std::get_if<platform::SpatialReference>(&object), booError, message, side.pcs);
  }
  return side;
}

std::optional<std::string> NameOf(const std::optional<platform::SpatialReference>& sr) {
  if (!sr) return std::nullopt;
  return sr->Name();
}

}  // namespace

frmTransform::frmTransform(HostArray host, TransformChooserRequest request)
    : ToolDialogModel("frmTransform"), host_(host), request_(std::move(request)) {
  SetErrorHost(&host_.application, &host_.document);
  placementDivisor_ = 2.5;
  caption = " Geographic Transformation:";
  AddControls();
  On("optSkip", ControlEvent::Click, [this] { CheckEnable(); });
  On("optApply", ControlEvent::Click, [this] { CheckEnable(); });
  On("lbxTransformations", ControlEvent::Click, [this] { CheckEnable(); });
  On("lbxTransformations", ControlEvent::DblClick, [this] { lbxTransformations_DblClick(); });
  On("cmdOK", ControlEvent::Click, [this] { cmdOK_Click(); });
  On("cmdCancel", ControlEvent::Click, [this] { cmdCancel_Click(); });
  On("cmdManual", ControlEvent::Click, [this] { OpenManual(host_.application); });
  AsEntryPoint("ArcApplication ", [this] { ArcApplication(); });
}

void frmTransform::AddControls() {
  formBounds = {0, 0, 7200, 6315};
  AddControl("imgBackTop", ControlKind::Image, {0, 0, 7200, 3000});
  auto& message = AddControl("txtMessage", ControlKind::RichTextBox, {240, 240, 6720, 2760});
  message.locked = true;
  AddControl("optSkip", ControlKind::OptionButton, {240, 3120, 6720, 300},
             "Do not apply any geographic transformation (not recommended)")
      .group = "transformation";
  AddControl("optApply", ControlKind::OptionButton, {240, 3480, 6720, 480},
             "Select the geographic transformation from the list below (double-click to see info about "
             "transformation)")
      .group = "transformation";
  AddControl("lbxTransformations", ControlKind::ListBox, {240, 4020, 6720, 1800});
  AddControl("cmdManual", ControlKind::CommandButton, {3300, 5940, 1140, 375}, "Manual");
  AddControl("cmdCancel", ControlKind::CommandButton, {4560, 5940, 1140, 375}, "Cancel");
  AddControl("cmdOK", ControlKind::CommandButton, {5820, 5940, 1140, 375}, "OK");
  // The window ends 120 twips below cmdOK, where the corner image sits.
  AddControl("imgCornerBars", ControlKind::Image, {6960, 6195, 240, 240});
  anchorModes_ = {{"txtMessage", 3, 3},         {"optSkip", 3, 5},    {"optApply", 3, 5},
                  {"lbxTransformations", 3, 5}, {"cmdOK", 5, 5},      {"cmdCancel", 5, 5},
                  {"cmdManual", 5, 5},          {"imgBackTop", 3, 3}, {"imgCornerBars", 5, 5}};
}

void frmTransform::ArcApplication() {
  clsExtension& extension = host_.extension;
  extension.SelectedGeoTransformation = false;
  extension.ChoseToSkipGeoTransformation = false;
  extension.SpecifiedGeoTransform.reset();

  Control& message = (*this)["txtMessage"];
  message.text = ExplanationText();
  message.selStart = 0;

  const TransformCandidates found = FindTransformCandidates(host_.application, request_.object1, request_.object2,
                                                            request_.place ? &*request_.place : nullptr);
  Control& list = (*this)["lbxTransformations"];
  list.entries.clear();
  list.listIndex = -1;
  ranked_.clear();
  if (found.unranked.empty()) {
    list.entries.push_back(kNoKnownTransformations);
  } else {
    for (const auto& entry : found.ranked.entries) {
      ranked_.push_back(entry.transformation);
      list.entries.push_back(std::to_string(ranked_.size()) + "]   " + entry.transformation.name);
    }
  }
  (*this)["optSkip"].value = 0;
  (*this)["optApply"].value = ranked_.empty() ? 0 : 1;
  CheckEnable();
}

std::string frmTransform::ExplanationText() {
  const SideSystems side1 = SystemsOf(request_.object1);
  const SideSystems side2 = SystemsOf(request_.object2);
  ChooserExplanationItems items;
  items.layer1 = request_.name1 ? *request_.name1 : DisplayName(request_.object1);
  if (request_.name2) {
    items.layer2 = *request_.name2;
  } else if (std::holds_alternative<platform::FeatureLayer>(request_.object2)) {
    items.layer2 = DisplayName(request_.object2);
  } else {
    items.layer2 = "Your Output Waypoint File";
  }
  items.gcs1 = NameOf(side1.gcs).value_or("");
  items.gcs2 = NameOf(side2.gcs).value_or("");
  items.projection1 = NameOf(side1.pcs);
  items.projection2 = NameOf(side2.pcs);
  return BuildChooserExplanation(items);
}

void frmTransform::CheckEnable() {
  Control& ok = (*this)["cmdOK"];
  Control& list = (*this)["lbxTransformations"];
  if ((*this)["optSkip"].value != 0) {
    ok.enabled = true;
    list.enabled = false;
    return;
  }
  list.enabled = true;
  const bool isCandidate = list.listIndex >= 0 && list.listIndex < static_cast<int>(ranked_.size()) &&
                           list.SelectedEntry() != kNoKnownTransformations;
  ok.enabled = isCandidate;
}

void frmTransform::cmdOK_Click() {
  clsExtension& extension = host_.extension;
  if ((*this)["optSkip"].value != 0) {
    extension.ChoseToSkipGeoTransformation = true;
    extension.SelectedGeoTransformation = false;
  } else {
    const int index = (*this)["lbxTransformations"].listIndex;
    if (index < 0 || index >= static_cast<int>(ranked_.size())) return;
    extension.SpecifiedGeoTransform = ranked_[static_cast<size_t>(index)];
    extension.SelectedGeoTransformation = true;
    extension.ChoseToSkipGeoTransformation = false;
  }
  unloaded = true;
}

void frmTransform::cmdCancel_Click() {
  clsExtension& extension = host_.extension;
  extension.SpecifiedGeoTransform.reset();
  extension.SelectedGeoTransformation = false;
  extension.ChoseToSkipGeoTransformation = false;
  unloaded = true;
}

void frmTransform::lbxTransformations_DblClick() {
  const Control& list = (*this)["lbxTransformations"];
  std::string details;
  if (list.SelectedEntry() == kNoKnownTransformations) {
    details = NoTransformationDetails();
  } else if (list.listIndex >= 0 && list.listIndex < static_cast<int>(ranked_.size())) {
    const platform::GeoTransformation& t = ranked_[static_cast<size_t>(list.listIndex)];
    platform::SpatialReference from;
    platform::SpatialReference to;
    platform::GetSpatialReferences(t, from, to);
    const TransformColl& coll = ReturnTransformColl();
    const auto row = coll.find(TransformCatalogueKey(t, ReturnTransformColl2()));
    details = TransformationDetails(t.name, from.Name(), to.Name(), row == coll.end() ? nullptr : &row->second);
  } else {
    return;
  }
  host_.application.ShowReport({details, "Geotransformation Details", platform::host::ReportWindow::Modal});
}

}  // namespace tarnwick
