#include "presentation/error_handling.h"

#include <filesystem>
#include <new>
#include <stdexcept>
#include <system_error>

#include "platform/errors.h"
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "platform/version.h"
#include "support/file_operations.h"
#include "support/host_operations.h"
#include "support/path_operations.h"
#include "support/time_operations.h"

namespace tarnwick {
namespace {
constexpr long kErrOutOfMemory = 7;
constexpr long kErrSubscriptOutOfRange = 9;

struct CaughtError {
  long number;
  std::string source;
  std::string description;
  bool climbing;
};

// Reads the exception being handled, whatever its type.
CaughtError CurrentError(std::string_view module) {
  if (!std::current_exception()) {
    return {platform::kErrInvalidProcedureCall, std::string(module), "No error is being handled", false};
  }
  try {
    throw;
  } catch (const RoutineError& e) {
    return {e.Number(), e.Source(), e.Description(), e.Climbing()};
  } catch (const platform::PlatformError& e) {
    return {e.Number(), e.Source(), e.what(), false};
  } catch (const std::bad_alloc&) {
    return {kErrOutOfMemory, std::string(module), "Out of memory", false};
  } catch (const std::out_of_range& e) {
    return {kErrSubscriptOutOfRange, std::string(module), e.what(), false};
  } catch (const std::overflow_error& e) {
    return {platform::kErrOverflow, std::string(module), e.what(), false};
  } catch (const std::exception& e) {
    return {platform::kErrInvalidProcedureCall, std::string(module), e.what(), false};
  } catch (...) {
    return {platform::kErrInvalidProcedureCall, std::string(module), "Unknown error", false};
  }
}

// The lowest level of the stack: number and description under headings.
std::string FirstLevel(long number, const std::string& description) {
  return "\nError Number \n\t" + std::to_string(number) + "\nDescription\n\t" + description + "\n\n";
}

std::string Banner(const platform::host::Application* application, long number, const std::string& description) {
  platform::host::Version v{platform::kVersionMajor, platform::kVersionMinor, platform::kVersionRevision};
  if (application) v = application->GetVersion();
  return "TNWK Waypoint Converter v. " + std::to_string(v.major) + "." + std::to_string(v.minor) + "." +
         std::to_string(v.revision) + ":  Error Number " + std::to_string(number) + "\nDescription:  " +
         description + "\n\n";
}

std::string LogDirectory(const platform::host::MapDocument* document) {
  const std::string docPath = document ? GetMxDocPath(*document) : std::string();
  if (!docPath.empty()) return ReturnDir2(docPath, true);
  std::error_code ec;
  const auto cwd = std::filesystem::current_path(ec);
  return ReturnDir2(ec ? std::string("./") : cwd.string() + "/", true);
}
}  // namespace

RoutineError::RoutineError(long number, std::string source, std::string description)
    : RoutineError(number, std::move(source), std::move(description), false) {}

RoutineError::RoutineError(long number, std::string source, std::string description, bool climbing)
    : number_(number), source_(std::move(source)), description_(std::move(description)), climbing_(climbing) {}

void RaiseError(long number, std::string source, std::string description) {
  throw RoutineError(number, std::move(source), std::move(description));
}

std::string LocationText(std::string_view routine, std::string_view module, long line) {
  return std::string(routine) + " " + std::string(module) + " " + ReturnLineText(line);
}

void HandleError(std::string_view routine, std::string_view module, std::source_location where) {
  CaughtError error = CurrentError(module);
  if (!error.climbing) error.description = FirstLevel(error.number, error.description);
  throw RoutineError(error.number, std::move(error.source),
                     "\t" + LocationText(routine, module, static_cast<long>(where.line())) + "\n" +
                         error.description,
                     true);
}

ErrorLog HandleErrorAtEntryPoint(std::string_view routine, std::string_view module,
                                 platform::host::Application* application,
                                 const platform::host::MapDocument* document, std::source_location where) {
  ErrorLog log;
  try {
    CaughtError error = CurrentError(module);
    if (!error.climbing) error.description = Banner(application, error.number, error.description);
    log.number = error.number;

    const std::string location = LocationText(routine, module, static_cast<long>(where.line()));
    const std::string title = document ? document->Title() : std::string();
    std::string path;
    try {
      path = LogDirectory(document) + "Tarnwick_Error_Log_" + ReturnTimeStamp() + ".txt";
    } catch (...) {
    }
    log.text = "Error in '" + title + ".mxd'\n" +
               "Record Call Stack Sequence - Bottom line is error line.\n" + "\n" + "Log file saved to:\n" +
               "  --> " + path + "\n" + "\n" + location + "\n" + error.description;

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
  if (displayStyle == 2 || displayStyle == 3) return std::string(location) + "\n" + std::string(description);
  return "An error has occured in the application.   Record the call stack sequence\n"
         "and the description of the error.\n\n"
         "Error Call Stack Sequence \n\t" +
         std::string(location) + "\n" + std::string(description);
}

void ShowErrorInStyle(platform::host::Application& application, long displayStyle, std::string_view location,
                      std::string_view description) {
  application.MessageBox(ErrorDisplayText(displayStyle, location, description), "Unexpected Program Error",
                         platform::host::MessageButtons::OK, platform::host::MessageIcon::Exclamation);
}

}  // namespace tarnwick
