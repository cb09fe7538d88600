#pragma once
// Key-press filters for numeric text boxes. A dialog passes the key code and
// its box; a filter sets the code to 0 to swallow the key and may edit the
// box itself (the "-" toggle, a leading "0" before a decimal mark).
#include <string>

namespace tarnwick {

struct TextBoxState {
  std::string text;
  int caret = 0;  // insertion point, 0 before the first character
};

// Only digits and backspace.
void CheckNumericIntegerPositive(int& keyCode, TextBoxState& box);
// Digits and backspace; "-" toggles a leading minus sign.
void CheckNumericInteger(int& keyCode, TextBoxState& box);
// Digits, backspace and one decimal mark ("." or ","); "-" toggles the sign.
void CheckNumericReal(int& keyCode, TextBoxState& box);
// As CheckNumericReal, with "-" swallowed.
void CheckNumericRealPositive(int& keyCode, TextBoxState& box);

// True for an optionally signed number with at most one decimal mark ("."
// or ","), surrounding blanks allowed.
bool IsNumericText(const std::string& text);

}  // namespace tarnwick
