#pragma once
// The error road's core. Every routine that can fail runs its body inside
// Guarded (or calls HandleError from its own catch block). An inner routine
// adds one tabbed line naming itself to the error's call stack and throws it
// on; an entry point ends the climb (presentation/error_handling.h shows the
// stack and writes the log).
#include <exception>
#include <source_location>
#include <string>
#include <string_view>
#include <version>

namespace tarnwick {

// Where a routine meets the error road. The standard library's
// source_location where the compiler supports it; clang before 15 (which
// builds the fuzzing targets) offers only the line builtin.
#if defined(__cpp_lib_source_location)
using SourceLocation = std::source_location;
#else
class SourceLocation {
 public:
  static constexpr SourceLocation current(unsigned line = __builtin_LINE()) noexcept {
    SourceLocation where;
    where.line_ = line;
    return where;
  }
  constexpr unsigned line() const noexcept { return line_; }

 private:
  unsigned line_ = 0;
};
#endif

// The line break of every text the error road builds (the stack, the banner,
// the log), the same as the text writer ends its files with.
inline constexpr std::string_view kLineBreak = "\r\n";

// The error as it climbs: number, source, and a description that holds the
// call stack gathered so far.
class RoutineError : public std::exception {
 public:
  RoutineError(long number, std::string source, std::string description);
  // climbing: the description already holds the call stack (some routine's
  // handler has formatted it and added its line); reason is the description
  // the error started with.
  RoutineError(long number, std::string source, std::string description, bool climbing, std::string reason);
  long Number() const noexcept { return number_; }
  bool Climbing() const noexcept { return climbing_; }
  const std::string& Source() const noexcept { return source_; }
  const std::string& Description() const noexcept { return description_; }
  // What went wrong in the error's own words, without the call stack.
  const std::string& Reason() const noexcept { return reason_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  long number_;
  std::string source_;
  std::string description_;
  bool climbing_ = false;
  std::string reason_;
};

// Throws a fresh error that has not yet climbed (the first level formats it).
[[noreturn]] void RaiseError(long number, std::string source, std::string description);

// "Line : n", or an empty text for line 0.
std::string ReturnLineText(long line);

// "routine module Line : n" (the line text is empty for line 0).
std::string LocationText(std::string_view routine, std::string_view module, long line);

// The exception being handled, whatever its type, as the error road sees it.
struct CaughtError {
  long number;
  std::string source;
  std::string description;
  bool climbing;
  std::string reason;  // the description the error started with
};
CaughtError CurrentError(std::string_view module);

// For an inner routine, inside a catch block: turns the current exception
// into a RoutineError with this routine's line added in front, and throws it.
// An interruption of the run (platform::RunInterrupted) climbs unchanged.
[[noreturn]] void HandleError(std::string_view routine, std::string_view module,
                              SourceLocation where = SourceLocation::current());

// Runs body; any exception it lets out goes through HandleError under this
// routine's name.
template <class Body>
decltype(auto) Guarded(std::string_view routine, std::string_view module, Body&& body,
                       SourceLocation where = SourceLocation::current()) {
  try {
    return body();
  } catch (...) {
    HandleError(routine, module, where);
  }
}

}  // namespace tarnwick
