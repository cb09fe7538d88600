#pragma once
// The host objects a command hands to its dialog and its tool's run.
namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

class clsExtension;

struct HostArray {
  platform::host::Application& application;
  platform::host::MapDocument& document;
  clsExtension& extension;
};

}  // namespace tarnwick
