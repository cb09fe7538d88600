#pragma once
// Turns GDAL's last error into a PlatformError message.
#include <string>

namespace tarnwick::platform::internal {

// "what: GDAL's last message" (or "what" alone when GDAL said nothing).
std::string WithGdalReason(const std::string& what);
// Throws PlatformError(kErrPlatform, source, WithGdalReason(what)).
[[noreturn]] void ThrowGdalError(const std::string& source, const std::string& what);

// While alive, GDAL errors are recorded (for WithGdalReason) but not printed.
class QuietGdalErrors {
 public:
  QuietGdalErrors();
  ~QuietGdalErrors();
  QuietGdalErrors(const QuietGdalErrors&) = delete;
  QuietGdalErrors& operator=(const QuietGdalErrors&) = delete;
};

}  // namespace tarnwick::platform::internal
