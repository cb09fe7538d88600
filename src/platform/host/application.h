#pragma once
// The host services a tool run uses: the status bar with its progressor,
// message boxes, the shared message window, the user's name and the
// product's version. The command line and the desktop each implement them;
// tests use a fake.
#include <string>

namespace tarnwick::platform::host {

class StatusBar {
 public:
  virtual ~StatusBar() = default;
  virtual void ShowProgressBar(const std::string& message, long min, long max, long step, bool onePanel) = 0;
  virtual void HideProgressBar() = 0;
  virtual void SetMessage(const std::string& message) = 0;
  virtual void Step() = 0;
  virtual void SetPosition(long position) = 0;
  virtual void SetStatusText(const std::string& text) = 0;
};

enum class MessageButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MessageIcon { None, Information, Exclamation, Critical, Question };
enum class MessageResult { OK, Cancel, Yes, No };

struct Version {
  int major = 0;
  int minor = 0;
  int revision = 0;
};

class Application {
 public:
  virtual ~Application() = default;
  virtual StatusBar& GetStatusBar() = 0;
  virtual MessageResult MessageBox(const std::string& text, const std::string& title,
                                   MessageButtons buttons = MessageButtons::OK,
                                   MessageIcon icon = MessageIcon::None) = 0;
  // The platform's shared message window, shown modal.
  virtual void ShowMessageWindow(const std::string& text) = 0;
  // Lets the host repaint between units of long work.
  virtual void DoEvents() = 0;
  virtual Version GetVersion() const = 0;
  // The host's version number as the metadata's format version reads it.
  virtual int VersionNumber() const = 0;
};

}  // namespace tarnwick::platform::host
