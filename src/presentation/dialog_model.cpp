#include "presentation/dialog_model.h"

#include <stdexcept>

#include "presentation/error_handling.h"

namespace tarnwick {

namespace {

const char* EventName(ControlEvent event) {
  switch (event) {
    case ControlEvent::Click: return "_Click";
    case ControlEvent::Change: return "_Change";
    case ControlEvent::DblClick: return "_DblClick";
  }
  return "";
}

std::string HandlerName(std::string_view control, ControlEvent event) {
  return std::string(control) + EventName(event);
}

}  // namespace

std::string Control::SelectedEntry() const {
  if (listIndex < 0 || listIndex >= static_cast<int>(entries.size())) return {};
  return entries[static_cast<std::size_t>(listIndex)];
}

DialogModel::DialogModel(std::string module) : module_(std::move(module)) {}

Control& DialogModel::operator[](std::string_view name) {
  for (auto& control : controls_) {
    if (control.name == name) return control;
  }
  throw std::out_of_range("The dialog has no control '" + std::string(name) + "'");
}

const Control& DialogModel::operator[](std::string_view name) const {
  return const_cast<DialogModel&>(*this)[name];
}

bool DialogModel::Has(std::string_view name) const {
  for (const auto& control : controls_) {
    if (control.name == name) return true;
  }
  return false;
}

Control& DialogModel::Add(Control control) {
  controls_.push_back(std::move(control));
  return controls_.back();
}

void DialogModel::On(std::string_view control, ControlEvent event, std::function<void()> handler) {
  handlers_[HandlerName(control, event)] = std::move(handler);
}

void DialogModel::SetErrorHost(platform::host::Application* application, const platform::host::MapDocument* document) {
  application_ = application;
  document_ = document;
}

void DialogModel::NotifyChanged() const {
  if (changed) changed();
}

void DialogModel::AsEntryPoint(std::string_view routine, const std::function<void()>& body) {
  try {
    body();
  } catch (...) {
    HandleErrorAtEntryPoint(routine, module_, application_, document_);
  }
}

void DialogModel::RunHandler(std::string_view control, ControlEvent event) {
  const std::string name = HandlerName(control, event);
  const auto handler = handlers_.find(name);
  if (handler != handlers_.end()) {
    // Handlers may add or remove others; run a copy.
    const std::function<void()> body = handler->second;
    AsEntryPoint(name + " ", body);
  }
  NotifyChanged();
}

void DialogModel::SetText(std::string_view name, std::string text) {
  Control& control = (*this)[name];
  if (control.text == text) return;
  control.text = std::move(text);
  RunHandler(name, ControlEvent::Change);
}

void DialogModel::SetListIndex(std::string_view name, int index) {
  Control& control = (*this)[name];
  control.listIndex = index < static_cast<int>(control.entries.size()) ? index : -1;
  RunHandler(name, ControlEvent::Click);
}

void DialogModel::SetValue(std::string_view name, int value) {
  Control& control = (*this)[name];
  if (control.value == value) return;
  control.value = value;
  if (control.kind == ControlKind::OptionButton && value != 0) {
    for (auto& other : controls_) {
      if (other.kind == ControlKind::OptionButton && other.name != name && other.group == control.group) {
        other.value = 0;
      }
    }
  }
  RunHandler(name, ControlEvent::Click);
}

void DialogModel::SetSelected(std::string_view name, int entry, bool selected) {
  Control& control = (*this)[name];
  control.selected.resize(control.entries.size(), false);
  if (entry < 0 || entry >= static_cast<int>(control.selected.size())) return;
  control.selected[static_cast<std::size_t>(entry)] = selected;
  control.listIndex = entry;
  RunHandler(name, ControlEvent::Click);
}

void DialogModel::Fire(std::string_view control, ControlEvent event) { RunHandler(control, event); }

}  // namespace tarnwick
