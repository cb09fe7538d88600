#pragma once
// Ctrl-C during a run. While an InterruptGuard lives, SIGINT, SIGTERM and
// SIGHUP are held back instead of ending the program; the terminal host's
// DoEvents turns one into platform::RunInterrupted at its next turn, and the
// run unwinds through its edit session, which rolls back and leaves no
// journal behind. Outside a guard the signals end the program as usual
// (nothing is being changed then).
namespace tarnwick::platform::host {

class InterruptGuard {
 public:
  InterruptGuard();
  // Lets the signals through again; one that arrived after the run's last
  // turn is dropped, the run having finished.
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;
};

// True, and the signal taken, when one of the held-back signals waits.
bool TakeInterrupt();

}  // namespace tarnwick::platform::host
