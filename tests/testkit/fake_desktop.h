#pragma once
// A test host with the desktop's save dialogs: it records the save dialogs
// asked for and answers them from a queue (cancelled when it is empty).
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "testkit/fake_application.h"

namespace tarnwick::testkit {

class FakeDesktop : public FakeApplication {
 public:
  std::optional<std::string> BrowseForSaveFile(const platform::host::FileSaveRequest& request) override {
    saveRequests.push_back(request);
    if (saveAnswers.empty()) return std::nullopt;
    auto answer = saveAnswers.front();
    saveAnswers.pop_front();
    return answer;
  }
  std::string ProgramFolder() const override { return "/opt/tarnwick"; }

  std::vector<platform::host::FileSaveRequest> saveRequests;
  std::deque<std::optional<std::string>> saveAnswers;
};

}  // namespace tarnwick::testkit
