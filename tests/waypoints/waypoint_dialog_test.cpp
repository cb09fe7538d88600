// The Waypoint Converter dialog without a screen: its lists and defaults, the
// duplicate check at OK, the output file, and a run from the dialog to the
// file on disk.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "platform/host/memory_map_document.h"
#include "shell/commands.h"
#include "shell/extension.h"
#include "shell/model_tool_dialog.h"
#include "testkit/fake_desktop.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"
#include "transforms/transform_search.h"
#include "waypoints/waypoint_checks.h"
#include "waypoints/waypoint_command_driver.h"
#include "waypoints/waypoint_converter_dialog.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::Value;
using Names = std::vector<std::string>;

// A point class in the store with the fields given and one point per row.
std::shared_ptr<platform::FeatureClass> MakePoints(const std::string& store, const std::string& name, int epsg,
                                                   const std::vector<Field>& fields,
                                                   const std::vector<std::vector<Value>>& rows) {
  std::vector<testkit::Row> points;
  for (const auto& row : rows) points.push_back({testkit::PointWkt(452010 + 10.0 * static_cast<double>(points.size()), 4923010), row});
  return testkit::MakeClass(
      store, testkit::ClassSpec(name, platform::GeometryType::Point, platform::SpatialReference::FromEpsg(epsg), fields),
      points);
}

struct Desk {
  testkit::TempDir dir;
  std::string store = dir / "plots.gpkg";
  platform::host::MemoryMapDocument document{dir / "forest.qgz", "forest"};
  testkit::FakeDesktop app;
  clsExtension extension;
  TransformationDefaults defaults;

  void AddLayer(const std::string& name, std::shared_ptr<platform::FeatureClass> points,
                std::vector<std::int64_t> selection = {}) {
    document.FocusMap().layers.push_back({name, std::move(points), std::move(selection), true});
  }
  // A layer of the class `name` with only an integer PlotID, holding ids.
  void AddPlots(const std::string& name, std::initializer_list<std::int64_t> ids) {
    std::vector<std::vector<Value>> rows;
    for (auto id : ids) rows.push_back({Value{id}});
    AddLayer(name, MakePoints(store, name, 26910, {Field{"PlotID", "", FieldType::Integer}}, rows));
  }
  HostArray Host() { return {app, document, extension}; }
};

TEST(frmLayerID, FieldListsPreselectByNameAndOptionsFollowTheSelection) {
  Desk desk;
  desk.AddLayer("Survey",
                MakePoints(desk.store, "Survey", 26910,
                           {Field{"Plot_ID", "", FieldType::Integer}, Field{"Stand_Name", "", FieldType::String, 9},
                            Field{"DEM_Elev", "", FieldType::Double}, Field{"Shape_Area", "", FieldType::Double}},
                           {{Value{1L}}, {Value{2L}}}));
  desk.AddLayer("Plot Layer #2",
                MakePoints(desk.store, "Plots", 26910,
                           {Field{"PlotID", "", FieldType::Integer}, Field{"StandID", "", FieldType::String, 9}},
                           {{Value{1L}}, {Value{2L}}, {Value{3L}}}),
                {2});
  std::ofstream(desk.dir / "Plot_Layer__2_Waypoints.way") << "taken";
  frmLayerID form(desk.Host(), desk.defaults);
  EXPECT_EQ(form.caption, " TNWK Solo Waypoint Converter:");
  EXPECT_EQ(form["lbxLayers"].entries, (Names{"Survey", "Plot Layer #2"}));

  // Plot_ID holds no "PlotID": nothing is preselected and OK stays off.
  EXPECT_EQ(form["lbxFields"].entries, (Names{"Plot_ID", "Stand_Name", "DEM_Elev", "Shape_Area"}));
  EXPECT_EQ(form["lbxFields"].listIndex, -1);
  EXPECT_EQ(form["lbxStandFields"].entries, (Names{kNoStandIdFieldEntry, "Plot_ID", "Stand_Name", "DEM_Elev"}));
  EXPECT_EQ(form["lbxStandFields"].listIndex, 0);
  EXPECT_EQ(form["lbxElevation"].entries, (Names{kNoElevationFieldEntry, "Plot_ID", "DEM_Elev"}));
  EXPECT_EQ(form["lbxElevation"].listIndex, 2);
  EXPECT_FALSE(form["cmdOK"].enabled);
  EXPECT_EQ(form["optAll"].caption, "Convert All Records (n = 2)");
  EXPECT_FALSE(form["optSel"].enabled);
  // Set-up ends with the plain default name beside the map document.
  EXPECT_EQ(form["txtOutput"].text, desk.dir / "Waypoints.way");
  EXPECT_EQ(desk.extension.DirectoryPath, desk.dir.path().string());

  // A layer with a selection: "selected" is the default, the name follows
  // the layer, made a plain file name that is not taken yet.
  form.SetListIndex("lbxLayers", 1);
  EXPECT_EQ(form["lbxFields"].SelectedEntry(), "PlotID");
  EXPECT_EQ(form["lbxStandFields"].SelectedEntry(), "StandID");
  EXPECT_EQ(form["optSel"].caption, "Convert Only Selected Records (n = 1)");
  EXPECT_EQ(form["optSel"].value, 1);
  EXPECT_EQ(form["optAll"].value, 0);
  EXPECT_EQ(form["txtOutput"].text, desk.dir / "Plot_Layer__2_Waypoints_1.way");
  EXPECT_TRUE(form["cmdOK"].enabled);
}

TEST(frmLayerID, OkReportsDuplicatePlotIdsChecksTheOutputPathAndCatchesAMissingLayer) {
  Desk desk;
  desk.AddPlots("Plots", {7, 9, 7, 8, 9, 9});
  desk.AddPlots("Empty", {});
  desk.AddPlots("Unique", {1});
  frmLayerID form(desk.Host(), desk.defaults);
  std::vector<std::string> progress;
  form.changed = [&] {
    if (form["txtProgress"].visible) progress.push_back(form["txtProgress"].text);
  };
  form.Fire("cmdOK", ControlEvent::Click);

  ASSERT_EQ(desk.app.reports.size(), 1u);
  EXPECT_EQ(desk.app.reports[0].text, "Duplicate Plot IDs Found:\r\n  --> 7:  n = 2\r\n  --> 9:  n = 3\r\n");
  EXPECT_EQ(desk.app.reports[0].caption, " Problems with Plot ID Values:");
  EXPECT_EQ(desk.app.reports[0].window, platform::host::ReportWindow::Modal);
  EXPECT_FALSE(form.unloaded);
  // The bar was shown from empty to full, the host got its turns, and the
  // options are back with "selected" marked.
  ASSERT_GE(progress.size(), 2u);
  EXPECT_EQ(progress.front(), "Checking for Duplicate Plot ID values:\r\n[..............................]  0%");
  EXPECT_EQ(progress.back(), "Checking for Duplicate Plot ID values:\r\n[==============================] 100%");
  EXPECT_EQ(desk.app.yields, static_cast<int>(progress.size()) - 1);
  EXPECT_FALSE(form["txtProgress"].visible);
  EXPECT_TRUE(form["optAll"].visible);
  EXPECT_EQ(form["optSel"].value, 1);
  EXPECT_TRUE(form["cmdOK"].enabled);

  form.SetListIndex("lbxLayers", 1);
  form.SetListIndex("lbxFields", 0);
  form.Fire("cmdOK", ControlEvent::Click);
  ASSERT_EQ(desk.app.reports.size(), 2u);
  EXPECT_EQ(desk.app.reports[1].text, "No Features Found...");
  EXPECT_FALSE(form.unloaded);

  // Past the duplicate check, the output path. The browse offers .way files
  // in the output's folder and adds ".way".
  desk.app.saveAnswers = {desk.dir / "picked"};
  form.SetListIndex("lbxLayers", 2);
  form.Fire("cmdGetWorkspace", ControlEvent::Click);
  ASSERT_EQ(desk.app.saveRequests.size(), 1u);
  EXPECT_EQ(desk.app.saveRequests[0].title, "Save Waypoint File as:");
  EXPECT_EQ(desk.app.saveRequests[0].filter, "Trimble Waypoint Files (*.way)|*.way");
  EXPECT_EQ(desk.app.saveRequests[0].initialDirectory, desk.dir.path().string() + "/");
  EXPECT_EQ(form["txtOutput"].text, desk.dir / "picked.way");
  form.Fire("cmdGetWorkspace", ControlEvent::Click);  // cancelled: nothing changes
  EXPECT_EQ(form["txtOutput"].text, desk.dir / "picked.way");

  // A missing folder is refused and marked.
  form.SetText("txtOutput", desk.dir / "nowhere/out");
  form.Fire("cmdOK", ControlEvent::Click);
  ASSERT_EQ(desk.app.boxes.size(), 1u);
  EXPECT_EQ(desk.app.boxes[0].text,
            "The specified folder '" + (desk.dir / "nowhere") + "' does not exist!  Please specify a valid workspace.");
  EXPECT_EQ(form["txtOutput"].backColor, kYellow);
  EXPECT_EQ(form.focus, "txtOutput");

  // An existing file asks; No keeps the dialog open and the file as it was.
  { std::ofstream(desk.dir / "out.way") << "old"; }
  form.SetText("txtOutput", desk.dir / "out");
  EXPECT_EQ(form["txtOutput"].backColor, kWhite);
  form.Fire("cmdOK", ControlEvent::Click);
  ASSERT_EQ(desk.app.boxes.size(), 2u);
  EXPECT_EQ(desk.app.boxes[1].title, "File Already Exists:");
  EXPECT_EQ(desk.app.boxes[1].text, "The file '" + (desk.dir / "out.way") +
                                        "' already exists.  Do you wish to overwrite the existing file?");
  EXPECT_EQ(desk.app.boxes[1].buttons, platform::host::MessageButtons::YesNoCancel);
  EXPECT_EQ(form["txtOutput"].backColor, kYellow);
  EXPECT_FALSE(form.unloaded);

  // Yes: the path without extension got ".way"; the file stays until the run replaces it.
  desk.app.answers = {platform::host::MessageResult::Yes};
  form.Fire("cmdOK", ControlEvent::Click);
  ASSERT_TRUE(form.unloaded);
  ASSERT_TRUE(form.ReturnArray());
  EXPECT_EQ(form.ReturnArray()->outputPath, desk.dir / "out.way");
  EXPECT_TRUE(std::filesystem::exists(desk.dir / "out.way"));

  // A layer removed while the dialog is open is caught at OK.
  frmLayerID again(desk.Host(), desk.defaults);
  desk.document.FocusMap().layers.clear();
  again.Fire("cmdOK", ControlEvent::Click);
  ASSERT_EQ(desk.app.boxes.size(), 4u);  // the question was asked again before Yes
  EXPECT_EQ(desk.app.boxes.back().title, "Missing Layer:");
  EXPECT_EQ(again["lbxLayers"].backColor, kYellow);
  EXPECT_FALSE(again.unloaded);
}

// The toolbar command's whole road on NAD 1927 data: the map's stored
// transformation is taken, and the driver writes the file from what OK stored.
TEST(cmdTNWKWPConverter, RunsFromTheDialogToTheFileOnDisk) {
  Desk desk;
  desk.AddLayer(
      "Plots",
      MakePoints(desk.store, "Plots", 26710,
                 {Field{"PlotID", "", FieldType::Integer}, Field{"StandID", "", FieldType::String, 9}},
                 {{Value{101L}, Value{"A-17"}}, {Value{102L}, Value{}}}));
  const platform::GeoTransformation helmert{"NAD_1927_To_WGS_1984_4", 1173, "EPSG", 4267, 4326};
  bool error = false;
  std::string message;
  AddTransformToDocIfItDoesNotExist(helmert, error, message, desk.document.FocusMap(), desk.defaults);

  std::optional<WaypointParameters> stored;
  const auto userPressesOk = [&](DialogModel& dialog) {
    dialog.Fire("cmdOK", ControlEvent::Click);
    stored = dynamic_cast<frmLayerID&>(dialog).ReturnArray();
  };
  cmdTNWKWPConverter command(
      [&] {
        return std::make_unique<ModelToolDialog>(
            [&](HostArray& host) { return std::make_unique<frmLayerID>(host, desk.defaults); }, userPressesOk);
      },
      RunCreateWaypointFile);
  command.OnCreate(desk.app, desk.document, &desk.extension);
  command.OnClick();
  ASSERT_TRUE(stored) << (desk.app.boxes.empty() ? "" : desk.app.boxes[0].text);
  ASSERT_TRUE(stored->transformation);
  EXPECT_EQ(stored->transformation->code, 1173);
  EXPECT_EQ(stored->direction, platform::TransformDirection::Forward);
  ASSERT_EQ(desk.app.reports.size(), 1u);
  EXPECT_NE(desk.app.reports[0].text.find("NAD_1927_To_WGS_1984_4"), std::string::npos) << desk.app.reports[0].text;

  const std::string file = testkit::ReadFile(desk.dir / "Waypoints.way");
  EXPECT_EQ(file.substr(0, 4), "101,");
  EXPECT_NE(file.find(",0.0,A-17;<ICON = 9>,\r\n102,"), std::string::npos) << file;
  EXPECT_EQ(desk.extension.DirectoryPath, desk.dir.path().string());
}

TEST(FindWaypointField, EachRoleTakesItsKindsOfField) {
  testkit::TempDir dir;
  auto points = MakePoints(dir / "p.gpkg", "Plots", 26910,
                           {Field{"PlotID", "", FieldType::Integer}, Field{"Name", "", FieldType::String, 9},
                            Field{"Visited", "", FieldType::Date}},
                           {});
  const platform::FeatureLayer layer{"Plots", points, {}, true};
  // The field, its role, the refusal ("" when the field serves) and the control marked.
  const std::vector<std::tuple<std::string, WaypointFieldRole, std::string, std::string>> cases = {
      {"Name", WaypointFieldRole::PlotID, "", ""},
      {"plotid", WaypointFieldRole::Elevation, "", ""},
      {"Nope", WaypointFieldRole::PlotID, "The point layer 'Plots' has no field 'Nope' (Plot ID).", "lbxFields"},
      {"Name", WaypointFieldRole::Elevation, "The field 'Name' cannot serve as elevation: it must be numeric.",
       "lbxElevation"},
      {"Visited", WaypointFieldRole::StandID,
       "The field 'Visited' cannot serve as Stand ID: it must be a text or numeric field.", "lbxStandFields"},
  };
  for (const auto& [field, role, text, control] : cases) {
    const auto found = FindWaypointField(layer, field, role);
    const CheckMessage* refusal = Refusal(found);
    EXPECT_EQ(refusal ? refusal->text : "", text) << field;
    EXPECT_EQ(refusal ? refusal->control : "", control) << field;
  }
}

}  // namespace
}  // namespace tarnwick
