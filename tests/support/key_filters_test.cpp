#include "support/key_filters.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

struct KeyResult {
  int code;
  TextBoxState box;
};

template <class Filter>
KeyResult Press(Filter filter, char key, std::string text, int caret) {
  int code = static_cast<unsigned char>(key);
  TextBoxState box{std::move(text), caret};
  filter(code, box);
  return {code, box};
}

TEST(KeyFilters, DecimalMarksAndMinusEditTheBoxWhereAllowed) {
  using Filter = void (*)(int&, TextBoxState&);
  const struct {
    Filter filter;
    char key;
    const char* before;
    int caret;
    int code;
    const char* after;
    int caretAfter;
  } cases[] = {
      {CheckNumericReal, '.', "", 0, 0, "0.", 2},
      {CheckNumericReal, ',', "-", 1, 0, "-0,", 3},
      {CheckNumericReal, '.', "1,5", 3, 0, "1,5", 3},  // a second mark is swallowed
      {CheckNumericReal, '.', "15", 1, '.', "15", 1},  // let through; the box inserts it
      {CheckNumericRealPositive, '.', "", 0, 0, "0.", 2},
      {CheckNumericReal, '-', "12.5", 2, 0, "-12.5", 3},  // minus toggles the sign
      {CheckNumericInteger, '-', "-12", 3, 0, "12", 2},
      {CheckNumericRealPositive, '-', "12", 2, 0, "12", 2},
      {CheckNumericIntegerPositive, '-', "12", 2, 0, "12", 2},
  };
  for (const auto& c : cases) {
    const KeyResult r = Press(c.filter, c.key, c.before, c.caret);
    SCOPED_TRACE(std::string(1, c.key) + " on '" + c.before + "'");
    EXPECT_EQ(r.code, c.code);
    EXPECT_EQ(r.box.text, c.after);
    EXPECT_EQ(r.box.caret, c.caretAfter);
  }
}

TEST(KeyFilters, WhichKeysPass) {
  for (auto filter : {CheckNumericReal, CheckNumericRealPositive, CheckNumericInteger, CheckNumericIntegerPositive}) {
    EXPECT_EQ(Press(filter, '7', "1", 1).code, '7');
    EXPECT_EQ(Press(filter, '\b', "1", 1).code, 8);
    for (char swallowed : {'a', '/', '+', ' ', '\t', '\x07', '\r'}) EXPECT_EQ(Press(filter, swallowed, "1", 1).code, 0);
  }
  EXPECT_EQ(Press(CheckNumericInteger, '.', "1", 1).code, 0);
  EXPECT_EQ(Press(CheckNumericIntegerPositive, ',', "1", 1).code, 0);
}

}  // namespace
}  // namespace tarnwick
