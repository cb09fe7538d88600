#pragma once
// A host for tests: records status-bar traffic, message boxes and message
// windows, and answers questions from a queue (No when it is empty).
#include <deque>
#include <string>
#include <vector>

#include "platform/host/application.h"

namespace tarnwick::testkit {

struct ShownMessage {
  std::string text;
  std::string title;
  platform::host::MessageButtons buttons;
};

class FakeStatusBar : public platform::host::StatusBar {
 public:
  void ShowProgressBar(const std::string& message, long, long, long, bool) override {
    visible = true;
    messages.push_back(message);
  }
  void HideProgressBar() override { visible = false; }
  void SetMessage(const std::string& message) override { messages.push_back(message); }
  void Step() override { ++position; }
  void SetPosition(long p) override { position = p; }
  void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }

  bool visible = false;
  long position = 0;
  std::vector<std::string> messages;
  std::vector<std::string> statusTexts;
};

class FakeApplication : public platform::host::Application {
 public:
  platform::host::StatusBar& GetStatusBar() override { return statusBar; }
  platform::host::MessageResult MessageBox(const std::string& text, const std::string& title,
                                           platform::host::MessageButtons buttons,
                                           platform::host::MessageIcon) override {
    boxes.push_back({text, title, buttons});
    if (answers.empty()) {
      return buttons == platform::host::MessageButtons::OK ? platform::host::MessageResult::OK
                                                            : platform::host::MessageResult::No;
    }
    auto answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void ShowMessageWindow(const std::string& text) override { windows.push_back(text); }
  void DoEvents() override { ++yields; }
  platform::host::Version GetVersion() const override { return {1, 2, 3}; }
  int VersionNumber() const override { return 6; }
  void ShowReport(const platform::host::ReportRequest& report) override { reports.push_back(report); }

  FakeStatusBar statusBar;
  std::vector<ShownMessage> boxes;
  std::vector<std::string> windows;
  std::deque<platform::host::MessageResult> answers;
  std::vector<platform::host::ReportRequest> reports;
  int yields = 0;
};

}  // namespace tarnwick::testkit
