#pragma once
// The metadata routines' error handling. A routine that returns a status or
// fills an error flag does not let a run-time error climb: the error takes
// the routine's line on the error road, its call stack is written to the
// standard error stream, and the routine returns its failure value. The
// tools that call these routines go on after a metadata failure.
#include <string_view>

#include "presentation/error_handling.h"

namespace tarnwick::metadata {

inline constexpr std::string_view kMetadataModule = "Metadata_Functions";

// Called from a catch block: passes the current error through HandleError
// under this routine's name and reports the resulting call stack.
void ReportCurrentError(std::string_view routine, SourceLocation where);

template <class Result, class Body>
Result GuardedOr(std::string_view routine, Result failure, Body&& body, bool* errorFlag = nullptr,
                 SourceLocation where = SourceLocation::current()) {
  try {
    return body();
  } catch (...) {
    ReportCurrentError(routine, where);
    if (errorFlag != nullptr) *errorFlag = true;
    return failure;
  }
}

}  // namespace tarnwick::metadata
