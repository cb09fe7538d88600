#pragma once
// What the tool dialogs share beyond the plain dialog model: they stay on
// top of the host's window, open at a fixed place on the screen, keep their
// controls placed by anchoring rules when resized, and refuse an OK by
// showing a check's message and marking its control.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "presentation/anchoring.h"
#include "presentation/dialog_checks.h"
#include "presentation/dialog_model.h"
#include "presentation/report_dialog.h"

namespace tarnwick {

class ToolDialogModel : public DialogModel {
 public:
  using DialogModel::DialogModel;

  bool topmost = true;

  // Places the form on the screen (centred across, and down by screen
  // height / d - form height / d, d being 3 for the tools), ends it at the
  // lower edge of cmdOK and registers the controls' anchors.
  // nonClientHeight: the form's outer height minus its inner height (0 for
  // a view whose bounds are inner).
  void Form_Load(ScreenSize screen, long nonClientHeight);
  // After the view has set formBounds to the new size.
  void Form_Resize();

 protected:
  double placementDivisor_ = 3;
  // Each control's horizontal and vertical anchoring rules, registered at
  // Form_Load in this order.
  struct AnchorModes {
    std::string control;
    long horizontal = 2;
    long vertical = 2;
  };
  std::vector<AnchorModes> anchorModes_;

  // Adds a control with its bounds.
  Control& AddControl(std::string name, ControlKind kind, ControlBounds bounds, std::string caption = {});
  // Shows a failed check as the dialogs do: the box (or the report window)
  // and the control marked yellow with the focus.
  void Refuse(platform::host::Application& application, const CheckMessage& message);
  // A control turns white again once the user touches it.
  void Whiten(std::string_view control);

 private:
  AnchorObjectList anchors_{*this};
};

// Opens the manual, "TNWK_ArcGIS_Tools.pdf" in the program's folder.
void OpenManual(platform::host::Application& application);

// Shows a dialog model modally: returns once the dialog has unloaded itself
// (or the user closed its window). The desktop's views supply it.
using ShowModalDialog = std::function<void(DialogModel&)>;

}  // namespace tarnwick
