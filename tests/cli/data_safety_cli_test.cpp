// Bad inputs, grouped by kind, run through the program: each case checks the
// exit code, the first line the program says, and that every input and old
// output reads back as it was, with nothing left beside it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "cli/tarnwick_program.h"
#include "platform/dataset_lock.h"
#include "platform/workspace.h"
#include "plot/plot_fixtures.h"
#include "testkit/dataset_snapshot.h"
#include "testkit/layers.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;
using platform::Field;
using platform::FieldType;
using platform::Value;
using testkit::CommandRun;
using testkit::TempDir;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const platform::SpatialReference& Utm() {
  static const auto utm = platform::SpatialReference::FromEpsg(26910);
  return utm;
}

// stands.gpkg|Stands (plotfix's stand class): squares of side metres in a
// row, the orientation 0 but the second stand's.
void MakeStands(const TempDir& dir, const std::vector<Value>& ids, double side = 100, Value secondOrient = Value{0.0}) {
  std::vector<plotfix::StandRow> rows;
  for (const Value& id : ids) {
    const double x = 500000 + 2 * side * static_cast<double>(rows.size());
    rows.push_back({testkit::Square(x, 4000000, side), id, {}, {}, {}, rows.size() == 1 ? secondOrient : Value{0.0}});
  }
  plotfix::MakeStands(dir / "stands.gpkg", Utm(), rows);
}

const std::string kStands = "--stands stands.gpkg --stand-id StandID";
const std::string kLayout = "plot-layout " + kStands + " --units meters ";
const std::string kGrid = kLayout + "--spacing 30,30 ";

// Class Plots (PlotID text) in the store: three points, the second without
// a shape, which fails a stand ID import or a waypoint file.
void MakePlots(const std::string& store) {
  const bool shapefile = platform::Workspace::KindOfPath(store) == platform::WorkspaceKind::ShapefileFolder;
  testkit::MakeClass(store,
                     testkit::ClassSpec(shapefile ? "plots" : "Plots", platform::GeometryType::Point, Utm(),
                                        {Field{"PlotID", "", FieldType::String, 10}}),
                     {{testkit::PointWkt(500050, 4000050), {Value{"P0"}}},
                      {"", {Value{"P1"}}},
                      {testkit::PointWkt(500070, 4000050), {Value{"P2"}}}});
}

struct Store {
  const char* store;      // as made
  const char* layer;      // as a layer source
  const char* output;     // the class as an --out path
  const char* className;  // as messages name it
  int shapelessId;        // the feature ID of the point without a shape
};
const Store kStores[] = {{"shp", "shp/plots.shp", "shp/plots.shp", "plots", 1},
                         {"inv.gdb", "inv.gdb|layername=Plots", "inv.gdb/Plots", "Plots", 2},
                         {"inv.gpkg", "inv.gpkg|layername=Plots", "inv.gpkg/Plots", "Plots", 2}};

// The first line the program says, progress and notes aside.
std::string FirstMessage(const std::string& err) {
  std::istringstream lines(err);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("tarnwick:")) return line;
  }
  return "";
}

// Everything the test compares before and after a run that must change nothing.
struct Picture {
  std::vector<std::string> snapshots;
  std::set<std::string> entries;
};
Picture Take(const TempDir& dir, const std::vector<std::string>& layers) {
  Picture picture;
  for (const auto& layer : layers) picture.snapshots.push_back(testkit::Snapshot(dir / layer));
  picture.entries = testkit::FolderEntries(dir.path());
  return picture;
}
void ExpectUnchanged(const Picture& before, const Picture& after) {
  EXPECT_EQ(before.snapshots, after.snapshots);
  EXPECT_EQ(before.entries, after.entries);
}

// Runs refused before they start: exit code 2, and the first message
// starting as given (after "tarnwick: ") for each case's arguments.
void ExpectRefused(const TempDir& dir, const std::string& command,
                   const std::vector<std::pair<std::string, std::string>>& cases) {
  for (const auto& [arguments, firstLine] : cases) {
    SCOPED_TRACE(arguments);
    const CommandRun run = Tarnwick(dir, command + arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(FirstMessage(run.err), StartsWith("tarnwick: " + firstLine)) << run.err;
  }
}

TEST(DataSafety, FailingMidRunChangesNothingInAnyStore) {
  TempDir dir;
  MakeStands(dir, {Value{"A"}, Value{"B"}, Value{}, Value{"D"}});
  for (const Store& store : kStores) MakePlots(dir / store.store);
  std::ofstream(dir / "old.way") << "old waypoints\r\n";
  std::vector<std::string> layers = {"stands.gpkg"};
  for (const Store& store : kStores) layers.push_back(store.layer);
  const Picture before = Take(dir, layers);

  const std::string nothingChanged = "\nNothing was changed. The failure report is on standard output. Error log: ";
  const std::string nullStand = "tarnwick: the plot layout failed at stand '<Null>' (3 of 4): Invalid use of Null";
  for (const Store& store : kStores) {
    SCOPED_TRACE(store.store);
    for (const std::string& output : {"--into \"" + std::string(store.layer) + "\" --plot-id-field PlotID",
                                      "--out " + std::string(store.output) + " --overwrite"}) {
      const CommandRun run = Tarnwick(dir, kGrid + output);
      EXPECT_EQ(run.exitCode, 1) << run.err;
      EXPECT_EQ(FirstMessage(run.err), nullStand) << run.err;
      EXPECT_THAT(run.err, HasSubstr(nullStand + nothingChanged));
    }
    const CommandRun run = Tarnwick(dir, "import-stand-ids " + kStands + " --points \"" + store.layer + "\" --clone");
    EXPECT_EQ(run.exitCode, 1);
    const std::string name = store.className;
    const std::string failed = "tarnwick: the stand ID import into '" + name + "' failed: Point feature " +
                               std::to_string(store.shapelessId) + " of '" + name + "' has no geometry.";
    EXPECT_EQ(FirstMessage(run.err), failed) << run.err;
    EXPECT_THAT(run.err, HasSubstr(failed + nothingChanged));
    EXPECT_EQ(run.out, "Function Failed...\n");
  }
  const CommandRun run = Tarnwick(dir, "waypoints --points shp/plots.shp --plot-id PlotID --out old.way --overwrite");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(FirstMessage(run.err),
            "tarnwick: the waypoint conversion failed: Point feature 1 of 'plots' has no geometry.");
  EXPECT_EQ(run.out, "Function Failed...\n");
  ExpectUnchanged(before, Take(dir, layers));
  EXPECT_EQ(testkit::ReadFile(dir / "old.way"), "old waypoints\r\n");
}

TEST(DataSafety, RunsOnPathsTheyReadOrOnDataInUseAreRefusedAndAFailedCommitChangesNothing) {
  TempDir dir;
  MakeStands(dir, {Value{"A"}});
  MakePlots(dir / "shp");
  MakePlots(dir / "inv.gpkg");
  std::ofstream(dir / "old.way") << "old waypoints\r\n";
  std::ofstream(dir / "taken.rtf") << "a report";
  const std::vector<std::string> layers = {"stands.gpkg", "shp/plots.shp", "inv.gpkg|layername=Plots"};
  const Picture before = Take(dir, layers);
  const std::string waypoints = "waypoints --points shp/plots.shp --plot-id PlotID ";
  ExpectRefused(dir, "", {
      {kGrid + "--out stands.gpkg/Stands --overwrite",
       "--out 'stands.gpkg/Stands' is the stand layer 'Stands', which this run reads"},
      {kGrid + "--out new.gpkg/Plots --report stands.gpkg", "--report 'stands.gpkg' would write over 'stands.gpkg'"},
      {kGrid + "--into shp/plots.shp --plot-id-field PlotID --report shp/plots.dbf",
       "--report 'shp/plots.dbf' would write over"},
      {"import-stand-ids " + kStands + " --points shp/plots.shp --clone --report stands.gpkg",
       "--report 'stands.gpkg' would write over 'stands.gpkg'"},
      {waypoints + "--out old.way --overwrite --report old.way", "--report 'old.way' would write over 'old.way'"},
      {waypoints + "--out new.way --report taken.rtf",
       "--report 'taken.rtf': the file already exists; pass --overwrite to replace it."},
  });
  EXPECT_EQ(testkit::ReadFile(dir / "taken.rtf"), "a report");

  const std::string into = kGrid + "--into shp/plots.shp --plot-id-field PlotID";
  const std::string inUse = "tarnwick: 'shp/plots.shp' is in use by another run (process " +
                            std::to_string(::getpid()) + "); try again when it has finished. Nothing was changed.";
  {
    const platform::DatasetLock otherRun = platform::DatasetLock::Acquire(dir / "shp/plots.shp");
    for (const std::string& arguments :
         {into, "import-stand-ids " + kStands + " --points shp/plots.shp --clone"}) {
      const CommandRun run = Tarnwick(dir, arguments);
      EXPECT_EQ(run.exitCode, 2);
      EXPECT_EQ(FirstMessage(run.err), inUse) << run.err;
    }
  }
  {
    // Another program reading the package keeps the run from committing.
    auto reader = platform::OpenFeatureLayer(dir / "inv.gpkg|layername=Plots").featureClass->Search();
    ASSERT_TRUE(reader->NextFeature());
    const CommandRun run = Tarnwick(dir, kGrid + "--into inv.gpkg --plot-id-field PlotID");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(FirstMessage(run.err),
                StartsWith("tarnwick: the plot layout failed: Cannot save the edits to 'inv.gpkg'"));
    EXPECT_THAT(run.err, Not(HasSubstr("Wrote ")));
  }
  ExpectUnchanged(before, Take(dir, layers));

  // The default report never replaces one: it takes the next free number.
  ASSERT_EQ(Tarnwick(dir, kGrid + "--out out.gpkg/Plots").exitCode, 0);
  const std::string first = testkit::ReadFile(dir / "Plots_report.rtf");
  ASSERT_EQ(Tarnwick(dir, kGrid + "--out out.gpkg/Plots --overwrite --orientation 45").exitCode, 0);
  EXPECT_EQ(testkit::ReadFile(dir / "Plots_report.rtf"), first);
  EXPECT_NE(testkit::ReadFile(dir / "Plots_report_1.rtf").find("45"), std::string::npos);
  // Once the other run is over the dataset is free, and no lock file stays.
  EXPECT_EQ(Tarnwick(dir, into).exitCode, 0);
  EXPECT_FALSE(fs::exists(dir / "shp/.plots.shp.tarnwick-lock"));
}

// tarnwick running in the background with its messages read as they come:
// the shell says its process number, then becomes the program.
class BackgroundRun {
 public:
  BackgroundRun(const TempDir& dir, const std::string& arguments)
      : err_(::popen(("cd '" + dir.path().string() + "' && echo $$ && exec '" + TARNWICK_EXE + "' " + arguments +
                      " 2>&1 >/dev/null").c_str(), "r")) {
    char line[32];
    if (err_ && std::fgets(line, sizeof line, err_)) pid_ = std::atoi(line);
  }
  ~BackgroundRun() {  // a run the test left unfinished is stopped, not waited for
    if (!err_) return;
    Signal(SIGKILL);
    ::pclose(err_);
  }
  // Reads the messages up to the line that starts with start; false at their end.
  bool WaitFor(const std::string& start) {
    char line[4096];
    while (err_ && std::fgets(line, sizeof line, err_)) {
      messages_ += line;
      if (std::string(line).starts_with(start)) return true;
    }
    return false;
  }
  void Signal(int signal) {
    if (pid_ > 0) ::kill(pid_, signal);
  }
  int Finish() {
    WaitFor("\x01");  // reads to the end
    const int status = ::pclose(std::exchange(err_, nullptr));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  const std::string& Messages() const { return messages_; }

 private:
  std::FILE* err_;
  pid_t pid_ = -1;
  std::string messages_;
};

TEST(DataSafety, CtrlCRollsBackInEveryStore) {
  TempDir dir;
  std::vector<Value> ids;
  for (int i = 0; i < 200; ++i) ids.push_back(Value{"S" + std::to_string(i)});
  MakeStands(dir, ids, 400);  // 40,000 plots a stand at 2 m: far longer than a signal takes
  for (const Store& store : kStores) MakePlots(dir / store.store);
  ASSERT_EQ(Tarnwick(dir, kLayout + "--spacing 100,100 --out shp/old.shp").exitCode, 0);
  std::vector<std::string> layers = {"shp/old.shp"};
  std::vector<std::string> runs = {"--overwrite --out shp/old.shp"};
  for (const Store& store : kStores) {
    layers.push_back(store.layer);
    runs.push_back(std::string("--into \"") + store.layer + "\" --plot-id-field PlotID");
  }
  const Picture before = Take(dir, layers);
  for (const std::string& output : runs) {
    SCOPED_TRACE(output);
    BackgroundRun run(dir, kLayout + "--spacing 2,2 " + output);
    ASSERT_TRUE(run.WaitFor("Generating Plots in Stands")) << run.Messages();
    run.Signal(SIGINT);
    EXPECT_EQ(run.Finish(), 130);
    EXPECT_EQ(FirstMessage(run.Messages()), "tarnwick: interrupted; nothing was changed.") << run.Messages();
  }
  ExpectUnchanged(before, Take(dir, layers));
}

// A small file system of its own, mounted for the test where the machine
// lets it (as root); the test is skipped elsewhere.
class SmallDisk {
 public:
  explicit SmallDisk(const fs::path& at) : at_(at) {
    fs::create_directories(at_);
    mounted_ = ::mount("tarnwick-test", at_.c_str(), "tmpfs", 0, "size=1m") == 0;
  }
  ~SmallDisk() {
    if (mounted_) ::umount(at_.c_str());
  }
  bool Mounted() const { return mounted_; }

 private:
  fs::path at_;
  bool mounted_ = false;
};

TEST(DataSafety, AFullDiskFailsTheRunAndKeepsTheOldOutput) {
  TempDir dir;
  const SmallDisk disk(dir.path() / "disk");
  if (!disk.Mounted()) GTEST_SKIP() << "no small file system can be mounted here";
  MakeStands(dir, {Value{"A"}, Value{"B"}});
  // The class as an --out path, as a layer, and the reason the run gives.
  const std::array<std::string, 3> cases[] = {
      {"disk/shp/plots.shp", "disk/shp/plots.shp", "No space left on device"},
      {"disk/inv.gdb/Plots", "disk/inv.gdb|layername=Plots", "Cannot insert a feature into 'Plots'"},
      {"disk/inv.gpkg/Plots", "disk/inv.gpkg|layername=Plots", "database or disk is full"}};
  for (const auto& [output, layer, reason] : cases) {
    SCOPED_TRACE(output);
    MakePlots(platform::SplitClassPath(dir / output).workspace);
    const Picture before = Take(dir, {layer});
    const CommandRun run = Tarnwick(dir, kLayout + "--spacing 0.5,0.5 --overwrite --out " + output);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(FirstMessage(run.err), StartsWith("tarnwick: the plot layout failed at stand '")) << run.err;
    EXPECT_THAT(FirstMessage(run.err), HasSubstr(reason));
    ExpectUnchanged(before, Take(dir, {layer}));
  }
  // A stand ID import into a shapefile on a disk with no room left for the
  // copy it edits.
  {
    std::ofstream filler(dir / "disk/filler", std::ios::binary);
    const std::string block(4096, 'x');
    while (filler.write(block.data(), block.size())) {}
  }
  const Picture before = Take(dir, {"disk/shp/plots.shp"});
  const CommandRun run =
      Tarnwick(dir, "import-stand-ids " + kStands + " --points disk/shp/plots.shp --clone");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_THAT(FirstMessage(run.err), StartsWith("tarnwick: the stand ID import into 'plots' failed: ")) << run.err;
  EXPECT_THAT(FirstMessage(run.err), HasSubstr("No space left on device"));
  ExpectUnchanged(before, Take(dir, {"disk/shp/plots.shp"}));
}

TEST(DataSafety, BadAndHangProneNumbersAreRefusedBeforeAnythingIsWritten) {
  TempDir dir;
  MakeStands(dir, {Value{"A"}, Value{"B"}}, 100, Value{HUGE_VAL});
  const Picture before = Take(dir, {"stands.gpkg"});
  const std::string run = kLayout + "--out out.gpkg/Plots ";
  ExpectRefused(dir, run, {
      {"--plots 5 --orientation 1e308", "--orientation '1e308': the orientation must be at most 360"},
      {"--plots 5 --orientation inf", "No Grid Orientation Specified!"},
      {"--plots 1000000000", "--plots '1000000000': the number of plots per stand must be at most 50000000"},
      {"--spacing 0.1,0.1 --max-plots 1000000",
       "This run would lay out about 2,000,000 plots, more than the limit of 1,000,000. Pass a larger --max-plots"},
      {"--plots 5 --orientation-field Orient",
       "Stand 'B': the orientation in field 'Orient' is inf, which is not a finite number. Nothing was changed."},
      {"--plots 5 --buffer 1e300 --buffer-units chains",
       "--buffer '1e300': the buffer distance must be at most 1000000000"},
  });
  // Other bad values: one line naming the option and value, and nothing more.
  const std::pair<std::string, std::string> cases[] = {
      {"--spacing 0,10", "--spacing '0,10': the X spacing must be greater than 0"},
      {"--spacing 1e12,10", "--spacing '1e12,10': the X spacing must be at most 1000000000"},
      {"--plots -5", "--plots '-5': the number of plots per stand must be at least 0"},
      {"--plots 5 --ratio 1:-2", "--ratio '1:-2': the Y-value of the ratio must be greater than 0"},
      {"--plots 5 --anchor 1e11,0", "--anchor '1e11,0': the anchor's X-coordinate must be at most 10000000000"},
      {"--plots 5 --start 1.5", "--start '1.5': the first plot number must be a whole number"},
      {"--plots 5 --max-plots 0", "--max-plots '0': the plot limit must be at least 1"},
      // A text that is no number at all: the Plot Layout dialog's message, then the flag and the value.
      {"--spacing nan,10",
       "No X-Axis Spacing Distance Specified!\nPlease specify your desired spacing between points...\n"
       "--spacing 'nan,10'"},
  };
  for (const auto& [arguments, line] : cases) {
    const CommandRun result = Tarnwick(dir, run + arguments);
    EXPECT_EQ(result.exitCode, 2) << arguments;
    EXPECT_EQ(result.err, "tarnwick: " + line + "\n");
  }
  ExpectUnchanged(before, Take(dir, {"stands.gpkg"}));
}

TEST(DataSafety, DamagedFilesAreNamedWithTheReason) {
  TempDir dir;
  MakePlots(dir / "shp");
  auto damagedCopy = [&](const std::string& folder, const std::string& ending, std::uintmax_t size) {
    fs::copy(dir / "shp", dir / folder);
    fs::resize_file(dir / (folder + "/plots" + ending), size);
  };
  damagedCopy("cut_shp", ".shp", 150);
  damagedCopy("cut_dbf", ".dbf", 80);
  std::ofstream(dir / "fake.gpkg") << "not a database";
  fs::create_directories(dir / "fake");
  std::ofstream(dir / "fake/plots.shp")
      << "not a shapefile either, but long enough to hold a header of a hundred bytes "
         "if it were one, which it is not";
  // Stands whose second polygon claims a million parts.
  testkit::MakeClass(dir / "bad_stands",
                     testkit::ClassSpec("stands", platform::GeometryType::Polygon, Utm(),
                                        {Field{"StandID", "", FieldType::String, 10}}),
                     {{testkit::Square(500000, 4000000, 100), {Value{"A"}}},
                      {testkit::Square(500200, 4000000, 100), {Value{"B"}}}});
  {
    std::fstream shp(dir / "bad_stands/stands.shp", std::ios::in | std::ios::out | std::ios::binary);
    unsigned char length[4];
    shp.seekg(104).read(reinterpret_cast<char*>(length), 4);  // the first record's length in 16-bit words
    const long second = 100 + 8 + 2L * ((length[0] << 24) | (length[1] << 16) | (length[2] << 8) | length[3]);
    const std::int32_t parts = 1000000;
    shp.seekp(second + 8 + 36).write(reinterpret_cast<const char*>(&parts), 4);
  }
  const Picture before = Take(dir, {});
  const std::string unreadable =
      "Feature 1 of 'bad_stands/stands.shp' cannot be read: Corrupted .shp file : shape 1, nPoints=5, nParts=1000000";
  ExpectRefused(dir, "plot-layout --stands bad_stands/stands.shp --stand-id StandID --plots 5 --out new.gpkg/P",
                {{"", unreadable}});
  // Found only while the points are being given their stands: the run
  // fails and the points keep what they had.
  const CommandRun import =
      Tarnwick(dir, "import-stand-ids --stands bad_stands/stands.shp --stand-id StandID --points shp/plots.shp --clone");
  EXPECT_EQ(import.exitCode, 1);
  EXPECT_THAT(FirstMessage(import.err),
              StartsWith("tarnwick: the stand ID import into 'plots' failed: " + unreadable));
  const std::string tail = " --plot-id PlotID --out x.way";
  ExpectRefused(dir, "waypoints --points ", {
      {"cut_shp/plots.shp" + tail,
       "Cannot use the layer 'cut_shp/plots.shp': 'cut_shp/plots.shp' is damaged: it holds 150 bytes"},
      {"cut_dbf/plots.shp" + tail,
       "Cannot use the layer 'cut_dbf/plots.shp': 'cut_dbf/plots.dbf' is damaged: it should hold 3 records"},
      {"fake.gpkg" + tail, "Cannot open 'fake.gpkg': it is not a GeoPackage"},
      {"fake/plots.shp" + tail, "Cannot open layer 'fake/plots.shp': 'fake/plots.shp' is not a shapefile file"},
  });
  ExpectUnchanged(before, Take(dir, {}));
}

}  // namespace
}  // namespace tarnwick
