#pragma once
// The toolbar's commands. Each keeps the host objects it found at creation
// and, on a click, opens its dialog; the modal ones then run their tool's
// driver and show its report. The desktop supplies the dialogs and the
// drivers; the flow is the same everywhere.
#include <any>
#include <functional>
#include <string>

#include "shell/command_table.h"
#include "shell/tool_dialogs.h"

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

class clsExtension;

// What every command (and the map tool) keeps and answers.
class TarnwickCommand {
 public:
  explicit TarnwickCommand(const CommandInfo& info) : info_(info) {}
  virtual ~TarnwickCommand() = default;

  const CommandInfo& Info() const { return info_; }
  bool Enabled() const { return CommandEnabled(info_, extension_); }
  bool Checked() const { return CommandInfo::Checked; }
  std::string Name() const { return std::string(info_.Name); }
  std::string Caption() const { return std::string(info_.Caption); }
  std::string Tooltip() const { return std::string(info_.Tooltip); }
  std::string Message() const { return std::string(info_.Message); }
  std::string HelpFile() const { return std::string(CommandInfo::HelpFile); }
  long HelpContextID() const { return CommandInfo::HelpContextID; }
  int Bitmap() const { return info_.Bitmap; }
  std::string Category() const { return std::string(CommandInfo::Category); }

  // Keeps the host and the extension it found (null when it has none).
  void OnCreate(platform::host::Application& application, platform::host::MapDocument& document,
                clsExtension* extension);
  virtual void OnClick() = 0;

 protected:
  // Runs body as the entry point named routine under this class's source.
  void AsEntryPoint(const char* routine, const std::function<void()>& body);
  // The host objects; throws when OnCreate has not found them all.
  HostArray Host() const;

  platform::host::Application* application_ = nullptr;
  platform::host::MapDocument* document_ = nullptr;
  clsExtension* extension_ = nullptr;

 private:
  const CommandInfo& info_;
};

// The report text shown when a driver returned none.
inline constexpr const char* kFunctionFailed = "Function Failed...";

// A command whose dialog is modal: after a successful OK it runs the driver
// on the dialog's result member and shows the report in a modal window.
class ModalToolCommand : public TarnwickCommand {
 public:
  ModalToolCommand(const CommandInfo& info, std::any clsExtension::*resultMember, ToolDialogFactory dialog,
                   ToolDriver driver);
  void OnClick() override;

 private:
  std::any clsExtension::*resultMember_;
  ToolDialogFactory dialog_;
  ToolDriver driver_;
};

// Import Stand IDs: frmTransferStandIDs, frmTransferStandIDReturn, ImportStandIDValues.
class clsTransferStandIDs : public ModalToolCommand {
 public:
  clsTransferStandIDs(ToolDialogFactory dialog, ToolDriver driver);
};

// Waypoint Converter: frmLayerID, frmLayerIDReturn, CreateWaypointFile.
class cmdTNWKWPConverter : public ModalToolCommand {
 public:
  cmdTNWKWPConverter(ToolDialogFactory dialog, ToolDriver driver);
};

// Plot Layout: opens its dialog beside the map and leaves the run to the
// dialog's OK.
class clsPlotLayout : public TarnwickCommand {
 public:
  static constexpr const char* kFrameCaption = " Plot Layout Parameters:";
  explicit clsPlotLayout(ModelessToolDialogFactory dialog);
  void OnClick() override;

 private:
  ModelessToolDialogFactory dialog_;
};

}  // namespace tarnwick
