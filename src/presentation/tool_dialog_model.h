#pragma once
// What the tool dialogs share beyond the plain dialog model: they stay on
// top of the host's window, open at a fixed place on the screen, keep their
// controls placed by anchoring rules when resized, and refuse an OK by
// showing a check's message and marking its control.
#include <string>
#include <string_view>
#include <vector>

#include "presentation/dialog_checks.h"
#include "presentation/dialog_model.h"

namespace tarnwick {

// A control's anchoring rules, horizontal and vertical: 0 position and size
// scale, 1 fixed start and size scales, 2 fixed, 3 stretches (far margin
// kept), 4 centre scales, 5 moves with the far edge, 6 far margin kept and
// size scales.
struct AnchorModes {
  std::string control;
  int horizontal = 2;
  int vertical = 2;
};

class ToolDialogModel : public DialogModel {
 public:
  using DialogModel::DialogModel;

  bool topmost = true;
  // The rules a view applies on resize, in the order the form registers them.
  std::vector<AnchorModes> anchors;

  // The form's place on a screen of that size (twips): centred across, and
  // down by screen height / divisor - form height / divisor.
  ControlBounds PlaceOnScreen(long screenWidth, long screenHeight) const;

 protected:
  // 3 for the tools; the chooser sits a little lower.
  double placementDivisor_ = 3;

  // Adds a control with its bounds.
  Control& AddControl(std::string name, ControlKind kind, ControlBounds bounds, std::string caption = {});
  // The form's inner height ends at the lower edge of that control.
  void EndFormAt(std::string_view control);
  // Shows a failed check as the dialogs do: the box (or the report window)
  // and the control marked yellow with the focus.
  void Refuse(platform::host::Application& application, const CheckMessage& message);
  // A control turns white again once the user touches it.
  void Whiten(std::string_view control);
};

}  // namespace tarnwick
