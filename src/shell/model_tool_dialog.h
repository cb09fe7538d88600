#pragma once
// A modal tool dialog made of a dialog model and the view that shows it:
// ArcApplication makes the model over the host objects (all its set-up
// happens there), ShowModal hands it to the view until it unloads.
#include <functional>
#include <memory>
#include <utility>

#include "presentation/tool_dialog_model.h"
#include "shell/tool_dialogs.h"

namespace tarnwick {

class ModelToolDialog final : public ToolDialog {
 public:
  using MakeModel = std::function<std::unique_ptr<DialogModel>(HostArray& host)>;

  ModelToolDialog(MakeModel make, ShowModalDialog show) : make_(std::move(make)), show_(std::move(show)) {}

  void ArcApplication(HostArray& host) override { model_ = make_(host); }
  void ShowModal() override {
    if (model_) show_(*model_);
  }

 private:
  MakeModel make_;
  ShowModalDialog show_;
  std::unique_ptr<DialogModel> model_;
};

}  // namespace tarnwick
