#include "presentation/tool_dialog_model.h"

#include <cmath>

namespace tarnwick {

void ToolDialogModel::Form_Load(ScreenSize screen, long nonClientHeight) {
  AsEntryPoint("Form_Load ", [&] {
    formBounds.left = std::lround(screen.width / 2.0 - formBounds.width / 2.0);
    formBounds.top = std::lround(static_cast<double>(screen.height) / placementDivisor_ -
                                 static_cast<double>(formBounds.height) / placementDivisor_);
    const ControlBounds& ok = (*this)["cmdOK"].bounds;
    formBounds.height = ok.top + ok.height + nonClientHeight;
    for (const auto& modes : anchorModes_) anchors_.Item(modes.control).SetAnchors(modes.horizontal, modes.vertical);
  });
  NotifyChanged();
}

void ToolDialogModel::Form_Resize() {
  AsEntryPoint("Form_Resize ", [this] { anchors_.DoAnchors(); });
  NotifyChanged();
}

Control& ToolDialogModel::AddControl(std::string name, ControlKind kind, ControlBounds bounds, std::string caption) {
  Control control;
  control.name = std::move(name);
  control.kind = kind;
  control.bounds = bounds;
  control.caption = std::move(caption);
  return Add(std::move(control));
}

void ToolDialogModel::Refuse(platform::host::Application& application, const CheckMessage& message) {
  switch (message.display) {
    case CheckMessage::Display::Box:
      application.MessageBox(message.text, message.title, platform::host::MessageButtons::OK, message.icon);
      break;
    case CheckMessage::Display::Report:
      application.ShowReport({message.text, message.title, platform::host::ReportWindow::Modal});
      break;
    case CheckMessage::Display::Answered:
      break;
  }
  if (!message.control.empty()) {
    (*this)[message.control].backColor = kYellow;
    focus = message.control;
  }
}

void OpenManual(platform::host::Application& application) {
  application.OpenDocument(application.ProgramFolder() + "/TNWK_ArcGIS_Tools.pdf");
}

void ToolDialogModel::Whiten(std::string_view control) { (*this)[control].backColor = kWhite; }

}  // namespace tarnwick
