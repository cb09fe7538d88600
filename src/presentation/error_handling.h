#pragma once
// The error road's end. An entry point (a command, a dialog action, a
// command-line subcommand) ends the climb of an error (errors/error_road.h)
// with HandleErrorAtEntryPoint, which shows the stack and writes the error
// log beside the map document.
#include <source_location>
#include <string>
#include <string_view>

#include "errors/error_road.h"

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

struct ErrorLog {
  long number = 0;
  std::string text;    // what was shown and written
  std::string path;    // the log file ("" when it could not be written)
  std::string reason;  // what went wrong, in the error's own words
};

// For an entry point, inside a catch block: ends the climb, shows the text in
// the host's message window and writes it to
// "<document dir>/Tarnwick_Error_Log_yyyymmdd_HhNnSs.txt" (the working
// directory when the run has no document). Never throws.
ErrorLog HandleErrorAtEntryPoint(std::string_view routine, std::string_view module,
                                 platform::host::Application* application,
                                 const platform::host::MapDocument* document,
                                 SourceLocation where = SourceLocation::current());
// The same, with the line the routine had reached given as such (a driver
// whose failure report names that line gives the log the same one).
ErrorLog HandleErrorAtEntryPoint(std::string_view routine, std::string_view module,
                                 platform::host::Application* application,
                                 const platform::host::MapDocument* document, long line);

// The host's other ways of showing an error, kept beside the one the system
// uses (log and message window): 2 and 3 show the location and description
// in a box titled "Unexpected Program Error"; any other style shows them
// under that title with a request to record the call stack.
std::string ErrorDisplayText(long displayStyle, std::string_view location, std::string_view description);
void ShowErrorInStyle(platform::host::Application& application, long displayStyle, std::string_view location,
                      std::string_view description);

}  // namespace tarnwick
