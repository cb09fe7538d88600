// Numbers read strictly from typed text, the keys a number box lets through,
// the words for an unusable number, dates and times as reports write them,
// and paths that would write over a run's data.
#include "support/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/key_filters.h"
#include "support/protected_paths.h"
#include "support/time_operations.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

TEST(NumberText, ReadsWholeFiniteNumbersOnly) {
  EXPECT_EQ(ParseNumber(" 12.5 "), 12.5);
  EXPECT_EQ(ParseNumber("+7"), 7);
  EXPECT_EQ(ParseNumber("-1e3"), -1000);
  for (const char* bad : {"", " ", "inf", "-inf", "nan", "1e400", "0x10", "12,5", "3 4", "1e", "++1", "+-1"}) {
    EXPECT_FALSE(ParseNumber(bad)) << bad;
  }
  EXPECT_EQ(ParseWholeNumber("-5"), -5);
  EXPECT_FALSE(ParseWholeNumber("1.5"));
  EXPECT_FALSE(ParseWholeNumber("99999999999999999999"));
  EXPECT_EQ(SplitPair(" 3 , 4 ", ','), (std::pair<std::string, std::string>{"3", "4"}));
  EXPECT_FALSE(SplitPair("3;4", ','));

  NumberLimits positive;
  positive.low = 0;
  positive.lowIncluded = false;
  positive.high = 1e9;
  EXPECT_EQ(NumberProblem(5, positive), "");
  EXPECT_EQ(NumberProblem(0, positive), "must be greater than 0");
  EXPECT_EQ(NumberProblem(2e9, positive), "must be at most 1000000000");
  EXPECT_EQ(NumberProblem(std::nan(""), {}), "is not a finite number");
  EXPECT_EQ(NumberProblem(-std::numeric_limits<double>::infinity(), {}), "is not a finite number");
}

TEST(ProtectedPaths, APathIsRefusedWhenItIsOrLiesInTheRunsData) {
  testkit::TempDir dir;
  const std::vector<std::string> data = {dir / "stands.gpkg", dir / "inv.gdb", dir / "shp/plots.dbf"};
  EXPECT_EQ(DatasetDestroyedBy(dir / "stands.gpkg", data), dir / "stands.gpkg");
  EXPECT_EQ(DatasetDestroyedBy(dir / "inv.gdb/a00000001.gdbtable", data), dir / "inv.gdb");
  EXPECT_EQ(DatasetDestroyedBy(dir / "shp/../shp/plots.dbf", data), dir / "shp/plots.dbf");
  EXPECT_EQ(DatasetDestroyedBy(dir / "shp/plots_report.rtf", data), "");
  EXPECT_EQ(DatasetDestroyedBy(dir / "stands.gpkg.rtf", data), "");
  EXPECT_TRUE(IsSameClass(dir / "x.gpkg", "Plots", dir / "./x.gpkg", "PLOTS"));
  EXPECT_FALSE(IsSameClass(dir / "x.gpkg", "Plots", dir / "y.gpkg", "Plots"));
}

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

TEST(KeyFilters, DigitsPassAndDecimalMarksAndMinusEditTheBoxWhereAllowed) {
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

  // Digits and backspace pass every filter; other keys are swallowed.
  for (auto filter : {CheckNumericReal, CheckNumericRealPositive, CheckNumericInteger, CheckNumericIntegerPositive}) {
    EXPECT_EQ(Press(filter, '7', "1", 1).code, '7');
    EXPECT_EQ(Press(filter, '\b', "1", 1).code, 8);
    for (char swallowed : {'a', '/', '+', ' ', '\t', '\x07', '\r'}) EXPECT_EQ(Press(filter, swallowed, "1", 1).code, 0);
  }
  EXPECT_EQ(Press(CheckNumericInteger, '.', "1", 1).code, 0);
  EXPECT_EQ(Press(CheckNumericIntegerPositive, ',', "1", 1).code, 0);
}

using namespace std::chrono;

LocalTime At(int y, unsigned m, unsigned d, int h, int min, int s) {
  return local_days{year{y} / m / d} + hours{h} + minutes{min} + seconds{s};
}

TEST(TimeOperations, StampLongFormsAndElapsedTexts) {
  const auto t = At(2026, 11, 23, 9, 5, 7);
  EXPECT_EQ(ReturnTimeStamp(t), "20261123_090507");
  EXPECT_EQ(ReturnTimeStamp().size(), 15u);
  EXPECT_EQ(LongDateText(t), "Monday, November 23, 2026");
  EXPECT_EQ(LongDateText(At(2024, 2, 29, 0, 0, 0)), "Thursday, February 29, 2024");
  const std::pair<LocalTime, const char*> times[] = {{t, "9:05:07 AM"},
                                                     {At(2026, 1, 1, 0, 0, 0), "12:00:00 AM"},
                                                     {At(2026, 1, 1, 12, 30, 0), "12:30:00 PM"},
                                                     {At(2026, 1, 1, 23, 59, 59), "11:59:59 PM"}};
  for (const auto& [time, text] : times) EXPECT_EQ(LongTimeText(time), text);

  const std::pair<LocalTime::duration, const char*> elapsed[] = {
      {days{1}, "Time Elapsed: 1 day"},
      {days{2}, "Time Elapsed: 2 days"},
      {days{2} + hours{1} + seconds{1}, "Time Elapsed: 2 days, 1 hour, 1 second..."},
      {hours{3} + minutes{1} + seconds{42}, "Time Elapsed: 3 hours, 1 minute, 42 seconds..."},
      {minutes{2}, "Time Elapsed: 2 minutes"}};
  for (const auto& [span, text] : elapsed) EXPECT_EQ(ReturnTimeElapsedText(t, t + span), text);
}

}  // namespace
}  // namespace tarnwick
