#include "shell/sel_point_tool.h"

#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "shell/extension.h"
#include "support/host_operations.h"

namespace tarnwick {

namespace {

constexpr int kLeftButton = 1;

// Raises the dialog's re-entry flag around a press of its toggle button, so
// that the button only changes its face and leaves the current tool alone.
template <class Press>
void PressWithoutToolChange(PlotLayoutFormLink& form, Press&& press) {
  form.SetInitializingForm(true);
  press();
  form.SetInitializingForm(false);
}

}  // namespace

PlotLayoutFormLink* clsSelPointTool::Form() const { return extension_ ? extension_->PlotLayoutForm : nullptr; }

void clsSelPointTool::OnClick() {
  AsEntryPoint("ICommand_OnClick ", [&] {
    application_->GetStatusBar().SetStatusText("Click on new location to select point...");
    if (PlotLayoutFormLink* form = Form()) PressWithoutToolChange(*form, [&] { form->imgButtonUp_Click(); });
  });
}

void clsSelPointTool::WriteToDialog(double x, double y) {
  PlotLayoutFormLink* form = Form();
  if (!form) return;
  form->SetAnchorX(x);
  form->SetAnchorY(y);
  form->WriteAnchorCoordinates();
}

void clsSelPointTool::OnMouseDown(int, int, double x, double y) {
  AsEntryPoint("ITool_OnMouseDown ", [&] {
    // With no dialog open a click changes nothing, not even the marker.
    if (!Form()) return;
    WriteToDialog(x, y);
    platform::host::Map& map = document_->FocusMap();
    DeleteGraphicsByName(map, kAnchorMarkerName);
    map.AddGraphic({kAnchorMarkerName, x, y, 12, {0, 155, 0}});
  });
}

void clsSelPointTool::OnMouseMove(int button, int, double x, double y) {
  AsEntryPoint("ITool_OnMouseMove ", [&] {
    if (button == kLeftButton) WriteToDialog(x, y);
  });
}

void clsSelPointTool::OnMouseUp(int, int, double x, double y) {
  AsEntryPoint("ITool_OnMouseUp ", [&] { WriteToDialog(x, y); });
}

bool clsSelPointTool::Deactivate() {
  AsEntryPoint("ITool_Deactivate ", [&] {
    if (PlotLayoutFormLink* form = Form()) PressWithoutToolChange(*form, [&] { form->imgButtonDown_Click(); });
  });
  return true;
}

}  // namespace tarnwick
