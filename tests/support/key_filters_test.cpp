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

TEST(KeyFilters, DecimalMarksInRealBoxes) {
  auto r = Press(CheckNumericReal, '.', "", 0);
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "0.");
  EXPECT_EQ(r.box.caret, 2);

  r = Press(CheckNumericReal, ',', "-", 1);
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "-0,");
  EXPECT_EQ(r.box.caret, 3);

  r = Press(CheckNumericReal, '.', "1,5", 3);  // a second mark is swallowed
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "1,5");

  r = Press(CheckNumericReal, '.', "15", 1);  // let through; the box inserts it
  EXPECT_EQ(r.code, '.');
  EXPECT_EQ(r.box.text, "15");

  r = Press(CheckNumericRealPositive, '.', "", 0);
  EXPECT_EQ(r.box.text, "0.");
}

TEST(KeyFilters, MinusTogglesTheSignWhereAllowed) {
  auto r = Press(CheckNumericReal, '-', "12.5", 2);
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "-12.5");
  EXPECT_EQ(r.box.caret, 3);
  r = Press(CheckNumericInteger, '-', "-12", 3);
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "12");
  EXPECT_EQ(r.box.caret, 2);

  r = Press(CheckNumericRealPositive, '-', "12", 2);
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "12");
  r = Press(CheckNumericIntegerPositive, '-', "12", 2);
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.box.text, "12");
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
