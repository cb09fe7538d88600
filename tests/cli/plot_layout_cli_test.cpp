// The plot-layout subcommand run as a program on GeoPackage stands.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli/tarnwick_program.h"
#include "platform/workspace.h"
#include "plot/plot_fixtures.h"
#include "testkit/layers.h"

namespace tarnwick {
namespace {

using platform::Value;

using CommandRun = testkit::CommandRun;

// Class Stands (UTM 10N, or no reference) in "stands.gpkg", or in the
// given store: 100 m squares 100 m apart, each asking for 7 plots.
void MakeStands(const testkit::TempDir& dir, const std::vector<Value>& ids, bool withReference = true,
                const std::string& store = "stands.gpkg") {
  std::vector<plotfix::StandRow> rows;
  for (const Value& id : ids) {
    rows.push_back({testkit::Square(500000 + 200.0 * static_cast<double>(rows.size()), 4000000, 100), id,
                    Value{std::int64_t{7}}});
  }
  plotfix::MakeStands(dir / store,
                      withReference ? platform::SpatialReference::FromEpsg(26910) : platform::SpatialReference{}, rows);
}

std::int64_t Count(const std::string& workspace, const std::string& name) {
  return platform::Workspace::Open(workspace)->OpenFeatureClass(name)->FeatureCount();
}

const std::string kGrid = "plot-layout --stands stands.gpkg --stand-id StandID --units meters --spacing 30,30";

TEST(PlotLayoutCommand, WritesPlotsInEachStoreAsksBeforeReplacingAndAddsAboveTheHighestNumber) {
  testkit::TempDir dir;
  MakeStands(dir, {Value{std::string("A")}, Value{std::string("B")}});
  std::filesystem::create_directories(dir.path() / "shapes");
  struct Store {
    std::string out, workspace, name, report;
  };
  const Store stores[] = {{"shapes/plots.shp", "shapes", "plots", "shapes/plots_report.rtf"},
                          {"out.gdb/Plots", "out.gdb", "Plots", "Plots_report.rtf"},
                          {"out.gpkg/Plots", "out.gpkg", "Plots", "Plots_report.rtf"}};
  for (const Store& store : stores) {
    SCOPED_TRACE(store.out);
    std::filesystem::remove(dir / "Plots_report.rtf");
    CommandRun run = Tarnwick(dir, kGrid + " --out " + store.out);
    ASSERT_EQ(run.exitCode, 0) << run.err << run.out;
    EXPECT_NE(run.out.find("Plot Generation Complete"), std::string::npos);
    EXPECT_NE(run.out.find("1] Stand 'A': Plot Count = 9 (0 iterations)"), std::string::npos);
    EXPECT_NE(run.out.find("2] Stand 'B': Plot Count = 9 (0 iterations)"), std::string::npos);
    EXPECT_EQ(Count(dir / store.workspace, store.name), 18);
    EXPECT_TRUE(std::filesystem::exists(dir / store.report));

    auto plots = platform::Workspace::Open(dir / store.workspace)->OpenFeatureClass(store.name);
    EXPECT_EQ(platform::ValueToText(testkit::Column(*plots, "PlotID").at(0)), "1");
    EXPECT_EQ(platform::ValueToText(testkit::Column(*plots, "StandID").at(0)), "A");

    // A second run leaves the class alone unless asked to replace it.
    run = Tarnwick(dir, kGrid + " --out " + store.out);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("already exists"), std::string::npos) << run.err;
    EXPECT_EQ(Count(dir / store.workspace, store.name), 18);
    run = Tarnwick(dir, kGrid + " --out " + store.out + " --overwrite --report mine.rtf");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(Count(dir / store.workspace, store.name), 18);
    EXPECT_TRUE(std::filesystem::exists(dir / "mine.rtf"));
  }

  // Added to the GeoPackage's 18 plots, numbered above the highest; the
  // default report takes the next free name.
  const CommandRun run = Tarnwick(dir, "plot-layout --stands stands.gpkg --stand-id StandID --plots-field Plots "
                                       "--into out.gpkg --plot-id-field PlotID --start-above-highest --orientation 20");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find("First Plot Starting Number:  19"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("1] Stand 'A': Plot Count = 7 ("), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("2] Stand 'B': Plot Count = 7 ("), std::string::npos) << run.out;
  EXPECT_EQ(Count(dir / "out.gpkg", "Plots"), 32);
  EXPECT_TRUE(std::filesystem::exists(dir / "Plots_report_1.rtf"));
}

TEST(PlotLayoutCommand, RefusesBadArgumentsAndReportsFailedRuns) {
  testkit::TempDir dir;
  MakeStands(dir, {Value{std::string("A")}, Value{}, Value{std::string("C")}});

  // Two spacing options, no units for a spacing, an unknown field.
  EXPECT_EQ(Tarnwick(dir, kGrid + " --plots 5 --out a.gpkg/P").exitCode, 2);
  EXPECT_EQ(Tarnwick(dir, "plot-layout --stands stands.gpkg --stand-id StandID --spacing 30,30 --out a.gpkg/P").exitCode, 2);
  EXPECT_EQ(Tarnwick(dir, "plot-layout --stands stands.gpkg --stand-id Nope --plots 5 --out a.gpkg/P").exitCode, 2);

  // A Null stand ID fails the run after the first stand's plots, and the
  // new store goes with them.
  const CommandRun run = Tarnwick(dir, kGrid + " --out out.gpkg/Plots");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.out.rfind("Analysis Failed:", 0), 0u) << run.out;
  EXPECT_NE(run.out.find("  --> Error Number = 94"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir / "out.gpkg"));

  // Stands without a spatial reference fail the run before it writes.
  MakeStands(dir, {Value{std::string("A")}}, false, "bare");
  const CommandRun bare = Tarnwick(dir, "plot-layout --stands bare/Stands.shp --stand-id StandID --units meters "
                                        "--spacing 30,30 --out out.gpkg/Plots");
  EXPECT_EQ(bare.exitCode, 1);
  EXPECT_EQ(bare.err.rfind("tarnwick: the plot layout failed: The stand layer 'Stands' has no spatial reference\n"
                           "Nothing was changed.", 0), 0u) << bare.err;
  EXPECT_FALSE(std::filesystem::exists(dir / "out.gpkg"));
}

}  // namespace
}  // namespace tarnwick
