#pragma once
// Runs a program in a folder and keeps its exit code, stdout and stderr.
#include <string>

#include "testkit/temp_dir.h"

namespace tarnwick::testkit {

struct CommandRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

// Runs `program arguments` (arguments already quoted as a shell needs) with
// the folder as working directory.
CommandRun RunCommand(const TempDir& dir, const std::string& program, const std::string& arguments);

}  // namespace tarnwick::testkit
