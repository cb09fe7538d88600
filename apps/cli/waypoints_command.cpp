#include "commands.h"

namespace tarnwick::cli {

void RegisterWaypoints(CLI::App&, CommandAction&) {}

}  // namespace tarnwick::cli
