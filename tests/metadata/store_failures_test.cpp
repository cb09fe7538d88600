// Datasets whose metadata cannot be written, and damaged stored documents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "dataset_fixture.h"
#include "metadata/metadata_functions.h"
#include "platform/metadata_store.h"
#include "presentation/error_handling.h"
#include "testkit/fake_application.h"

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
    ContactRecord contact;
    AddMetadataContact(*plots, contact, false, false);
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
  AttributeFieldMetadata field;
  field.fieldName = "StandID";
  testkit::FakeApplication app;
  EXPECT_EQ(SetAttributeFieldMetadata(*plots, field, app), "ReturnAttributeFieldXPathIndex Failed");
  EXPECT_EQ(testkit::ReadFile(xml), damaged);
}

}  // namespace
}  // namespace tarnwick::metadata
