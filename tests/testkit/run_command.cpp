#include "testkit/run_command.h"

#include <sys/wait.h>

#include <cstdlib>

namespace tarnwick::testkit {

CommandRun RunCommand(const TempDir& dir, const std::string& program, const std::string& arguments) {
  const std::string out = dir / "stdout.txt";
  const std::string err = dir / "stderr.txt";
  const std::string command = "cd '" + dir.path().string() + "' && '" + program + "' " + arguments + " >'" + out +
                              "' 2>'" + err + "'";
  const int status = std::system(command.c_str());
  return CommandRun{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
}

}  // namespace tarnwick::testkit
