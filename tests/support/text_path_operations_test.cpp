#include <gtest/gtest.h>

#include "support/path_operations.h"
#include "support/text_operations.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

#include <filesystem>
#include <fstream>


namespace tarnwick {
namespace {
using Strings = std::vector<std::string>;

TEST(TextOperations, CuttingAndSplitting) {
  EXPECT_EQ(ParseString(" a , b,c ,", ","), (Strings{"a", "b", "c", ""}));
  EXPECT_EQ(ParseString(" , ,, ", ","), (Strings{""}));  // blank once the separators are gone
  EXPECT_EQ(ParseString("", ","), (Strings{""}));
  EXPECT_EQ(ParseString("x::y", "::"), (Strings{"x", "y"}));

  EXPECT_EQ(Before("stand_12_a", "_"), "stand");
  EXPECT_EQ(After("stand_12_a", "_"), "12_a");
  EXPECT_EQ(After("stand", "#"), "");
  EXPECT_EQ(Before("Stand", "s"), "");  // exact match only: lower "s" is absent

  EXPECT_EQ(Subst("zzzAzzz and zzzAzzz", "zzzAzzz", "12"), "12 and 12");
  EXPECT_EQ(Subst("a-b-c", "-"), "abc");
  EXPECT_EQ(Subst("aaa", "aa", "a"), "aa");  // no rescanning of replaced text

  EXPECT_EQ(BasicTrimAvenue("--x-y++", "-", "+"), "x-y");
  EXPECT_EQ(BasicTrimAvenue("\"\"", "\"", "\""), "");
  EXPECT_EQ(BasicTrimAvenue("+x-", "+", "+"), "x-");
}

TEST(PathOperations, DirectoriesAndFileNames) {
  EXPECT_EQ(ReturnDir2("/data/inv/plots.shp", true), "/data/inv/");
  EXPECT_EQ(ReturnDir2("/data/inv/plots.shp", false), "/data/inv");
  EXPECT_EQ(ReturnDir2("C:\\data\\inv.gdb\\Plots", false), "C:\\data\\inv.gdb");
  EXPECT_EQ(ReturnDir2("plots.shp", true), "plots.shp/");  // no separator: the whole text, closed
  EXPECT_EQ(ReturnDir2("", true), "/");
  EXPECT_EQ(ReturnDir2("a\\b/c", true), "a\\b/");

  EXPECT_EQ(ReturnDir("/data/inv/plots.shp"), "/data/inv");
  EXPECT_EQ(ReturnDir("C:\\x\\y.mxd"), "C:\\x");
  EXPECT_EQ(ReturnDir("y.mxd"), "");
  EXPECT_EQ(ReturnFilename("/data/inv/plots.shp"), "plots.shp");
  EXPECT_EQ(ReturnFilename2("C:\\data\\inv.gdb\\Plots"), "Plots");

  EXPECT_EQ(ClipExtension("plots.shp"), "plots");
  EXPECT_EQ(ClipExtension("plots.v2.shp"), "plots.v2");
  EXPECT_EQ(SetExtension("/d/plots.txt", "way"), "/d/plots.way");
  EXPECT_EQ(SetExtension("/d/plots", ".way"), "/d/plots.way");
  EXPECT_EQ(SetExtension("/d.v1/plots", "way"), "/d.v1/plots.way");
}

TEST(PathOperations, ExistenceAndFullPaths) {
  testkit::TempDir dir;
  EXPECT_TRUE(ExistFileDir(dir.path().string()));
  std::ofstream(dir / "a.txt") << "x";
  EXPECT_TRUE(ExistFileDir(dir / "a.txt"));
  EXPECT_FALSE(ExistFileDir(dir / "b.txt"));
  EXPECT_FALSE(ExistFileDir(""));
  EXPECT_EQ(GetFullFileString(dir.path().string() + "/x/../a.txt"), dir / "a.txt");
}

TEST(PathOperations, FeatureClassPathsTakenApart) {
  testkit::TempDir dir;
  testkit::MakeClass(dir / "shapes", testkit::ClassSpec("plots", platform::GeometryType::Point, {}));

  auto existing = ConvertFClassPathToWSData(dir / "shapes/plots.shp");
  EXPECT_TRUE(existing.directoryExists);
  EXPECT_EQ(existing.directory, dir / "shapes");
  EXPECT_EQ(existing.name, "plots.shp");
  EXPECT_TRUE(existing.datasetExists);
  EXPECT_TRUE(existing.workspaceFound);
  ASSERT_TRUE(existing.workspace);
  EXPECT_EQ(existing.errorText, "");

  EXPECT_FALSE(ConvertFClassPathToWSData(dir / "shapes/new_plots.shp").datasetExists);

  auto noDir = ConvertFClassPathToWSData(dir / "nowhere/plots.shp");
  EXPECT_FALSE(noDir.directoryExists);
  EXPECT_EQ(noDir.name, "");
  EXPECT_FALSE(noDir.workspace);

  std::ofstream(dir / "notes.txt") << "x";
  auto plainFile = ConvertFClassPathToWSData(dir / "notes.txt/plots");
  EXPECT_FALSE(plainFile.workspaceFound);

  std::filesystem::create_directories(dir.path() / "old.mdb");
  auto access = ConvertFClassPathToWSData(dir / "old.mdb/plots");
  EXPECT_TRUE(access.errorText.starts_with("Error #")) << access.errorText;
  EXPECT_NE(access.errorText.find("\nError Source = "), std::string::npos);
  EXPECT_NE(access.errorText.find("\nDescription: "), std::string::npos);
}

}  // namespace
}  // namespace tarnwick
