#pragma once
// The error road. Every routine that can fail runs its body inside Guarded
// (or calls HandleError from its own catch block). An inner routine adds one
// tabbed line naming itself to the error's call stack and throws it on; an
// entry point (a command, a dialog action, a command-line subcommand) ends
// the climb with HandleErrorAtEntryPoint, which shows the stack and writes
// the error log beside the map document.
#include <exception>
#include <source_location>
#include <string>
#include <string_view>

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

// The error as it climbs: number, source, and a description that holds the
// call stack gathered so far.
class RoutineError : public std::exception {
 public:
  RoutineError(long number, std::string source, std::string description);
  // climbing: the description already holds the call stack (some routine's
  // handler has formatted it and added its line).
  RoutineError(long number, std::string source, std::string description, bool climbing);
  long Number() const noexcept { return number_; }
  bool Climbing() const noexcept { return climbing_; }
  const std::string& Source() const noexcept { return source_; }
  const std::string& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  long number_;
  std::string source_;
  std::string description_;
  bool climbing_ = false;
};

// Throws a fresh error that has not yet climbed (the first level formats it).
[[noreturn]] void RaiseError(long number, std::string source, std::string description);

// "routine module Line : n" (the line text is empty for line 0).
std::string LocationText(std::string_view routine, std::string_view module, long line);

// For an inner routine, inside a catch block: turns the current exception
// into a RoutineError with this routine's line added in front, and throws it.
[[noreturn]] void HandleError(std::string_view routine, std::string_view module,
                              std::source_location where = std::source_location::current());

struct ErrorLog {
  long number = 0;
  std::string text;  // what was shown and written
  std::string path;  // the log file ("" when it could not be written)
};

// For an entry point, inside a catch block: ends the climb, shows the text in
// the host's message window and writes it to
// "<document dir>/Tarnwick_Error_Log_yyyymmdd_HhNnSs.txt" (the working
// directory when the run has no document). Never throws.
ErrorLog HandleErrorAtEntryPoint(std::string_view routine, std::string_view module,
                                 platform::host::Application* application,
                                 const platform::host::MapDocument* document,
                                 std::source_location where = std::source_location::current());

// The host's other ways of showing an error, kept beside the one the system
// uses (log and message window): 2 and 3 show the location and description
// in a box titled "Unexpected Program Error"; any other style shows them
// under that title with a request to record the call stack.
std::string ErrorDisplayText(long displayStyle, std::string_view location, std::string_view description);
void ShowErrorInStyle(platform::host::Application& application, long displayStyle, std::string_view location,
                      std::string_view description);

// Runs body; any exception it lets out goes through HandleError under this
// routine's name.
template <class Body>
decltype(auto) Guarded(std::string_view routine, std::string_view module, Body&& body,
                       std::source_location where = std::source_location::current()) {
  try {
    return body();
  } catch (...) {
    HandleError(routine, module, where);
  }
}

}  // namespace tarnwick
