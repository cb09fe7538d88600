#include "commands.h"

namespace tarnwick::cli {

void RegisterPlotLayout(CLI::App&, CommandAction&) {}

}  // namespace tarnwick::cli
