// The Plot Layout dialog's anchor point: the choice between a point clicked
// on the map and the first point of a layer, the toggle button that turns
// the anchor tool on and off, and the coordinate boxes.
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "plot/plot_layout_checks.h"
#include "plot/plot_layout_dialog.h"
#include "shell/extension.h"

namespace tarnwick {

void frmPlotLayout::DropAnchorTool() {
  if (application_->CurrentTool() == AnchorTool()) application_->SetCurrentTool("");
  anchorToolActive_ = false;
  extension_->SelToolEnabled = false;
  application_->RefreshCommandItem(AnchorTool());
}

void frmPlotLayout::ImplementAnchorChoice() {
  anchorToolActive_ = application_->CurrentTool() == AnchorTool();
  const bool apply = (*this)["chkApplyAnchor"].value == 1;
  const bool clicked = (*this)["cbxAnchorOption"].listIndex == 0;
  SetVisible({"cbxAnchorOption", "lblX", "lblY", "txtAnchorX", "txtAnchorY"}, apply);
  SetVisible({"lblClickOnScreen", "imgButtonUp"}, apply && clicked);
  SetVisible({"lblAnchorLayerOption", "cbxAnchorLayer"}, apply && !clicked);
  (*this)["imgButtonDown"].visible = false;
  if (anchorToolActive_) {
    application_->SetCurrentTool("");
    anchorToolActive_ = false;
  }
  extension_->SelToolEnabled = false;
  application_->RefreshCommandItem(AnchorTool());
  CheckEnable();
}

void frmPlotLayout::cbxAnchorOption_Click() {
  (*this)["cbxAnchorOption"].backColor = kWhite;
  anchorToolActive_ = application_->CurrentTool() == AnchorTool();
  const bool clicked = (*this)["cbxAnchorOption"].listIndex == 0;
  if ((*this)["cbxAnchorOption"].visible) {
    SetVisible({"lblClickOnScreen", "imgButtonUp"}, clicked);
    SetVisible({"lblAnchorLayerOption", "cbxAnchorLayer"}, !clicked);
    (*this)["imgButtonDown"].visible = false;
  }
  // Boxes filled from a layer are shown pale, though they stay editable.
  const bool fromLayer = (*this)["cbxAnchorOption"].listIndex == 1;
  (*this)["txtAnchorX"].backColor = fromLayer ? kAnchorXGrey : kWhite;
  (*this)["txtAnchorY"].backColor = fromLayer ? kAnchorYGrey : kWhite;
  if (anchorToolActive_) {
    application_->SetCurrentTool("");
    anchorToolActive_ = false;
  }
  extension_->SelToolEnabled = false;
  CheckEnable();
}

void frmPlotLayout::imgButtonUp_Click() {
  anchorToolActive_ = true;
  extension_->SelToolEnabled = true;
  if (!initializingForm_) {
    application_->SetCurrentTool(AnchorTool());
    application_->RefreshCommandItem(AnchorTool());
  }
  (*this)["imgButtonDown"].visible = true;
  (*this)["imgButtonUp"].visible = false;
  NotifyChanged();
}

void frmPlotLayout::imgButtonDown_Click() {
  if (!initializingForm_) {
    application_->SetCurrentTool("");
    application_->RefreshCommandItem(AnchorTool());
  }
  (*this)["imgButtonDown"].visible = false;
  (*this)["imgButtonUp"].visible = true;
  extension_->SelToolEnabled = false;
  NotifyChanged();
}

void frmPlotLayout::cbxAnchorLayer_Click() {
  (*this)["cbxAnchorLayer"].backColor = kWhite;
  const int index = (*this)["cbxAnchorLayer"].listIndex;
  if (index < 0 || index >= static_cast<int>(pointLayers_.size())) {
    SetText("txtAnchorX", "");
    SetText("txtAnchorY", "");
    CheckEnable();
    return;
  }
  const platform::FeatureLayer& listed = pointLayers_[static_cast<std::size_t>(index)];
  const platform::FeatureLayer layer = LayerInMap(listed).value_or(listed);
  const AnchorPointReading reading = ReadAnchorPoint(layer);
  (*this)["lblAnchorLayerOption"].caption = reading.caption;
  SetText("txtAnchorX", reading.xText);
  SetText("txtAnchorY", reading.yText);
  CheckEnable();
}

void frmPlotLayout::txtAnchorX_Change() {
  (*this)["txtAnchorX"].backColor = kWhite;
  if (const auto x = NumberOfText((*this)["txtAnchorX"].text)) anchorX_ = *x;
  CheckEnable();
}

void frmPlotLayout::txtAnchorY_Change() {
  (*this)["txtAnchorY"].backColor = kWhite;
  if (const auto y = NumberOfText((*this)["txtAnchorY"].text)) anchorY_ = *y;
  CheckEnable();
}

void frmPlotLayout::WriteAnchorCoordinates() {
  const bool geographic = document_->FocusMap().GetSpatialReference().IsGeographic();
  SetText("txtAnchorX", AnchorCoordinateText(anchorX_, geographic));
  SetText("txtAnchorY", AnchorCoordinateText(anchorY_, geographic));
  NotifyChanged();
}

}  // namespace tarnwick
