#include "platform/host/memory_map_document.h"
#include "cli.h"

#include <cstdio>
#include <exception>

#include <fmt/core.h>

#include "commands.h"
#include "platform/errors.h"
#include "platform/version.h"

namespace tarnwick::cli {

int Main(int argc, char** argv) {
  CLI::App app{"Tarnwick Tools: sample plot layout, stand ID import and waypoint files for forest inventory"};
  app.set_version_flag("--version", fmt::format("tarnwick {}.{}.{}", platform::kVersionMajor,
                                                platform::kVersionMinor, platform::kVersionRevision));
  app.require_subcommand(1);
  bool overwrite = false;
  CommandAction action;
  RegisterPlotLayout(app, action);
  RegisterImportStandIds(app, action);
  RegisterWaypoints(app, action);
  RegisterTransforms(app, action);
  for (auto* sub : app.get_subcommands({})) {
    sub->add_flag("--overwrite", overwrite, "Replace an existing output without asking");
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    // One line that names the option and the value; --help lists them all.
    std::fprintf(stderr, "tarnwick: %s\n", e.what());
    return kExitBadInput;
  }
  using platform::host::MessageButtons;
  using platform::host::MessageResult;
  platform::host::TerminalApplication application(
      stderr, [&overwrite](const std::string&, const std::string&, MessageButtons buttons) {
        if (buttons == MessageButtons::YesNo || buttons == MessageButtons::YesNoCancel) {
          return overwrite ? MessageResult::Yes : MessageResult::No;
        }
        return overwrite ? MessageResult::OK : MessageResult::Cancel;
      });
  // The first line of a failed run says what went wrong; the error road's
  // call stack goes to the log file.
  application.KeepMessageWindowsBack(true);
  platform::host::MemoryMapDocument document("", "Untitled");
  CommandContext context{application, document, overwrite};
  try {
    return action ? action(context) : kExitBadInput;
  } catch (const UsageError& e) {
    std::fprintf(stderr, "tarnwick: %s\n", e.what());
    return kExitBadInput;
  } catch (const platform::RunInterrupted&) {
    std::fprintf(stderr, "tarnwick: interrupted; nothing was changed.\n");
    return kExitInterrupted;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "tarnwick: %s\n", e.what());
    return kExitRunFailed;
  }
}

}  // namespace tarnwick::cli
