#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/field_names.h"
#include "support/path_operations.h"
#include "support/text_operations.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {
using Strings = std::vector<std::string>;

TEST(TextOperations, CuttingAndSplitting) {
  EXPECT_EQ(ParseString(" a , b,c ,", ","), (Strings{"a", "b", "c", ""}));
  EXPECT_EQ(ParseString(" , ,, ", ","), (Strings{""}));  // blank once the separators are gone
  EXPECT_EQ(ParseString("", ","), (Strings{""}));
  EXPECT_EQ(ParseString("x::y", "::"), (Strings{"x", "y"}));

  EXPECT_EQ(Subst("zzzAzzz and zzzAzzz", "zzzAzzz", "12"), "12 and 12");
  EXPECT_EQ(Subst("a-b-c", "-"), "abc");
  EXPECT_EQ(Subst("aaa", "aa", "a"), "aa");  // no rescanning of replaced text
}

TEST(PathOperations, DirectoriesAndFileNames) {
  EXPECT_EQ(ReturnDir2("/data/inv/plots.shp", true), "/data/inv/");
  EXPECT_EQ(ReturnDir2("/data/inv/plots.shp", false), "/data/inv");
  EXPECT_EQ(ReturnDir2("C:\\data\\inv.gdb\\Plots", false), "C:\\data\\inv.gdb");
  EXPECT_EQ(ReturnDir2("plots.shp", true), "plots.shp/");  // no separator: the whole text, closed
  EXPECT_EQ(ReturnDir2("", true), "/");
  EXPECT_EQ(ReturnDir2("a\\b/c", true), "a\\b/");

  EXPECT_EQ(ReturnDir("C:\\x\\y.mxd"), "C:\\x");
  EXPECT_EQ(ReturnDir("y.mxd"), "");
  EXPECT_EQ(ReturnFilename("/data/inv/plots.shp"), "plots.shp");
  EXPECT_EQ(ReturnFilename("C:\\data\\inv.gdb\\Plots"), "Plots");

  EXPECT_EQ(ClipExtension("plots.shp"), "plots");
  EXPECT_EQ(ClipExtension("plots.v2.shp"), "plots.v2");
  EXPECT_EQ(SetExtension("/d/plots.txt", "way"), "/d/plots.way");
  EXPECT_EQ(SetExtension("/d/plots", ".way"), "/d/plots.way");
  EXPECT_EQ(SetExtension("/d.v1/plots", "way"), "/d.v1/plots.way");
}

TEST(PathOperations, ExistenceFullPathsAndFeatureClassPathsTakenApart) {
  testkit::TempDir dir;
  EXPECT_TRUE(ExistFileDir(dir.path().string()));
  std::ofstream(dir / "a.txt") << "x";
  EXPECT_TRUE(ExistFileDir(dir / "a.txt"));
  EXPECT_FALSE(ExistFileDir(dir / "b.txt"));
  EXPECT_FALSE(ExistFileDir(""));
  EXPECT_EQ(GetFullFileString(dir.path().string() + "/x/../a.txt"), dir / "a.txt");

  testkit::MakeClass(dir / "shapes", testkit::ClassSpec("plots", platform::GeometryType::Point, {}));

  auto existing = ConvertFClassPathToWSData(dir / "shapes/plots.shp");
  EXPECT_TRUE(existing.directoryExists && existing.datasetExists && existing.workspaceFound && existing.workspace);
  EXPECT_EQ(existing.directory, dir / "shapes");
  EXPECT_EQ(existing.name, "plots.shp");
  EXPECT_EQ(existing.errorText, "");

  EXPECT_FALSE(ConvertFClassPathToWSData(dir / "shapes/new_plots.shp").datasetExists);

  auto noDir = ConvertFClassPathToWSData(dir / "nowhere/plots.shp");
  EXPECT_FALSE(noDir.directoryExists);
  EXPECT_EQ(noDir.name, "");
  EXPECT_FALSE(noDir.workspace);

  EXPECT_FALSE(ConvertFClassPathToWSData(dir / "a.txt/plots").workspaceFound);

  std::filesystem::create_directories(dir.path() / "old.mdb");
  auto access = ConvertFClassPathToWSData(dir / "old.mdb/plots");
  EXPECT_TRUE(access.errorText.starts_with("Error #")) << access.errorText;
  EXPECT_NE(access.errorText.find("\nError Source = "), std::string::npos);
  EXPECT_NE(access.errorText.find("\nDescription: "), std::string::npos);
}

using Names = std::vector<std::string>;

std::string General(std::string name, const Names* existing = nullptr, bool personal = false, bool info = false) {
  return ReturnAcceptableFieldName(name, existing, false, personal, info);
}
std::string Dbase(std::string name, const Names* existing = nullptr) { return ReturnDBASEFieldName(name, existing); }

TEST(FieldNames, GeneralRule) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "z_Field"},       {"   ", "z_Field"},       {"2nd plot", "z2nd_plot"},
      {"date", "z_Date"},    {"DATE", "z_Date"},       {"shape_length", "z_Shape_Length"},
      {"Stand-ID #", "Stand_ID__"}, {"Basal\xC3\xA1rea", "Basal_rea"},  // one "_" per typed character
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(General(name), expected) << name;
  EXPECT_EQ(General(std::string(70, 'a')).size(), 64u);
  EXPECT_EQ(General(std::string(70, 'a'), nullptr, true).size(), 52u);
  EXPECT_EQ(General("1" + std::string(20, 'b'), nullptr, false, true), "z1" + std::string(14, 'b'));

  const Names taken{"Plot_ID", "PLOT_ID1"};
  EXPECT_EQ(General("plot_id", &taken), "plot_id2");  // cut to fit the limit, keeps the input's case
  EXPECT_EQ(General("StandAge", &taken), "StandAge");

  // The in/out name takes the result too.
  std::string name = "when";
  EXPECT_EQ(ReturnAcceptableFieldName(name, nullptr, false, false, false), "z_When");
  EXPECT_EQ(name, "z_When");
  name = "Stand_Number";
  EXPECT_EQ(ReturnAcceptableFieldName(name, nullptr, true, false, false), "Stand_Numb");
}

TEST(FieldNames, DbaseRule) {
  EXPECT_EQ(Dbase("Stand_Number"), "Stand_Numb");
  const Names taken{"Stand_Numb"};
  EXPECT_EQ(Dbase("Stand_Number", &taken), "Stand_Num1");
  Names many{"stand_numb"};
  for (int i = 1; i <= 9; ++i) many.push_back("Stand_Num" + std::to_string(i));
  EXPECT_EQ(Dbase("Stand_Number", &many), "Stand_Nu10");

  // The dBASE column of the reserved table.
  const std::pair<const char*, const char*> reserved[] = {
      {"Shape_Length", "zShape_Len"}, {"SHAPE_AREA", "zShapeArea"}, {"Object_ID", "z_ObjectID"},
      {"objectid", "z_ObjectID"},     {"fid", "z_FID"},             {"Year", "z_Year"},
      {"_x", "z_x"},
  };
  for (const auto& [name, expected] : reserved) EXPECT_EQ(Dbase(name), expected) << name;
}

TEST(FieldNames, FileGeodatabaseRule) {
  const std::pair<const char*, const char*> cases[] = {
      {"select", "select_"}, {"Values", "Values_"}, {"1st", "z1st"}, {"_first", "_first"}, {"stand id.v2", "stand_id_v2"}};
  for (const auto& [name, expected] : cases) EXPECT_EQ(ReturnValidFGDBFieldName(name, nullptr), expected) << name;
  EXPECT_EQ(ReturnValidFGDBFieldName(std::string(80, 'x'), nullptr).size(), 80u);

  const Names taken{"StandID", "standid_2", "SELECT_"};
  EXPECT_EQ(ReturnValidFGDBFieldName("StandID", &taken), "StandID_3");
  EXPECT_EQ(ReturnValidFGDBFieldName("Select", &taken), "Select__2");
  const Names one{"Plots"};
  EXPECT_EQ(ReturnValidFGDBFieldName("plots", &one), "plots_2");
}

TEST(FieldNames, ReplaceBadChars) {
  EXPECT_EQ(ReplaceBadChars("", true, true, true, true), "z");
  EXPECT_EQ(ReplaceBadChars("North Stands.v2\\a", true, true, true, false), "North_Stands_v2_a");
  EXPECT_EQ(ReplaceBadChars("North Stands.v2\\a", false, false, false, false), "North Stands.v2\\a");
  EXPECT_EQ(ReplaceBadChars("2019 plots", true, true, true, true), "z2019_plots");
  EXPECT_EQ(ReplaceBadChars("2019 plots", true, true, true, false), "2019_plots");
  EXPECT_EQ(ReplaceBadChars("(a)", true, true, true, true), "z_a_");
}

}  // namespace
}  // namespace tarnwick
