#include "support/key_filters.h"

#include <algorithm>
#include <cctype>

#include "errors/error_road.h"
#include "support/text_operations.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "MyGeneralOperations";
constexpr int kBackspace = 8;
constexpr int kComma = 44;
constexpr int kMinus = 45;
constexpr int kPeriod = 46;
constexpr int kSlash = 47;
constexpr int kNine = 57;

// Control codes and the symbols before "," are never wanted in a number.
bool AlwaysSwallowed(int code) { return code < kBackspace || (code >= 9 && code <= 43); }

void ToggleMinus(TextBoxState& box) {
  if (!box.text.empty() && box.text.front() == '-') {
    box.text.erase(0, 1);
    if (box.caret > 0) --box.caret;
  } else {
    box.text.insert(0, 1, '-');
    ++box.caret;
  }
}

void DecimalMark(int& keyCode, TextBoxState& box) {
  const char mark = static_cast<char>(keyCode);
  if (box.text.empty()) {
    box.text = std::string("0") + mark;
    box.caret = 2;
    keyCode = 0;
  } else if (box.text == "-") {
    box.text = std::string("-0") + mark;
    box.caret = 3;
    keyCode = 0;
  } else {
    std::string next = box.text;
    const auto at = static_cast<std::size_t>(std::clamp(box.caret, 0, static_cast<int>(next.size())));
    next.insert(at, 1, mark);
    if (!IsNumericText(next)) keyCode = 0;
  }
}

void FilterReal(int& keyCode, TextBoxState& box, bool allowNegative) {
  if (AlwaysSwallowed(keyCode) || keyCode == kSlash || keyCode > kNine) {
    keyCode = 0;
  } else if (keyCode == kMinus) {
    if (allowNegative) ToggleMinus(box);
    keyCode = 0;
  } else if (keyCode == kComma || keyCode == kPeriod) {
    DecimalMark(keyCode, box);
  }
}
}  // namespace

bool IsNumericText(const std::string& raw) {
  const std::string text = TrimBlanks(raw);
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
  int digits = 0;
  int marks = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (std::isdigit(static_cast<unsigned char>(c))) {
      ++digits;
    } else if (c == '.' || c == ',') {
      if (++marks > 1) return false;
    } else {
      return false;
    }
  }
  return digits > 0;
}

void CheckNumericIntegerPositive(int& keyCode, TextBoxState& box) {
  Guarded("CheckNumericIntegerPositive", kModule, [&] {
    if (AlwaysSwallowed(keyCode) || (keyCode >= kComma && keyCode <= kSlash) || keyCode > kNine) keyCode = 0;
  });
}

void CheckNumericInteger(int& keyCode, TextBoxState& box) {
  Guarded("CheckNumericInteger", kModule, [&] {
    if (keyCode == kMinus) {
      ToggleMinus(box);
      keyCode = 0;
    } else if (AlwaysSwallowed(keyCode) || (keyCode >= kComma && keyCode <= kSlash) || keyCode > kNine) {
      keyCode = 0;
    }
  });
}

void CheckNumericReal(int& keyCode, TextBoxState& box) {
  Guarded("CheckNumericReal", kModule, [&] { FilterReal(keyCode, box, true); });
}

void CheckNumericRealPositive(int& keyCode, TextBoxState& box) {
  Guarded("CheckNumericRealPositive", kModule, [&] { FilterReal(keyCode, box, false); });
}

}  // namespace tarnwick
