#include "platform/host/interrupt_signals.h"

#include <csignal>
#include <ctime>
#include <initializer_list>

namespace tarnwick::platform::host {

namespace {

sigset_t InterruptSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGINT);
  sigaddset(&set, SIGTERM);
  sigaddset(&set, SIGHUP);
  return set;
}

}  // namespace

InterruptGuard::InterruptGuard() {
  const sigset_t set = InterruptSignals();
  sigprocmask(SIG_BLOCK, &set, nullptr);
}

InterruptGuard::~InterruptGuard() {
  while (TakeInterrupt()) {
  }
  const sigset_t set = InterruptSignals();
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

bool TakeInterrupt() {
  const sigset_t set = InterruptSignals();
  sigset_t pending;
  if (sigpending(&pending) != 0) return false;
  bool waiting = false;
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) waiting = waiting || sigismember(&pending, signal) == 1;
  if (!waiting) return false;
  const timespec now{0, 0};
  return sigtimedwait(&set, nullptr, &now) > 0;
}

}  // namespace tarnwick::platform::host
