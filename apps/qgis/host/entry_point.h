#pragma once
// Qt must never meet an exception: it would end QGIS. Every slot of the
// plugin runs its body here, where an error ends its climb as at any entry
// point of the error road: the stack in the message window and the log file
// beside the project.
#include <functional>
#include <string_view>

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick::desktop {

struct ErrorHost {
  platform::host::Application* application = nullptr;
  const platform::host::MapDocument* document = nullptr;
};

void RunAsEntryPoint(std::string_view routine, std::string_view module, const ErrorHost& host,
                     const std::function<void()>& body) noexcept;

}  // namespace tarnwick::desktop
