#pragma once
// The ordered run of typed values in which the extension keeps its settings
// inside a map document (on the desktop, inside the QGIS project).
#include <cstdint>
#include <string>
#include <variant>

namespace tarnwick {

using StreamValue = std::variant<std::string, std::int32_t, double, bool>;

class ValueStream {
 public:
  virtual ~ValueStream() = default;
  // The next value; throws when the stream holds no more.
  virtual StreamValue Read() = 0;
  virtual void Write(const StreamValue& value) = 0;
};

}  // namespace tarnwick
