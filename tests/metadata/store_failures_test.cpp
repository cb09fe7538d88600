// Where a class's metadata document lives, as other programs read it, and
// that it goes with its class; datasets whose metadata cannot be written, and
// damaged stored documents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "dataset_fixture.h"
#include "metadata/metadata_functions.h"
#include "platform/metadata_store.h"
#include "presentation/error_handling.h"
#include "testkit/fake_application.h"
#include "testkit/run_command.h"

namespace tarnwick::metadata {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;

void MakeReadOnly(const fs::path& path) {
  fs::permissions(path, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
}

void MakeWritable(const fs::path& path) { fs::permissions(path, fs::perms::owner_write, fs::perm_options::add); }

TEST(ReadOnlyDatasets, ShapefileFileOrFolderRefusesSynchronisingAndKeepsNoEdits) {
  testkit::TempDir dir;
  const fs::path folder = dir / "shapes";
  auto plots = test::CreatePlots(folder.string());
  EXPECT_TRUE(platform::MetadataStore(*plots).CanEdit());
  MakeReadOnly(folder / "Plots.shp");  // a read-only shapefile in a writable folder
  EXPECT_EQ(SynchronizeMetadata(*plots), "Unable to synchronize; Metadata not editable...");
  EXPECT_FALSE(fs::exists(folder / "Plots.shp.xml"));

  for (const auto& entry : fs::directory_iterator(folder)) MakeReadOnly(entry.path());
  MakeReadOnly(folder);
  plots = test::Reopen(folder.string());
  EXPECT_FALSE(platform::MetadataStore(*plots).CanEdit());
  EXPECT_EQ(SynchronizeMetadata(*plots), "Unable to synchronize; Metadata not editable...");
  EXPECT_EQ(SetMetadataAbstract(*plots, "not kept"), "Succeeded");  // saving quietly does nothing
  EXPECT_FALSE(fs::exists(folder / "Plots.shp.xml"));
  EXPECT_TRUE(ReturnMetadataPropertySet(*plots).IsNew());
  MakeWritable(folder);
}

TEST(ReadOnlyDatasets, ReadOnlyGeoPackageKeepsItsDocument) {
  testkit::TempDir dir;
  const std::string path = dir / "inv.gpkg";
  {
    auto plots = test::CreatePlots(path);
    ASSERT_EQ(SetMetadataAbstract(*plots, "kept"), "Succeeded");
  }
  MakeReadOnly(path);
  {
    auto plots = test::Reopen(path);
    EXPECT_EQ(SynchronizeMetadata(*plots), "Unable to synchronize; Metadata not editable...");
    SetMetadataAbstract(*plots, "not kept");
    AddMetadataContact(*plots, ContactRecord{}, false, false);
  }
  MakeWritable(path);
  auto plots = test::Reopen(path);
  // Never synchronised, and no contact.
  test::ExpectProperties(ReturnMetadataPropertySet(*plots),
                         {{"dataIdInfo/idAbs", "kept"}, {"mdContact[0]", ""}, {"eainfo/detailed/attr[0]", ""}});
}

TEST(DamagedDocuments, ADamagedShapefileDocumentIsReportedByNameAndLeftAlone) {
  testkit::TempDir dir;
  const fs::path folder = dir / "shapes";
  auto plots = test::CreatePlots(folder.string());
  const fs::path xml = folder / "Plots.shp.xml";
  const std::string damaged = "<metadata><idinfo><descript>";
  std::ofstream(xml) << damaged;

  try {
    ReturnMetadataPropertySet(*plots);
    FAIL() << "a damaged document was read";
  } catch (const RoutineError& error) {
    EXPECT_THAT(error.Description(), AllOf(HasSubstr(xml.string()), HasSubstr("damaged"), HasSubstr("ReturnMetadataPropertySet")));
  }
  EXPECT_EQ(SetMetadataAbstract(*plots, "x"), "Failed");
  EXPECT_EQ(SynchronizeMetadata(*plots), "Failed");
  bool error = false;
  EXPECT_EQ(ReturnMetadataXMLStringFromDataset(*plots, error), "");
  EXPECT_TRUE(error);
  testkit::FakeApplication app;
  EXPECT_EQ(SetAttributeFieldMetadata(*plots, {.fieldName = "StandID"}, app), "ReturnAttributeFieldXPathIndex Failed");
  EXPECT_EQ(testkit::ReadFile(xml), damaged);
}

// A GeoPackage keeps a whole document in its own tables, the other stores a
// file beside the class. Either goes with its class: a new class of the same
// name starts without the old one's record.
TEST(MetadataDocumentPlace, EachStoreKeepsItsDocumentWhereOthersReadItAndDropsItWithItsClass) {
  testkit::TempDir dir;
  for (const testkit::StoreCase& store : testkit::kStores) {
    SCOPED_TRACE(store.name);
    const std::string path = dir / store.path;
    auto plots = test::CreatePlots(path);
    ASSERT_EQ(SetMetadataAbstract(*plots, "Plots of the 2026 cruise"), "Succeeded");
    plots.reset();
    const bool geoPackage = store.kind == platform::WorkspaceKind::GeoPackage;
    const std::string sidecar = platform::MetadataSidecarPath(store.kind, path, "Plots");
    EXPECT_EQ(fs::exists(sidecar), !geoPackage) << sidecar;
    if (geoPackage) {
      // Python's own SQLite and XML parser, independent of GDAL and pugixml.
      const auto run = testkit::RunCommand(
          dir, "python3",
          "-c \"import sqlite3, xml.dom.minidom as m; c = sqlite3.connect('inv.gpkg'); "
          "rows = c.execute(\\\"select metadata from gpkg_metadata g join gpkg_metadata_reference r on "
          "r.md_file_id = g.id where r.table_name = 'Plots'\\\").fetchall(); "
          "print(len(rows), m.parseString(rows[0][0].encode()).documentElement.tagName)\"");
      ASSERT_EQ(run.exitCode, 0) << run.err;
      EXPECT_EQ(run.out, "1 metadata\n");
    }
    platform::Workspace::Open(path)->DeleteFeatureClass("Plots");
    EXPECT_FALSE(fs::exists(sidecar)) << sidecar;
    EXPECT_FALSE(platform::MetadataStore(*test::CreatePlots(path)).Read().has_value());
  }
}

}  // namespace
}  // namespace tarnwick::metadata
