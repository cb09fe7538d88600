#include "support/file_operations.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "presentation/error_handling.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {
using platform::host::MessageButtons;
using platform::host::MessageResult;

TEST(FileOperations, WriteAddsOneLineEndAndReadGivesItBack) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  const std::string path = dir / "report.txt";
  EXPECT_EQ(ReadTextFile(path), "");  // missing file, no message
  EXPECT_TRUE(WriteTextFile(app, path, "line 1\r\nline 2\r\n", false));
  EXPECT_EQ(ReadTextFile(path), "line 1\r\nline 2\r\n\r\n");
  EXPECT_TRUE(WriteTextFileOverwrite(app, path, "short", true));
  EXPECT_EQ(ReadTextFile(path), "short\r\n");
  EXPECT_TRUE(app.boxes.empty());
  EXPECT_TRUE(WriteTextFileOverwrite(path, ""));
  EXPECT_EQ(ReadTextFile(path), "\r\n");
}

TEST(FileOperations, ExistingFileAsksBeforeOverwriting) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  const std::string path = dir / "plots.way";
  std::ofstream(path) << "old";

  app.answers.push_back(MessageResult::Cancel);
  EXPECT_FALSE(WriteTextFile(app, path, "new", false));
  EXPECT_EQ(ReadTextFile(path), "old");
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "File Exists:");
  EXPECT_EQ(app.boxes[0].text, "File Already Exists!\n  --> " + path +
                                   "\nClick 'OK' to overwrite the file, or 'CANCEL' to quit...");
  EXPECT_EQ(app.boxes[0].buttons, MessageButtons::OKCancel);

  app.answers.push_back(MessageResult::OK);
  EXPECT_TRUE(WriteTextFile(app, path, "new", false));
  EXPECT_EQ(ReadTextFile(path), "new\r\n");
  EXPECT_EQ(app.boxes.size(), 2u);
}

TEST(FileOperations, UnwritablePathClimbsTheErrorRoad) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  EXPECT_THROW(WriteTextFile(app, dir / "missing/x.txt", "t", true), RoutineError);
  // A text that cannot take its name leaves nothing of itself behind.
  std::filesystem::create_directories(dir.path() / "taken.txt/inside");
  EXPECT_THROW(WriteTextFileOverwrite(dir / "taken.txt", "t"), RoutineError);
  EXPECT_TRUE(std::filesystem::is_directory(dir.path() / "taken.txt/inside"));
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "taken.txt.partial"));
}

TEST(FileOperations, NestedFolderListingIsSortedAndAppended) {
  testkit::TempDir dir;
  std::filesystem::create_directories(dir.path() / "b/deeper");
  std::filesystem::create_directories(dir.path() / "a");
  for (const char* name : {"z.txt", "b/deeper/m.shp", "a/k.dbf", "b/c.prj"}) std::ofstream(dir / name) << "x";
  std::vector<std::string> files{"/zzz-already-listed"};
  ReturnFilesFromNestedFolders2(dir.path().string(), files);
  // The whole list, earlier entries included, ends up in byte order.
  EXPECT_EQ(files, (std::vector<std::string>{dir / "a/k.dbf", dir / "b/c.prj", dir / "b/deeper/m.shp",
                                             dir / "z.txt", "/zzz-already-listed"}));
}

TEST(FileOperations, OpenDocHandsThePathToTheDesktopViewerWithoutWaiting) {
  // A stand-in viewer early on PATH records what it was asked to open.
  testkit::TempDir dir;
  const std::string viewer = dir / "xdg-open";
  std::ofstream(viewer) << "#!/bin/sh\nprintf '%s' \"$1\" > \"" << (dir / "opened.tmp") << "\"\nmv \""
                        << (dir / "opened.tmp") << "\" \"" << (dir / "opened") << "\"\n";
  std::filesystem::permissions(viewer, std::filesystem::perms::owner_all);
  const std::string oldPath = std::getenv("PATH") ? std::getenv("PATH") : "/usr/bin:/bin";
  setenv("PATH", (dir.path().string() + ":" + oldPath).c_str(), 1);
  const bool started = OpenDoc("/data/manual with blanks.pdf");
  setenv("PATH", oldPath.c_str(), 1);
  ASSERT_TRUE(started);
  for (int i = 0; i < 200 && !std::filesystem::exists(dir / "opened"); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(testkit::ReadFile(dir / "opened"), "/data/manual with blanks.pdf");
}

}  // namespace
}  // namespace tarnwick
