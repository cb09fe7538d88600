#pragma once
// The tarnwick command: one subcommand per tool. Exit 0 on success, 2 on bad
// arguments or a failed check, 1 when a run fails.
namespace tarnwick::cli {
int Main(int argc, char** argv);
}
