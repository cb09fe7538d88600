#include "host/entry_point.h"

#include "presentation/error_handling.h"

namespace tarnwick::desktop {

void RunAsEntryPoint(std::string_view routine, std::string_view module, const ErrorHost& host,
                     const std::function<void()>& body) noexcept {
  try {
    body();
  } catch (...) {
    HandleErrorAtEntryPoint(routine, module, host.application, host.document);
  }
}

}  // namespace tarnwick::desktop
