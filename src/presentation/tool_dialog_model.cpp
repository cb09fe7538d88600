#include "presentation/tool_dialog_model.h"

#include <cmath>

namespace tarnwick {

ControlBounds ToolDialogModel::PlaceOnScreen(long screenWidth, long screenHeight) const {
  ControlBounds placed = formBounds;
  placed.left = screenWidth / 2 - formBounds.width / 2;
  placed.top = std::lround(static_cast<double>(screenHeight) / placementDivisor_ -
                           static_cast<double>(formBounds.height) / placementDivisor_);
  return placed;
}

Control& ToolDialogModel::AddControl(std::string name, ControlKind kind, ControlBounds bounds, std::string caption) {
  Control control;
  control.name = std::move(name);
  control.kind = kind;
  control.bounds = bounds;
  control.caption = std::move(caption);
  return Add(std::move(control));
}

void ToolDialogModel::EndFormAt(std::string_view control) {
  const ControlBounds& bounds = (*this)[control].bounds;
  formBounds.height = bounds.top + bounds.height;
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

void ToolDialogModel::Whiten(std::string_view control) { (*this)[control].backColor = kWhite; }

}  // namespace tarnwick
