#pragma once
// The command line's host with a status bar that draws nothing, so that
// progress output does not weigh on the timings. Message boxes still go to
// stderr; questions are answered Yes (or OK): the benchmarks only ever
// replace their own files.
#include "platform/host/terminal_application.h"

namespace tarnwick::bench {

class SilentStatusBar : public platform::host::StatusBar {
 public:
  void ShowProgressBar(const std::string&, long, long, long, bool) override {}
  void HideProgressBar() override {}
  void SetMessage(const std::string&) override {}
  void Step() override {}
  void SetPosition(long) override {}
  void SetStatusText(const std::string&) override {}
};

class QuietApplication : public platform::host::TerminalApplication {
 public:
  QuietApplication();
  platform::host::StatusBar& GetStatusBar() override { return statusBar_; }

 private:
  SilentStatusBar statusBar_;
};

}  // namespace tarnwick::bench
