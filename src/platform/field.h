#pragma once
// Fields and field values. Field types keep the host's esriFieldType numbers.
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace tarnwick::platform {

enum class FieldType : int {
  SmallInteger = 0,
  Integer = 1,
  Single = 2,
  Double = 3,
  String = 4,
  Date = 5,
  OID = 6,
  Geometry = 7,
  Blob = 8,
  Raster = 9,
  GUID = 10,
  GlobalID = 11,
  XML = 12,
};

struct Field {
  std::string name;
  std::string alias;  // the name when empty
  FieldType type = FieldType::String;
  int length = 0;     // text width
  int precision = 0;  // digits of a number (0: the store's default)
  int scale = 0;      // decimals of a real number
  bool nullable = true;
};

// A field value. Null is std::monostate; integers are int64; reals double;
// text and dates (ISO 8601 "yyyy-mm-ddThh:mm:ss") are strings.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

inline bool IsNull(const Value& v) { return std::holds_alternative<std::monostate>(v); }

// Strict conversions in the manner of the host's CStr/CLng/CDbl: a Null
// raises "Invalid use of Null" (94), text that is no number raises
// "Type mismatch" (13). Defined in value.cpp.
std::string ValueToText(const Value& v);
// The shortest text that reads back as the same number, as an ordinary
// decimal: 0.00001 is "0.00001", 20 is "20", 2.5 is "2.5".
std::string NumberToText(double value);
std::int64_t ValueToLong(const Value& v);  // rounds half to even, as CLng does
double ValueToDouble(const Value& v);

}  // namespace tarnwick::platform
