#pragma once
// The host services a tool run uses: the status bar with its progressor,
// message boxes, the shared message window, the user's name and the
// product's version; and those only the desktop has: the current map tool,
// save dialogs, report windows and opening a document. The command line and
// the desktop each implement them; tests use a fake.
#include <optional>
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

// What a save dialog over datasets returns: the name typed, the location
// chosen (a folder, a .gdb or .gpkg, or a feature dataset inside one) and the
// location's kind as the host names it ("Folder", "File Geodatabase",
// "File Geodatabase Feature Dataset", ...).
struct DatasetSaveChoice {
  std::string name;
  std::string location;
  std::string category;
};

struct FileSaveRequest {
  std::string title;
  std::string filter;  // "Description (*.ext)|*.ext"
  std::string initialDirectory;
  std::string fileName;
};

enum class ReportWindow { Modal, Modeless };

// A report to show in a report window: RTF, or plain text when it does not
// start with "{\rtf".
struct ReportRequest {
  std::string text;
  std::string caption;  // the window's caption; empty keeps the window's own
  ReportWindow window = ReportWindow::Modal;
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

  // Desktop services. A host without a desktop (the command line) keeps the
  // defaults: no map tool, every dialog cancelled, reports and documents
  // left unshown.

  // The map tool in use, by the command's ProgID ("Tarnwick.clsSelPointTool");
  // empty when the host's own or no tool is in use. Setting "" drops ours.
  virtual std::string CurrentTool() const { return {}; }
  virtual void SetCurrentTool(const std::string& progId) {}
  // Asks the host to read a command's Enabled state again (its button).
  virtual void RefreshCommandItem(const std::string& progId) {}
  // Save dialogs; nullopt when the user cancels.
  virtual std::optional<DatasetSaveChoice> BrowseForNewDataset(const std::string& title,
                                                               const std::string& suggestedName) {
    return std::nullopt;
  }
  virtual std::optional<std::string> BrowseForSaveFile(const FileSaveRequest& request) { return std::nullopt; }
  virtual void ShowReport(const ReportRequest& report) {}
  // Opens a document (the manual) in the desktop's viewer for its kind.
  virtual void OpenDocument(const std::string& path) {}
  // The folder the program's files are installed in (the manual sits there).
  virtual std::string ProgramFolder() const { return {}; }
  // Brings the main window forward and repaints it.
  virtual void RefreshWindow() { DoEvents(); }
};

}  // namespace tarnwick::platform::host
