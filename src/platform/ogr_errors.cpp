#include "platform/internal/ogr_errors.h"

#include <cpl_error.h>

#include "platform/errors.h"

namespace tarnwick::platform::internal {

std::string WithGdalReason(const std::string& what) {
  std::string reason = CPLGetLastErrorMsg();
  if (reason.empty()) return what;
  return what + ": " + reason;
}

void ThrowGdalError(const std::string& source, const std::string& what) {
  std::string message = WithGdalReason(what);
  CPLErrorReset();
  throw PlatformError(kErrPlatform, source, message);
}

QuietGdalErrors::QuietGdalErrors() {
  CPLPushErrorHandler(CPLQuietErrorHandler);
  CPLErrorReset();
}

QuietGdalErrors::~QuietGdalErrors() { CPLPopErrorHandler(); }

}  // namespace tarnwick::platform::internal
