// The command line's host: progress on stderr, message boxes as printed lines.
#include "platform/host/terminal_application.h"

#include <unistd.h>

#include <algorithm>

#include "platform/errors.h"
#include "platform/host/interrupt_signals.h"
#include "platform/version.h"

namespace tarnwick::platform::host {

namespace {
constexpr int kBarWidth = 30;
constexpr long kPermillePerLogLine = 100;  // without a terminal, a line at most every 10%
}  // namespace

TerminalStatusBar::TerminalStatusBar(std::FILE* out, bool interactive) : out_(out), interactive_(interactive) {}

void TerminalStatusBar::ShowProgressBar(const std::string& message, long min, long max, long step, bool) {
  visible_ = true;
  message_ = message;
  min_ = min;
  max_ = max;
  step_ = step;
  position_ = min;
  lastDrawnPermille_ = -1;
  if (interactive_) {
    Draw(true);
  } else {
    std::fprintf(out_, "%s\n", message.c_str());
    lastDrawnPermille_ = 0;
    std::fflush(out_);
  }
}

void TerminalStatusBar::HideProgressBar() {
  if (visible_ && interactive_) {
    std::fputs("\r\033[K", out_);
    std::fflush(out_);
  }
  visible_ = false;
}

void TerminalStatusBar::SetMessage(const std::string& message) {
  message_ = message;
  if (visible_ && interactive_) Draw(true);
}

void TerminalStatusBar::Step() {
  position_ += step_;
  Draw(false);
}

void TerminalStatusBar::SetPosition(long position) {
  position_ = position;
  Draw(false);
}

void TerminalStatusBar::SetStatusText(const std::string& text) {
  if (interactive_) {
    std::fprintf(out_, "\r\033[K%s", text.c_str());
    if (!visible_) std::fputc('\n', out_);
  } else if (!text.empty()) {
    std::fprintf(out_, "%s\n", text.c_str());
  }
  std::fflush(out_);
}

void TerminalStatusBar::Draw(bool force) {
  if (!visible_) return;
  const long span = std::max(1L, max_ - min_);
  const long permille = std::clamp((position_ - min_) * 1000 / span, 0L, 1000L);
  if (interactive_) {
    if (!force && permille == lastDrawnPermille_) return;
    lastDrawnPermille_ = permille;
    const int filled = static_cast<int>(permille * kBarWidth / 1000);
    std::string bar(filled, '#');
    bar.append(kBarWidth - filled, '-');
    std::fprintf(out_, "\r%s [%s] %3ld%%\033[K", message_.c_str(), bar.c_str(), permille / 10);
  } else {
    if (permille / kPermillePerLogLine <= lastDrawnPermille_ / kPermillePerLogLine) return;
    lastDrawnPermille_ = permille;
    std::fprintf(out_, "  %ld%%\n", permille / kPermillePerLogLine * 10);
  }
  std::fflush(out_);
}

TerminalApplication::TerminalApplication(std::FILE* out, Answerer answer)
    : out_(out), answer_(std::move(answer)), statusBar_(out, out != nullptr && isatty(fileno(out))) {}

MessageResult TerminalApplication::MessageBox(const std::string& text, const std::string& title,
                                              MessageButtons buttons, MessageIcon) {
  std::fprintf(out_, "%s: %s\n", title.c_str(), text.c_str());
  std::fflush(out_);
  if (buttons == MessageButtons::OK) return MessageResult::OK;
  if (answer_) return answer_(text, title, buttons);
  return buttons == MessageButtons::OKCancel ? MessageResult::Cancel : MessageResult::No;
}

void TerminalApplication::ShowMessageWindow(const std::string& text) {
  if (keepMessageWindowsBack_) return;
  std::fprintf(out_, "%s\n", text.c_str());
  std::fflush(out_);
}

void TerminalApplication::DoEvents() {
  if (TakeInterrupt()) throw RunInterrupted();
}

Version TerminalApplication::GetVersion() const { return {kVersionMajor, kVersionMinor, kVersionRevision}; }

// Not a desktop GIS: there is no host version number to report.
int TerminalApplication::VersionNumber() const { return -1; }

}  // namespace tarnwick::platform::host
