#pragma once
// What a command needs of the dialog it opens. The desktop implements these
// with its windows around the dialog models; tests with small fakes.
#include <any>
#include <functional>
#include <memory>
#include <string>

#include "shell/host_array.h"

namespace tarnwick {

// A dialog shown modally (Import Stand IDs, Waypoint Converter). Its OK
// stores the parameter set in the extension's result member and sets
// ShouldContinue; Cancel clears ShouldContinue.
class ToolDialog {
 public:
  virtual ~ToolDialog() = default;
  // Hands the dialog the host objects; all its initialisation happens here.
  virtual void ArcApplication(HostArray& host) = 0;
  // Returns when the dialog has closed.
  virtual void ShowModal() = 0;
};

// A window of the host that stays open beside the map.
class ModelessFrame {
 public:
  virtual void SetCaption(const std::string& caption) = 0;
  virtual void SetVisible(bool visible) = 0;

 protected:
  ~ModelessFrame() = default;
};

// A dialog shown beside the map (Plot Layout): it stays open while the user
// clicks in the map, runs its tool from its own OK and closes itself.
class ModelessToolDialog {
 public:
  virtual void ArcApplication(HostArray& host) = 0;
  virtual ModelessFrame& Frame() = 0;

 protected:
  ~ModelessToolDialog() = default;
};

// Makes a new modal dialog for each click.
using ToolDialogFactory = std::function<std::unique_ptr<ToolDialog>()>;
// Makes a new modeless dialog for each click. The host owns it and lets it
// go when its window closes.
using ModelessToolDialogFactory = std::function<ModelessToolDialog&()>;
// A tool's run from the host objects and the dialog's parameter set (the
// extension's result member); returns the RTF report, empty when it failed.
using ToolDriver = std::function<std::string(HostArray& host, const std::any& parameters)>;

}  // namespace tarnwick
