#include "shell/commands.h"

#include "platform/errors.h"
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "presentation/error_handling.h"
#include "shell/extension.h"

namespace tarnwick {

void TarnwickCommand::OnCreate(platform::host::Application& application, platform::host::MapDocument& document,
                               clsExtension* extension) {
  application_ = &application;
  AsEntryPoint("ICommand_OnCreate ", [&] {
    document_ = &document;
    extension_ = extension;
  });
}

void TarnwickCommand::AsEntryPoint(const char* routine, const std::function<void()>& body) {
  try {
    body();
  } catch (...) {
    HandleErrorAtEntryPoint(routine, info_.module, application_, document_);
  }
}

HostArray TarnwickCommand::Host() const {
  if (!application_ || !document_ || !extension_) {
    RaiseError(platform::kErrObjectNotSet, std::string(info_.className),
               "Object variable or With block variable not set");
  }
  return HostArray{*application_, *document_, *extension_};
}

ModalToolCommand::ModalToolCommand(const CommandInfo& info, std::any clsExtension::*resultMember,
                                   ToolDialogFactory dialog, ToolDriver driver)
    : TarnwickCommand(info), resultMember_(resultMember), dialog_(std::move(dialog)), driver_(std::move(driver)) {}

void ModalToolCommand::OnClick() {
  AsEntryPoint("ICommand_OnClick ", [this] {
    HostArray host = Host();
    {
      const std::unique_ptr<ToolDialog> dialog = dialog_();
      dialog->ArcApplication(host);
      dialog->ShowModal();
    }
    if (!host.extension.ShouldContinue) return;  // cancelled: nothing ran, nothing changed

    std::string report = driver_(host, host.extension.*resultMember_);
    host.application.RefreshWindow();
    host.application.DoEvents();
    if (report.empty()) report = kFunctionFailed;
    host.application.ShowReport({.text = report, .window = platform::host::ReportWindow::Modal});

    (host.extension.*resultMember_).reset();
    host.document.SetDirty(true);
  });
}

clsTransferStandIDs::clsTransferStandIDs(ToolDialogFactory dialog, ToolDriver driver)
    : ModalToolCommand(kTransferStandIDsCommand, &clsExtension::frmTransferStandIDReturn, std::move(dialog),
                       std::move(driver)) {}

cmdTNWKWPConverter::cmdTNWKWPConverter(ToolDialogFactory dialog, ToolDriver driver)
    : ModalToolCommand(kWaypointConverterCommand, &clsExtension::frmLayerIDReturn, std::move(dialog),
                       std::move(driver)) {}

clsPlotLayout::clsPlotLayout(ModelessToolDialogFactory dialog)
    : TarnwickCommand(kPlotLayoutCommand), dialog_(std::move(dialog)) {}

void clsPlotLayout::OnClick() {
  AsEntryPoint("ICommand_OnClick ", [this] {
    HostArray host = Host();
    ModelessToolDialog& dialog = dialog_();
    dialog.ArcApplication(host);
    dialog.Frame().SetCaption(kFrameCaption);
    dialog.Frame().SetVisible(true);
    // Marked at once: the dialog runs the tool itself, after this returns.
    host.document.SetDirty(true);
  });
}

}  // namespace tarnwick
