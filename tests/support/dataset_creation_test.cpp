// New output classes in the three stores: the overwrite question, the save
// dialog, the numbered system fields, the refusals and their messages.
#include "support/dataset_creation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/workspace.h"
#include "presentation/error_handling.h"
#include "support/feature_class_rules.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::host::MessageButtons;
using platform::host::MessageResult;

struct StoreCase {
  const char* label;
  long outputType;
  const char* workspace;  // under the temp folder
  const char* name;
  const char* nameOut;
  const char* category;
  friend void PrintTo(const StoreCase& c, std::ostream* os) { *os << c.label; }
};

class DatasetCreation : public ::testing::TestWithParam<StoreCase> {
 protected:
  // A shapefile folder must exist beforehand; geodatabases are made on demand.
  void SetUp() override {
    if (GetParam().outputType == kOutputShapefile) std::filesystem::create_directory(dir / GetParam().workspace);
  }
  GeneralFeatureClassArgs Args(std::vector<Field> fields) const {
    GeneralFeatureClassArgs args;
    args.geometryType = platform::GeometryType::Point;
    args.spatialReference = platform::SpatialReference::FromEpsg(26910);
    args.path = dir / GetParam().workspace;
    args.name = GetParam().name;
    args.outputType = GetParam().outputType;
    args.extraFields = std::move(fields);
    return args;
  }
  static std::vector<std::string> AttributeNames(const platform::FeatureClass& fc) {
    std::vector<std::string> names;
    for (std::size_t i = 2; i < fc.Fields().size(); ++i) names.push_back(fc.Fields()[i].name);
    return names;
  }

  testkit::TempDir dir;
  testkit::FakeApplication app;
};

TEST_P(DatasetCreation, CreatesThenOverwritesOnYesAndGivesUpOnNoWithoutADialog) {
  const StoreCase& store = GetParam();
  auto args = Args({Field{"STAND_ID", "", FieldType::String, 20}, Field{"PlotID", "", FieldType::String, 50}});
  auto created = CreateGeneralFeatureClass(app, args);
  ASSERT_TRUE(created);
  EXPECT_TRUE(app.boxes.empty());
  EXPECT_EQ(args.category, store.category);
  EXPECT_EQ(args.name, store.nameOut);
  EXPECT_EQ(created->ShapeType(), platform::GeometryType::Point);
  EXPECT_EQ(created->GetSpatialReference().FactoryCode(), 26910);
  EXPECT_EQ(AttributeNames(*created), (std::vector<std::string>{"STAND_ID", "PlotID"}));
  if (store.outputType != kOutputShapefile) {
    EXPECT_EQ(created->OIDFieldName(), "Object_ID");
    EXPECT_EQ(created->ShapeFieldName(), "Shape");
  }
  created.reset();

  // Again, answered Yes: the old class goes, the new one has the new fields.
  app.answers = {MessageResult::Yes};
  auto again = Args({Field{"OTHER", "", FieldType::Integer}});
  auto replaced = CreateGeneralFeatureClass(app, again);
  ASSERT_TRUE(replaced);
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "Feature Class Already Exists:");
  EXPECT_EQ(app.boxes[0].text,
            std::string("The Feature Class '") + store.nameOut + "' already exists!  Do you wish to overwrite it?");
  EXPECT_EQ(app.boxes[0].buttons, MessageButtons::YesNo);
  EXPECT_EQ(AttributeNames(*replaced), (std::vector<std::string>{"OTHER"}));
  replaced.reset();

  // Answered No with no dialog to ask for another name: Nothing, and the
  // class is left as it was.
  app.boxes.clear();
  auto refused = Args({});
  EXPECT_FALSE(CreateGeneralFeatureClass(app, refused));
  EXPECT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(refused.name, "");
  auto workspace = platform::Workspace::Open(dir / store.workspace);
  EXPECT_EQ(AttributeNames(*workspace->OpenFeatureClass(store.nameOut)), (std::vector<std::string>{"OTHER"}));
}

TEST_P(DatasetCreation, NoGoesToTheDialogWhichNamesAnotherClassOrCancels) {
  const StoreCase& store = GetParam();
  auto first = Args({});
  ASSERT_TRUE(CreateGeneralFeatureClass(app, first));

  std::vector<SaveDialogRequest> requests;
  const SaveDialog dialog = [&](const SaveDialogRequest& request) -> std::optional<SaveDialogChoice> {
    requests.push_back(request);
    return SaveDialogChoice{dir / store.workspace, "Second", store.category, false, ""};
  };
  auto args = Args({});
  args.startingLocation = "Specify New Feature Class Name:";
  auto second = CreateGeneralFeatureClass(app, args, dialog);  // the fake answers No
  ASSERT_TRUE(second);
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].title, "Enter");
  EXPECT_EQ(requests[0].startingLocation, "Specify New Feature Class Name:");
  EXPECT_EQ(requests[0].outputType, store.outputType);
  EXPECT_EQ(second->Name(), "Second");
  EXPECT_EQ(args.name, "Second");

  // A blank name goes straight to the dialog; Cancel there gives Nothing.
  auto blank = Args({});
  blank.name = "  ";
  const SaveDialog cancel = [](const SaveDialogRequest&) { return std::optional<SaveDialogChoice>{}; };
  EXPECT_FALSE(CreateGeneralFeatureClass(app, blank, cancel));
}

TEST_P(DatasetCreation, SystemFieldsAreNumberedPastAnExtraFieldOfTheirName) {
  const StoreCase& store = GetParam();
  auto args = Args({Field{"object_id", "", FieldType::Integer}, Field{"Unique_ID", "", FieldType::Integer}});
  args.addUniqueID = true;
  auto created = CreateGeneralFeatureClass(app, args);
  ASSERT_TRUE(created);
  if (store.outputType == kOutputShapefile) {
    // Shapefiles get the unique ID field first; geodatabases have their
    // object ID instead.
    EXPECT_EQ(AttributeNames(*created), (std::vector<std::string>{"Unique_ID1", "object_id", "Unique_ID"}));
    EXPECT_EQ(created->Fields()[2].type, FieldType::Integer);
  } else {
    EXPECT_EQ(created->OIDFieldName(), "Object_ID1");
    EXPECT_EQ(AttributeNames(*created), (std::vector<std::string>{"object_id", "Unique_ID"}));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Stores, DatasetCreation,
    ::testing::Values(StoreCase{"Shapefile", kOutputShapefile, "out", "Plots", "Plots.shp", "Shapefile"},
                      StoreCase{"FileGdb", kOutputFileGeodatabase, "inv.gdb", "Plots", "Plots",
                                "File Geodatabase Feature Class"},
                      StoreCase{"GeoPackage", kOutputPersonalGeodatabase, "inv.gpkg", "Plots", "Plots",
                                "Personal Geodatabase Feature Class"}));

TEST(DatasetCreationRefusals, EachRefusalShowsItsMessageAndGivesNothing) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  GeneralFeatureClassArgs args;
  args.spatialReference = platform::SpatialReference::FromEpsg(26910);
  args.name = "Plots";

  args.path = dir / "inv.mdb";
  args.outputType = kOutputPersonalGeodatabase;
  EXPECT_FALSE(CreateGeneralFeatureClass(app, args));
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "Failed to Create Feature Class:");
  EXPECT_NE(app.boxes[0].text.find("inv.mdb is a personal geodatabase (.mdb), which cannot be written"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir / "inv.mdb"));

  args.path = dir / "inv.gdb";
  args.outputType = 4;
  EXPECT_FALSE(CreateGeneralFeatureClass(app, args));
  EXPECT_EQ(app.boxes.back().title, "Invalid Output Type:");
  EXPECT_EQ(app.boxes.back().text,
            "PROBLEM:  This function can only create shapefiles, file geodatabase feature classes, or \n"
            "personal geodatabase feature classes.  Bailing out...");

  args.path = dir / "missing";
  args.outputType = kOutputShapefile;
  EXPECT_FALSE(CreateGeneralFeatureClass(app, args));
  EXPECT_EQ(app.boxes.back().title, "Failed to Create Feature Class:");
  EXPECT_EQ(app.boxes.back().text, "Unable to create Feature Class:\n" + (dir / "missing") + " is not a valid workspace...");
  EXPECT_FALSE(std::filesystem::exists(dir / "missing"));

  // A geodatabase class asked for in a plain folder.
  args.path = dir.path().string();
  args.outputType = kOutputFileGeodatabase;
  EXPECT_FALSE(CreateGeneralFeatureClass(app, args));
  EXPECT_EQ(app.boxes.back().text, "Unable to create Feature Class:\n" + dir.path().string() + " is not a valid workspace...");

  // Feature datasets do not exist here.
  const auto intoDataset = [&](const SaveDialogRequest&) {
    return std::optional<SaveDialogChoice>{
        SaveDialogChoice{dir / "inv.gdb", "Plots", "File Geodatabase Feature Dataset", true, "Inventory"}};
  };
  args.name.clear();
  EXPECT_FALSE(CreateGeneralFeatureClass(app, args, intoDataset));
  EXPECT_EQ(app.boxes.back().title, "Failed to Create Feature Class:");
  EXPECT_NE(app.boxes.back().text.find("Inventory:Plots"), std::string::npos);

  const auto raster = [&](const SaveDialogRequest&) {
    return std::optional<SaveDialogChoice>{SaveDialogChoice{dir.path().string(), "Plots", "Raster Dataset", false, ""}};
  };
  args.name.clear();
  EXPECT_FALSE(CreateGeneralFeatureClass(app, args, raster));
  EXPECT_EQ(app.boxes.back().text, "Unexpected Feature Class Type (Raster Dataset)!  Need to write new code for this...");
  EXPECT_EQ(app.boxes.size(), 6u);
}

TEST(DatasetCreationRefusals, AStoreThatCannotBeMadeRaisesThroughTheCreatorsName) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  std::ofstream(dir / "blocker") << "a file, not a folder";
  GeneralFeatureClassArgs args;
  args.path = (dir / "blocker") + "/inv.gpkg";
  args.name = "Plots";
  args.outputType = kOutputPersonalGeodatabase;
  try {
    CreateGeneralFeatureClass(app, args);
    ADD_FAILURE() << "no error raised";
  } catch (const RoutineError& e) {
    EXPECT_NE(e.Description().find("CreateGeneralFeatureClass MyGeneralOperations"), std::string::npos)
        << e.Description();
  }
}

TEST(DatasetCreationRefusals, ShapefileCreatorRefusesAnExistingFile) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  std::ofstream(dir / "Plots.shp") << "not a shapefile";
  // The folder may be given as the path of a shapefile in it, the name with
  // its extension.
  const auto fc = CreateShapefileFeatureClass(app, dir / "Other.shp", "Plots.shp",
                                              platform::SpatialReference::FromEpsg(26910),
                                              platform::GeometryType::Point, {}, false);
  EXPECT_FALSE(fc);
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "Duplicate Filename:");
  EXPECT_EQ(app.boxes[0].text, "The following file already exists:\n" + (dir / "Plots.shp") +
                                   "\n\nPlease select a new filename...");
}

TEST(DatasetCreationRules, GridSizeAndFeatureTypes) {
  EXPECT_DOUBLE_EQ(SpatialGridSize(std::nullopt, 100), 100);
  EXPECT_NEAR(SpatialGridSize(platform::Envelope{0, 0, 1000, 1000, false}, 10000), 141.4213562, 1e-6);
  EXPECT_DOUBLE_EQ(SpatialGridSize(platform::Envelope{0, 0, 1000, 10, false}, 100), 10);  // at most the height
  EXPECT_DOUBLE_EQ(SpatialGridSize(platform::Envelope{0, 0, 1000, 1000, false}, 2000000), 10);

  using platform::GeometryType;
  EXPECT_EQ(ClassForFeatureType(1, GeometryType::Line)->geometryType, GeometryType::Polyline);
  EXPECT_EQ(ClassForFeatureType(8, GeometryType::Point)->classIdentifier, "esriGeoDatabase.SimpleEdgeFeature");
  EXPECT_FALSE(ClassForFeatureType(11, GeometryType::Point));
  // An annotation class is refused and nothing is made.
  testkit::TempDir dir;
  auto gdb = platform::Workspace::OpenOrCreate(dir / "x.gpkg");
  GDBFeatureClassArgs annotation;
  annotation.name = "Notes";
  annotation.featureType = 11;
  EXPECT_FALSE(CreateGDBFeatureClass(gdb, annotation));
  EXPECT_FALSE(gdb->NameExists("Notes"));
}

TEST(DatasetCreationRules, NumberedNamesKeepTheirWidth) {
  std::vector<Field> extras{Field{"UNIQUE_ID", "", FieldType::Integer}};
  EXPECT_EQ(NumberedFieldName("Unique_ID", 10, {}), "Unique_ID");
  EXPECT_EQ(NumberedFieldName("Unique_ID", 10, extras), "Unique_ID1");
  for (int n = 1; n <= 9; ++n) extras.push_back(Field{"Unique_ID" + std::to_string(n), "", FieldType::Integer});
  EXPECT_EQ(NumberedFieldName("Unique_ID", 10, extras), "Unique_I10");
  std::vector<Field> objectIds{Field{"Object_ID", "", FieldType::Integer}};
  for (int n = 1; n <= 99; ++n) objectIds.push_back(Field{"Object_ID" + std::to_string(n), "", FieldType::Integer});
  EXPECT_EQ(NumberedFieldName("Object_ID", 11, objectIds), "Object_I100");
}

}  // namespace
}  // namespace tarnwick
