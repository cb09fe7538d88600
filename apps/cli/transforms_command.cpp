#include "commands.h"

namespace tarnwick::cli {

void RegisterTransforms(CLI::App&, CommandAction&) {}

}  // namespace tarnwick::cli
