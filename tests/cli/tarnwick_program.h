#pragma once
// Runs the tarnwick program built with these tests, in a folder.
#include <string>

#include "testkit/run_command.h"

namespace tarnwick {

inline testkit::CommandRun Tarnwick(const testkit::TempDir& dir, const std::string& arguments) {
  return testkit::RunCommand(dir, TARNWICK_EXE, arguments);
}

}  // namespace tarnwick
