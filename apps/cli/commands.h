#pragma once
// The subcommands of the tarnwick command. Each registers itself on the
// application and runs through RunCommand, which maps outcomes to exit codes.
#include <functional>
#include <string>

#include <CLI/CLI.hpp>

#include "platform/host/map_document.h"
#include "platform/host/terminal_application.h"
#include "usage_error.h"

namespace tarnwick::cli {

// Exit codes of the command line; an interrupted run exits as a program
// ended by Ctrl-C does.
enum ExitCode : int { kExitSuccess = 0, kExitRunFailed = 1, kExitBadInput = 2, kExitInterrupted = 130 };

// What every subcommand shares: the terminal host and the run's document
// (the command line's runs have no map document file; logs go to the
// working directory).
struct CommandContext {
  platform::host::TerminalApplication& application;
  platform::host::MapDocument& document;
  bool overwrite = false;  // answers Yes to "already exists" questions
};

using CommandAction = std::function<int(CommandContext&)>;

void RegisterPlotLayout(CLI::App& app, CommandAction& action);
void RegisterImportStandIds(CLI::App& app, CommandAction& action);
void RegisterWaypoints(CLI::App& app, CommandAction& action);
void RegisterTransforms(CLI::App& app, CommandAction& action);

}  // namespace tarnwick::cli
