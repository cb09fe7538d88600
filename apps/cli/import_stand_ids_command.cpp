#include "commands.h"

namespace tarnwick::cli {

void RegisterImportStandIds(CLI::App&, CommandAction&) {}

}  // namespace tarnwick::cli
