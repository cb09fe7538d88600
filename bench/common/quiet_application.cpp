#include "common/quiet_application.h"

namespace tarnwick::bench {

using platform::host::MessageButtons;
using platform::host::MessageResult;

QuietApplication::QuietApplication()
    : TerminalApplication(stderr, [](const std::string&, const std::string&, MessageButtons buttons) {
        return buttons == MessageButtons::OKCancel ? MessageResult::OK : MessageResult::Yes;
      }) {}

}  // namespace tarnwick::bench
