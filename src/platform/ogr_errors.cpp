#include "platform/internal/ogr_errors.h"

#include <cpl_error.h>

#include "platform/errors.h"

namespace tarnwick::platform::internal {

namespace {

// The quiet scope whose handler is on top of GDAL's stack, if any.
QuietGdalErrors* CurrentQuietScope() {
  auto* scope = static_cast<QuietGdalErrors*>(CPLGetErrorHandlerUserData());
  return scope != nullptr && scope->IsQuietScope() ? scope : nullptr;
}

}  // namespace

std::string WithGdalReason(const std::string& what) {
  std::string reason = CPLGetLastErrorMsg();
  if (const QuietGdalErrors* scope = CurrentQuietScope(); scope != nullptr && !scope->FirstFailure().empty()) {
    reason = scope->FirstFailure();
  }
  if (reason.empty()) return what;
  return what + ": " + reason;
}

void ThrowGdalError(const std::string& source, const std::string& what) {
  std::string message = WithGdalReason(what);
  CPLErrorReset();
  throw PlatformError(kErrPlatform, source, message);
}

QuietGdalErrors::QuietGdalErrors() {
  CPLPushErrorHandlerEx(
      [](CPLErr type, CPLErrorNum, const char* message) {
        QuietGdalErrors* scope = CurrentQuietScope();
        if (scope != nullptr && type >= CE_Failure && scope->firstFailure_.empty() && message != nullptr) {
          scope->firstFailure_ = message;
        }
      },
      this);
  CPLErrorReset();
}

QuietGdalErrors::~QuietGdalErrors() { CPLPopErrorHandler(); }

}  // namespace tarnwick::platform::internal
