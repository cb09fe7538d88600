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
using Names = std::vector<std::string>;

struct StoreCase {
  const char* label;
  long outputType;
  const char* workspace;  // under the temp folder
  const char* nameOut;
  const char* category;
  friend void PrintTo(const StoreCase& c, std::ostream* os) { *os << c.label; }
};

Names AttributeNames(const platform::FeatureClass& fc) {
  Names names;
  for (std::size_t i = 2; i < fc.Fields().size(); ++i) names.push_back(fc.Fields()[i].name);
  return names;
}

class DatasetCreation : public ::testing::TestWithParam<StoreCase> {
 protected:
  // A shapefile folder must exist beforehand; geodatabases are made on demand.
  void SetUp() override {
    if (GetParam().outputType == kOutputShapefile) std::filesystem::create_directory(dir / GetParam().workspace);
  }
  GeneralFeatureClassArgs Args(std::vector<Field> fields) const {
    return {.spatialReference = platform::SpatialReference::FromEpsg(26910), .path = dir / GetParam().workspace,
            .name = "Plots", .outputType = GetParam().outputType, .extraFields = std::move(fields)};
  }

  testkit::TempDir dir;
  testkit::FakeApplication app;
};

TEST_P(DatasetCreation, CreatesOverwritesOnYesAndOnNoGivesUpOrAsksTheDialog) {
  const StoreCase& store = GetParam();
  auto args = Args({Field{"STAND_ID", "", FieldType::String, 20}, Field{"PlotID", "", FieldType::String, 50}});
  auto created = CreateGeneralFeatureClass(app, args);
  ASSERT_TRUE(created);
  EXPECT_TRUE(app.boxes.empty());
  EXPECT_EQ(args.category, store.category);
  EXPECT_EQ(args.name, store.nameOut);
  EXPECT_EQ(created->ShapeType(), platform::GeometryType::Point);
  EXPECT_EQ(created->GetSpatialReference().FactoryCode(), 26910);
  EXPECT_EQ(AttributeNames(*created), (Names{"STAND_ID", "PlotID"}));
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
  EXPECT_EQ(AttributeNames(*replaced), (Names{"OTHER"}));
  replaced.reset();

  // Answered No with no dialog to ask for another name: Nothing, and the
  // class is left as it was.
  auto refused = Args({});
  EXPECT_FALSE(CreateGeneralFeatureClass(app, refused));
  EXPECT_EQ(app.boxes.size(), 2u);
  EXPECT_EQ(refused.name, "");
  EXPECT_EQ(AttributeNames(*platform::Workspace::Open(dir / store.workspace)->OpenFeatureClass(store.nameOut)),
            (Names{"OTHER"}));

  // Answered No with a dialog: it names another class.
  std::vector<SaveDialogRequest> requests;
  const SaveDialog dialog = [&](const SaveDialogRequest& request) -> std::optional<SaveDialogChoice> {
    requests.push_back(request);
    return SaveDialogChoice{dir / store.workspace, "Second", store.category, false, ""};
  };
  auto args2 = Args({});
  args2.startingLocation = "Specify New Feature Class Name:";
  auto second = CreateGeneralFeatureClass(app, args2, dialog);
  ASSERT_TRUE(second);
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].title, "Enter");
  EXPECT_EQ(requests[0].startingLocation, "Specify New Feature Class Name:");
  EXPECT_EQ(requests[0].outputType, store.outputType);
  EXPECT_EQ(second->Name(), "Second");
  EXPECT_EQ(args2.name, "Second");

  // A blank name goes straight to the dialog; Cancel there gives Nothing.
  auto blank = Args({});
  blank.name = "  ";
  EXPECT_FALSE(CreateGeneralFeatureClass(app, blank, [](const SaveDialogRequest&) {
    return std::optional<SaveDialogChoice>{};
  }));
}

TEST_P(DatasetCreation, SystemFieldsAreNumberedPastAnExtraFieldOfTheirName) {
  auto args = Args({Field{"object_id", "", FieldType::Integer}, Field{"Unique_ID", "", FieldType::Integer}});
  args.addUniqueID = true;
  auto created = CreateGeneralFeatureClass(app, args);
  ASSERT_TRUE(created);
  if (GetParam().outputType == kOutputShapefile) {
    // Shapefiles get the unique ID field first; geodatabases have their
    // object ID instead.
    EXPECT_EQ(AttributeNames(*created), (Names{"Unique_ID1", "object_id", "Unique_ID"}));
    EXPECT_EQ(created->Fields()[2].type, FieldType::Integer);
  } else {
    EXPECT_EQ(created->OIDFieldName(), "Object_ID1");
    EXPECT_EQ(AttributeNames(*created), (Names{"object_id", "Unique_ID"}));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Stores, DatasetCreation,
    ::testing::Values(StoreCase{"Shapefile", kOutputShapefile, "out", "Plots.shp", "Shapefile"},
                      StoreCase{"FileGdb", kOutputFileGeodatabase, "inv.gdb", "Plots", "File Geodatabase Feature Class"},
                      StoreCase{"GeoPackage", kOutputPersonalGeodatabase, "inv.gpkg", "Plots",
                                "Personal Geodatabase Feature Class"}));

TEST(DatasetCreationRefusals, EachRefusalShowsItsMessageAndGivesNothing) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  GeneralFeatureClassArgs args{.spatialReference = platform::SpatialReference::FromEpsg(26910)};
  // Each refusal gives Nothing and one more message box, which it returns.
  const auto refuse = [&](const std::string& path, long type, const SaveDialog& dialog = {}) {
    args.path = path;
    args.outputType = type;
    args.name = dialog ? "" : "Plots";
    const std::size_t boxes = app.boxes.size();
    EXPECT_FALSE(CreateGeneralFeatureClass(app, args, dialog));
    EXPECT_EQ(app.boxes.size(), boxes + 1);
    return app.boxes.back();
  };
  const auto choose = [&](std::string path, std::string category, bool inDataset) -> SaveDialog {
    return [=](const SaveDialogRequest&) {
      return std::optional<SaveDialogChoice>{SaveDialogChoice{path, "Plots", category, inDataset, "Inventory"}};
    };
  };

  auto box = refuse(dir / "inv.mdb", kOutputPersonalGeodatabase);
  EXPECT_EQ(box.title, "Failed to Create Feature Class:");
  EXPECT_NE(box.text.find("inv.mdb is a personal geodatabase (.mdb), which cannot be written"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir / "inv.mdb"));

  box = refuse(dir / "inv.gdb", 4);
  EXPECT_EQ(box.title, "Invalid Output Type:");
  EXPECT_EQ(box.text,
            "PROBLEM:  This function can only create shapefiles, file geodatabase feature classes, or \n"
            "personal geodatabase feature classes.  Bailing out...");

  box = refuse(dir / "missing", kOutputShapefile);
  EXPECT_EQ(box.title, "Failed to Create Feature Class:");
  EXPECT_EQ(box.text, "Unable to create Feature Class:\n" + (dir / "missing") + " is not a valid workspace...");
  EXPECT_FALSE(std::filesystem::exists(dir / "missing"));

  // A geodatabase class asked for in a plain folder.
  EXPECT_EQ(refuse(dir.path().string(), kOutputFileGeodatabase).text,
            "Unable to create Feature Class:\n" + dir.path().string() + " is not a valid workspace...");

  // A store that cannot be made raises.
  std::ofstream(dir / "blocker") << "a file, not a folder";
  args.path = (dir / "blocker") + "/inv.gpkg";
  args.name = "Plots";
  args.outputType = kOutputPersonalGeodatabase;
  EXPECT_THROW(CreateGeneralFeatureClass(app, args), RoutineError);

  // Feature datasets do not exist here.
  box = refuse(dir.path().string(), kOutputFileGeodatabase,
               choose(dir / "inv.gdb", "File Geodatabase Feature Dataset", true));
  EXPECT_EQ(box.title, "Failed to Create Feature Class:");
  EXPECT_NE(box.text.find("Inventory:Plots"), std::string::npos);

  EXPECT_EQ(refuse(dir.path().string(), kOutputFileGeodatabase, choose(dir.path().string(), "Raster Dataset", false)).text,
            "Unexpected Feature Class Type (Raster Dataset)!  Need to write new code for this...");

  // The shapefile creator refuses an existing file. The folder may be given
  // as the path of a shapefile in it, the name with its extension.
  std::ofstream(dir / "Plots.shp") << "not a shapefile";
  app.boxes.clear();
  EXPECT_FALSE(CreateShapefileFeatureClass(app, dir / "Other.shp", "Plots.shp",
                                           platform::SpatialReference::FromEpsg(26910),
                                           platform::GeometryType::Point, {}, false));
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "Duplicate Filename:");
  EXPECT_EQ(app.boxes[0].text,
            "The following file already exists:\n" + (dir / "Plots.shp") + "\n\nPlease select a new filename...");
  EXPECT_EQ(testkit::ReadFile(dir / "Plots.shp"), "not a shapefile");
}

TEST(DatasetCreationRules, FeatureTypesAndNumberedNamesThatKeepTheirWidth) {
  using platform::GeometryType;
  EXPECT_EQ(ClassForFeatureType(1, GeometryType::Line)->geometryType, GeometryType::Polyline);
  EXPECT_EQ(ClassForFeatureType(8, GeometryType::Point)->classIdentifier, "esriGeoDatabase.SimpleEdgeFeature");
  // An annotation class is refused and nothing is made.
  testkit::TempDir dir;
  auto gdb = platform::Workspace::OpenOrCreate(dir / "x.gpkg");
  EXPECT_FALSE(CreateGDBFeatureClass(gdb, {.name = "Notes", .featureType = 11}));
  EXPECT_FALSE(gdb->NameExists("Notes"));

  // Names already taken up to a number of more digits: the base is cut.
  const auto taken = [](const std::string& base, int upTo) {
    std::vector<Field> fields{Field{base, "", FieldType::Integer}};
    for (int n = 1; n <= upTo; ++n) fields.push_back(Field{base + std::to_string(n), "", FieldType::Integer});
    return fields;
  };
  EXPECT_EQ(NumberedFieldName("Unique_ID", 10, taken("UNIQUE_ID", 9)), "Unique_I10");
  EXPECT_EQ(NumberedFieldName("Object_ID", 11, taken("Object_ID", 99)), "Object_I100");
}

}  // namespace
}  // namespace tarnwick
