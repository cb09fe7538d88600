// Numbers read strictly from typed text, the words for an unusable one, and
// paths that would write over a run's data.
#include "support/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/protected_paths.h"
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

}  // namespace
}  // namespace tarnwick
