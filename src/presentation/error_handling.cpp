#include "presentation/error_handling.h"

#include <filesystem>
#include <system_error>

#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "platform/version.h"
#include "support/file_operations.h"
#include "support/path_operations.h"
#include "support/time_operations.h"

namespace tarnwick {
namespace {
std::string Banner(const platform::host::Application* application, long number, const std::string& description) {
  platform::host::Version v{platform::kVersionMajor, platform::kVersionMinor, platform::kVersionRevision};
  if (application) v = application->GetVersion();
  return "TNWK Waypoint Converter v. " + std::to_string(v.major) + "." + std::to_string(v.minor) + "." +
         std::to_string(v.revision) + ":  Error Number " + std::to_string(number) + std::string(kLineBreak) +
         "Description:  " + description + std::string(kLineBreak) + std::string(kLineBreak);
}

std::string LogDirectory(const platform::host::MapDocument* document) {
  const std::string docPath = document ? GetMxDocPath(*document) : std::string();
  if (!docPath.empty()) return ReturnDir2(docPath, true);
  std::error_code ec;
  const auto cwd = std::filesystem::current_path(ec);
  return ReturnDir2(ec ? std::string("./") : cwd.string() + "/", true);
}
}  // namespace

ErrorLog HandleErrorAtEntryPoint(std::string_view routine, std::string_view module,
                                 platform::host::Application* application,
                                 const platform::host::MapDocument* document, SourceLocation where) {
  return HandleErrorAtEntryPoint(routine, module, application, document, static_cast<long>(where.line()));
}

ErrorLog HandleErrorAtEntryPoint(std::string_view routine, std::string_view module,
                                 platform::host::Application* application,
                                 const platform::host::MapDocument* document, long line) {
  ErrorLog log;
  try {
    CaughtError error = CurrentError(module);
    if (!error.climbing) error.description = Banner(application, error.number, error.description);
    log.number = error.number;
    log.reason = error.reason;

    const std::string location = LocationText(routine, module, line);
    const std::string title = document ? document->Title() : std::string();
    std::string path;
    try {
      path = LogDirectory(document) + "Tarnwick_Error_Log_" + ReturnTimeStamp() + ".txt";
    } catch (...) {
    }
    const std::string br(kLineBreak);
    log.text = "Error in '" + title + ".mxd'" + br + "Record Call Stack Sequence - Bottom line is error line." + br +
               br + "Log file saved to:" + br + "  --> " + path + br + br + location + br + error.description;

    // Showing and logging must never stop the tool.
    try {
      if (application) application->ShowMessageWindow(log.text);
    } catch (...) {
    }
    try {
      if (!path.empty() && WriteTextFileOverwrite(path, log.text)) log.path = path;
    } catch (...) {
    }
  } catch (...) {
  }
  return log;
}

std::string ErrorDisplayText(long displayStyle, std::string_view location, std::string_view description) {
  const std::string br(kLineBreak);
  if (displayStyle == 2 || displayStyle == 3) return std::string(location) + br + std::string(description);
  return "An error has occured in the application.   Record the call stack sequence" + br +
         "and the description of the error." + br + br + "Error Call Stack Sequence " + br + "\t" +
         std::string(location) + br + std::string(description);
}

void ShowErrorInStyle(platform::host::Application& application, long displayStyle, std::string_view location,
                      std::string_view description) {
  application.MessageBox(ErrorDisplayText(displayStyle, location, description), "Unexpected Program Error",
                         platform::host::MessageButtons::OK, platform::host::MessageIcon::Exclamation);
}

}  // namespace tarnwick
