#include "platform/host/memory_map_document.h"
#include "presentation/error_handling.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <stdexcept>

#include "platform/errors.h"
#include "platform/host/map_document.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {
namespace fs = std::filesystem;

// Three routines calling each other; the innermost fails. Each one keeps its
// Guarded call on the line whose number is recorded next to it.
void Level3() { Guarded("Level3", "TestModule", [] { throw std::runtime_error("boom"); }); }  constexpr long kLine3 = __LINE__;
void Level2() { Guarded("Level2", "TestModule", [] { Level3(); }); }  constexpr long kLine2 = __LINE__;
void Level1() { Guarded("Level1", "OtherModule", [] { Level2(); }); }  constexpr long kLine1 = __LINE__;

std::vector<fs::path> LogFiles(const fs::path& dir) {
  std::vector<fs::path> found;
  for (const auto& e : fs::directory_iterator(dir)) {
    if (e.path().filename().string().starts_with("Tarnwick_Error_Log_")) found.push_back(e.path());
  }
  return found;
}

TEST(ErrorRoad, NestedRoutinesStackInnermostLastLogBesideTheDocumentAndNeverThrow) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  platform::host::MemoryMapDocument doc(dir / "stands.mxd", "stands");

  ErrorLog log;
  long entryLine = 0;
  try {
    Level1();
  } catch (...) {
    entryLine = __LINE__ + 1;
    log = HandleErrorAtEntryPoint("cmdOK_Click", "frmPlotLayout", &app, &doc);
  }

  const auto files = LogFiles(dir.path());
  ASSERT_EQ(files.size(), 1u);
  EXPECT_TRUE(std::regex_match(files[0].filename().string(), std::regex(R"(Tarnwick_Error_Log_\d{8}_\d{6}\.txt)")));
  EXPECT_EQ(log.path, files[0].string());
  EXPECT_EQ(log.number, platform::kErrInvalidProcedureCall);

  const std::string expected =
      "Error in 'stands.mxd'\r\n"
      "Record Call Stack Sequence - Bottom line is error line.\r\n"
      "\r\n"
      "Log file saved to:\r\n"
      "  --> " + files[0].string() + "\r\n"
      "\r\n"
      "cmdOK_Click frmPlotLayout Line : " + std::to_string(entryLine) + "\r\n" +
      "\tLevel1 OtherModule Line : " + std::to_string(kLine1) + "\r\n" +
      "\tLevel2 TestModule Line : " + std::to_string(kLine2) + "\r\n" +
      "\tLevel3 TestModule Line : " + std::to_string(kLine3) + "\r\n" +
      "\r\nError Number \r\n\t5\r\nDescription\r\n\tboom\r\n\r\n";
  EXPECT_EQ(log.text, expected);
  ASSERT_EQ(app.windows.size(), 1u);
  EXPECT_EQ(app.windows[0], expected);
  EXPECT_EQ(testkit::ReadFile(files[0]), expected + "\r\n");

  // A log that cannot be written, or no error in flight, still reports and never throws.
  platform::host::MemoryMapDocument unwritable(dir / "missing/folder/x.mxd", "x");
  try {
    Level2();
  } catch (...) {
    EXPECT_NO_THROW(log = HandleErrorAtEntryPoint("Run", "M", &app, &unwritable));
  }
  EXPECT_TRUE(log.path.empty());
  ASSERT_EQ(app.windows.size(), 2u);
  EXPECT_NE(app.windows[1].find("\tLevel2 TestModule"), std::string::npos);
  log = HandleErrorAtEntryPoint("Run", "M", &app, &doc, {});
  EXPECT_EQ(app.windows.size(), 3u);
  EXPECT_FALSE(log.path.empty());
  EXPECT_THROW(HandleError("Inner", "M"), RoutineError);
}

TEST(ErrorRoad, InnerLevelsKeepNumberAndSourceOfPlatformErrors) {
  try {
    Guarded("Outer", "M", [] {
      Guarded("Inner", "M", [] { throw platform::PlatformError(1000, "OGR", "layer plots: no such table"); }, {});
    });
    FAIL() << "no error climbed";
  } catch (const RoutineError& e) {
    EXPECT_TRUE(e.Number() == 1000 && e.Source() == "OGR" && e.Climbing()) << e.Number() << " " << e.Source();
    EXPECT_TRUE(e.Description().starts_with("\tOuter M Line : "));
    // The inner routine was given no line: its location ends with a blank.
    EXPECT_NE(e.Description().find("\r\n\tInner M \r\n\r\nError Number \r\n\t1000\r\nDescription\r\n\tlayer plots: no such table\r\n\r\n"),
              std::string::npos)
        << e.Description();
  }
}

TEST(ErrorRoad, ErrorAtTheEntryPointShowsTheBannerWithTheHostsVersionOrTheProgramsOwn) {
  testkit::TempDir dir;
  testkit::FakeApplication app;  // version 1.2.3
  platform::host::MemoryMapDocument doc(dir / "sub/../inventory.mxd", "inventory");
  fs::create_directories(dir.path() / "sub");

  ErrorLog log;
  try {
    RaiseError(platform::kErrTypeMismatch, "frmLayerID", "Type mismatch");
  } catch (...) {
    log = HandleErrorAtEntryPoint("cmdOK_Click", "frmLayerID", &app, &doc, {});
  }
  const std::string tail =
      "\r\n\r\ncmdOK_Click frmLayerID \r\n"
      "TNWK Waypoint Converter v. 1.2.3:  Error Number 13\r\nDescription:  Type mismatch\r\n\r\n";
  ASSERT_GE(log.text.size(), tail.size());
  EXPECT_EQ(log.text.substr(log.text.size() - tail.size()), tail);
  EXPECT_TRUE(log.text.starts_with("Error in 'inventory.mxd'\r\n"));
  EXPECT_EQ(LogFiles(dir.path()).size(), 1u);

  // Without application or document: the program's own version, and the log
  // in the working folder.
  const fs::path previous = fs::current_path();
  fs::current_path(dir.path() / "sub");
  try {
    RaiseError(0, "x", "");  // number 0 still gives the whole report
  } catch (...) {
    log = HandleErrorAtEntryPoint("Main", "cli", nullptr, nullptr, {});
  }
  const fs::path cwd = fs::current_path();
  fs::current_path(previous);
  const auto files = LogFiles(dir.path() / "sub");
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(log.number, 0);
  EXPECT_EQ(log.text, "Error in '.mxd'\r\n"
                      "Record Call Stack Sequence - Bottom line is error line.\r\n\r\n"
                      "Log file saved to:\r\n  --> " +
                          (cwd / files[0].filename()).string() +
                          "\r\n\r\nMain cli \r\n"
                          "TNWK Waypoint Converter v. 0.1.0:  Error Number 0\r\nDescription:  \r\n\r\n");
}

}  // namespace
}  // namespace tarnwick
