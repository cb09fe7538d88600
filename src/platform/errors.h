#pragma once
// Errors raised by the platform layer. They carry a number in the style of
// the host's run-time errors so that the error road can print "Error Number".
#include <stdexcept>
#include <string>

namespace tarnwick::platform {

// Run-time error numbers used across the system.
enum ErrorNumber : long {
  kErrInvalidProcedureCall = 5,
  kErrOverflow = 6,
  kErrTypeMismatch = 13,
  kErrFileNotFound = 53,
  kErrPermissionDenied = 70,
  kErrPathNotFound = 76,
  kErrObjectNotSet = 91,
  kErrInvalidUseOfNull = 94,
  kErrPlatform = 1000,  // GDAL/OGR, GEOS or PROJ reported a failure
  kErrDatasetInUse = 1001,  // another run holds the dataset's lock
  kErrDamagedData = 1002,   // a dataset cannot be read as it claims to be
};

class PlatformError : public std::runtime_error {
 public:
  PlatformError(long number, std::string source, const std::string& description)
      : std::runtime_error(description), number_(number), source_(std::move(source)) {}
  long Number() const noexcept { return number_; }
  const std::string& Source() const noexcept { return source_; }

 private:
  long number_;
  std::string source_;
};

// The user asked the run to stop (Ctrl-C, or the system ending the program).
// It is not an error of the run: the error road lets it pass unchanged, and
// the edit session it unwinds through rolls back.
class RunInterrupted : public std::runtime_error {
 public:
  RunInterrupted() : std::runtime_error("The run was interrupted") {}
};

}  // namespace tarnwick::platform
