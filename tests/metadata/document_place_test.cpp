// Where a class's metadata document lives, as other programs read it, and
// that it goes when its class does.
#include <gtest/gtest.h>

#include <filesystem>

#include "dataset_fixture.h"
#include "metadata/metadata_functions.h"
#include "platform/metadata_store.h"
#include "testkit/run_command.h"

namespace tarnwick::metadata {
namespace {

namespace fs = std::filesystem;

TEST(MetadataDocumentPlace, GeoPackageHoldsAWholeDocumentThatOtherParsersRead) {
  testkit::TempDir dir;
  const std::string path = dir / "inv.gpkg";
  {
    auto plots = test::CreatePlots(path);
    ASSERT_EQ(SetMetadataAbstract(*plots, "Plots of the 2026 cruise"), "Succeeded");
  }
  // Python's own SQLite and XML parser, independent of GDAL and pugixml.
  const auto run = testkit::RunCommand(
      dir, "python3",
      "-c \"import sqlite3, xml.dom.minidom as m; c = sqlite3.connect('inv.gpkg'); "
      "rows = c.execute(\\\"select metadata from gpkg_metadata g join gpkg_metadata_reference r on "
      "r.md_file_id = g.id where r.table_name = 'Plots'\\\").fetchall(); "
      "print(len(rows), m.parseString(rows[0][0].encode()).documentElement.tagName)\"");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out, "1 metadata\n");

  // A new class of the same name starts without the old one's record.
  auto workspace = platform::Workspace::Open(path);
  workspace->DeleteFeatureClass("Plots");
  auto fresh = test::CreatePlots(path);
  EXPECT_FALSE(platform::MetadataStore(*fresh).Read().has_value());
}

TEST(MetadataDocumentPlace, SidecarDocumentsGoWithTheirClass) {
  testkit::TempDir dir;
  for (const std::string store : {"shapes", "inv.gdb"}) {
    const std::string path = dir / store;
    auto plots = test::CreatePlots(path);
    ASSERT_EQ(SetMetadataAbstract(*plots, "old run"), "Succeeded");
    const std::string sidecar = platform::MetadataSidecarPath(plots->GetWorkspace()->Kind(), path, "Plots");
    ASSERT_TRUE(fs::exists(sidecar)) << sidecar;
    plots.reset();
    platform::Workspace::Open(path)->DeleteFeatureClass("Plots");
    EXPECT_FALSE(fs::exists(sidecar)) << sidecar;
  }
}

}  // namespace
}  // namespace tarnwick::metadata
