#pragma once
#include <stdexcept>

namespace tarnwick::cli {

// Bad arguments or a failed check: printed to stderr, exit 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tarnwick::cli
