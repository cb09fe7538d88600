#pragma once
// The command line's host: a progress bar on the terminal (stderr), message
// boxes printed to stderr, and Yes/No questions answered by the caller's
// flags instead of a person.
#include <cstdio>
#include <functional>
#include <string>

#include "platform/host/application.h"

namespace tarnwick::platform::host {

class TerminalStatusBar : public StatusBar {
 public:
  explicit TerminalStatusBar(std::FILE* out, bool interactive);
  void ShowProgressBar(const std::string& message, long min, long max, long step, bool onePanel) override;
  void HideProgressBar() override;
  void SetMessage(const std::string& message) override;
  void Step() override;
  void SetPosition(long position) override;
  void SetStatusText(const std::string& text) override;

 private:
  void Draw(bool force);
  std::FILE* out_;
  bool interactive_;
  bool visible_ = false;
  std::string message_;
  long min_ = 0, max_ = 0, step_ = 1, position_ = 0;
  long lastDrawnPermille_ = -1;
};

class TerminalApplication : public Application {
 public:
  // answer decides Yes/No and OK/Cancel questions; by default every question
  // is answered No (or Cancel).
  using Answerer = std::function<MessageResult(const std::string& text, const std::string& title,
                                               MessageButtons buttons)>;
  explicit TerminalApplication(std::FILE* out = stderr, Answerer answer = {});
  StatusBar& GetStatusBar() override { return statusBar_; }
  MessageResult MessageBox(const std::string& text, const std::string& title, MessageButtons buttons,
                           MessageIcon icon) override;
  // Prints the text, unless message windows are kept back (see below).
  void ShowMessageWindow(const std::string& text) override;
  // Throws platform::RunInterrupted when Ctrl-C was pressed during the run
  // (see interrupt_signals.h).
  void DoEvents() override;
  Version GetVersion() const override;
  int VersionNumber() const override;

  // A command line that says in a line of its own what went wrong keeps the
  // error road's call stack in the log file instead of printing it.
  void KeepMessageWindowsBack(bool keep) { keepMessageWindowsBack_ = keep; }

 private:
  std::FILE* out_;
  Answerer answer_;
  bool keepMessageWindowsBack_ = false;
  TerminalStatusBar statusBar_;
};

}  // namespace tarnwick::platform::host
