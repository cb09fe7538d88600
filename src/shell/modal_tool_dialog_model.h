#pragma once
// What the modal tool dialogs (Import Stand IDs, Waypoint Converter) share:
// the host objects, the Manual and Cancel buttons, the tool version label,
// and the end of a successful OK, which leaves the parameter set in the
// extension's result member for the command to run.
#include <any>
#include <optional>
#include <string>
#include <utility>

#include "platform/host/application.h"
#include "presentation/tool_dialog_model.h"
#include "shell/extension.h"
#include "shell/host_array.h"

namespace tarnwick {

template <class Parameters>
class ModalToolDialogModel : public ToolDialogModel {
 public:
  // The parameter set OK built; none before OK or after Cancel.
  const std::optional<Parameters>& ReturnArray() const { return returnArray_; }

 protected:
  // result: the extension's member that receives the parameter set.
  ModalToolDialogModel(std::string module, HostArray host, std::any clsExtension::*result)
      : ToolDialogModel(std::move(module)), host_(host), result_(result) {
    SetErrorHost(&host_.application, &host_.document);
    On("cmdCancel", ControlEvent::Click, [this] { cmdCancel_Click(); });
    On("cmdManual", ControlEvent::Click, [this] { OpenManual(host_.application); });
  }

  // "Tool Version major.minor.revision"
  std::string ToolVersionCaption() const {
    const auto version = host_.application.GetVersion();
    return "Tool Version " + std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
           std::to_string(version.revision);
  }

  // The band along the bottom of the form: the tool version, the Manual,
  // Cancel and OK buttons with their top at buttonsTop, and the corner image
  // in the form's corner, 120 twips below the buttons, where the window ends.
  void AddButtonBand(long buttonsTop) {
    const long width = formBounds.width;
    AddControl("imgBackBottom", ControlKind::Image, {0, buttonsTop - 240, width, 735});
    AddControl("lblToolVersion", ControlKind::Label, {240, buttonsTop + 60, 2100, 255}, ToolVersionCaption());
    AddControl("cmdManual", ControlKind::CommandButton, {width - 3900, buttonsTop, 1140, 375}, "Manual");
    AddControl("cmdCancel", ControlKind::CommandButton, {width - 2640, buttonsTop, 1140, 375}, "Cancel");
    AddControl("cmdOK", ControlKind::CommandButton, {width - 1380, buttonsTop, 1140, 375}, "OK");
    AddControl("imgCornerBars", ControlKind::Image, {width - 240, buttonsTop + 255, 240, 240});
  }

  // The end of a successful OK.
  void Accept(Parameters parameters) {
    host_.extension.ShouldContinue = true;
    returnArray_ = parameters;
    host_.extension.*result_ = std::move(parameters);
    unloaded = true;
  }

  HostArray host_;

 private:
  void cmdCancel_Click() {
    host_.extension.ShouldContinue = false;
    (host_.extension.*result_).reset();
    returnArray_.reset();
    unloaded = true;
  }

  std::any clsExtension::*result_;
  std::optional<Parameters> returnArray_;
};

}  // namespace tarnwick
