#pragma once
// Turns GDAL's last error into a PlatformError message.
#include <string>

namespace tarnwick::platform::internal {

// "what: GDAL's reason" (or "what" alone when GDAL said nothing). The
// reason is the first failure GDAL reported in the innermost quiet scope,
// else its last message: a failure often sets off others that hide it (a
// full disk, then a spatial index left half made).
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

  const std::string& FirstFailure() const { return firstFailure_; }
  // Tells this scope from other data GDAL may hold for its error handler.
  bool IsQuietScope() const { return tag_ == kTag; }

 private:
  static constexpr unsigned kTag = 0x71e7;
  unsigned tag_ = kTag;
  std::string firstFailure_;
};

}  // namespace tarnwick::platform::internal
