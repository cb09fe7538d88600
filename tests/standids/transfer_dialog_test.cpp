// The Import Stand IDs dialog without a screen: its lists, its checks at OK
// and a whole run from the dialog to the data on disk.
#include <gtest/gtest.h>

#include "platform/host/memory_map_document.h"
#include "shell/commands.h"
#include "shell/extension.h"
#include "shell/model_tool_dialog.h"
#include "standids/stand_ids_command_driver.h"
#include "standids/transfer_checks.h"
#include "standids/transfer_fixtures.h"
#include "standids/transfer_stand_ids_dialog.h"
#include "testkit/fake_desktop.h"

namespace tarnwick {
namespace {

using namespace testfix;
using Names = std::vector<std::string>;

// Stands (StandID, Age, Area) and Stands2 (stand_id, Age, Notes); plots
// without a Stand ID field, and Plots2 with an integer STANDID.
struct Inventory {
  testkit::TempDir dir;
  std::string store = dir / "inv.gpkg";
  std::shared_ptr<platform::FeatureClass> stands = MakeStands(store, 26910, ThreeStands());
  std::shared_ptr<platform::FeatureClass> stands2 = testkit::MakeClass(
      store, testkit::ClassSpec("Stands2", platform::GeometryType::Polygon, platform::SpatialReference::FromEpsg(26910),
                                {Field{"stand_id", "", FieldType::String, 10}, Field{"Age", "", FieldType::Integer},
                                 Field{"Notes", "", FieldType::String, 50}}));
  std::shared_ptr<platform::FeatureClass> plots = MakePoints(store, "Plots", 26910, {}, FivePlots());
  std::shared_ptr<platform::FeatureClass> plots2 =
      MakePoints(store, "Plots2", 26910, {Field{"STANDID", "", FieldType::Integer}}, FivePlots());
  platform::host::MemoryMapDocument document{dir / "forest.qgz", "forest"};
  testkit::FakeDesktop app;
  clsExtension extension;
  TransformationDefaults defaults;

  Inventory() {
    document.FocusMap().layers = {Layer(stands, "Stands"), Layer(stands2, "Stands2"), Layer(plots, "Plots"),
                                  Layer(plots2, "Plots2")};
  }
  HostArray Host() { return {app, document, extension}; }
};

TEST(frmTransferStandIDs, ListsFollowTheLayersAndTheStandIdChoice) {
  Inventory inv;
  frmTransferStandIDs form(inv.Host(), inv.defaults);
  EXPECT_EQ(form.caption, "  Import Stand ID Parameters:");
  EXPECT_EQ(form["lblToolVersion"].caption, "Tool Version 1.2.3");
  EXPECT_EQ(form["lbxLayers"].entries, (Names{"Stands", "Stands2"}));
  EXPECT_EQ(form["cbxExistingPointLayer"].entries, (Names{"Plots", "Plots2"}));
  // The default history finds StandID; no point field bears that name, so the Stand ID is cloned.
  EXPECT_EQ(inv.extension.StandIDHistory, "StandID,Stand_ID,ID");
  EXPECT_EQ(form["cbxStandID"].entries, (Names{kSelectFieldEntry, "StandID", "Age", "Area"}));
  EXPECT_EQ(form["cbxStandID"].SelectedEntry(), "StandID");
  EXPECT_EQ(form["cbxExistingIDField"].entries, (Names{kClonePolygonFieldEntry, "PlotID"}));
  EXPECT_EQ(form["cbxExistingIDField"].SelectedEntry(), kClonePolygonFieldEntry);
  EXPECT_TRUE(form["cmdOK"].enabled);

  // The attribute list never holds the Stand ID; the other selections stay.
  form.SetSelected("lbxFields", 0, true);
  form.SetSelected("lbxFields", 1, true);
  form.SetListIndex("cbxStandID", 2);  // Age
  EXPECT_EQ(form["lbxFields"].entries, (Names{"StandID", "Area"}));
  EXPECT_EQ(form["lbxFields"].selected, (std::vector<bool>{false, true}));
  form.SetListIndex("cbxStandID", 1);  // StandID again: Age comes back unselected
  EXPECT_EQ(form["lbxFields"].entries, (Names{"Age", "Area"}));
  EXPECT_EQ(form["lbxFields"].selected, (std::vector<bool>{false, true}));
  form.SetListIndex("cbxStandID", 0);
  EXPECT_FALSE(form["cmdOK"].enabled);

  // Another stand layer: the history matches whatever the case, and a
  // selected field of the same name stays selected.
  form.SetSelected("lbxFields", 0, true);
  form.SetListIndex("lbxLayers", 1);
  EXPECT_EQ(form["cbxStandID"].SelectedEntry(), "stand_id");
  EXPECT_EQ(form["lbxFields"].entries, (Names{"Age", "Notes"}));
  EXPECT_EQ(form["lbxFields"].selected, (std::vector<bool>{true, false}));

  // A point field named as the Stand ID is chosen for it; its other type asks first.
  form.SetListIndex("lbxLayers", 0);
  form.SetListIndex("cbxExistingPointLayer", 1);
  EXPECT_EQ(form["cbxExistingIDField"].SelectedEntry(), "STANDID");
  inv.app.answers = {platform::host::MessageResult::Cancel};
  form.Fire("cmdOK", ControlEvent::Click);
  ASSERT_EQ(inv.app.boxes.size(), 1u);
  EXPECT_EQ(inv.app.boxes[0].title, "Confirm Attribute Field Choices:");
  EXPECT_EQ(inv.app.boxes[0].buttons, platform::host::MessageButtons::OKCancel);
  EXPECT_NE(inv.app.boxes[0].text.find("  --> Plot Point Stand ID Field 'STANDID':  Type = Long Integer\n\n"),
            std::string::npos)
      << inv.app.boxes[0].text;
  EXPECT_FALSE(form.unloaded);
  EXPECT_EQ(form["cbxExistingIDField"].backColor, kWhite);

  // A layer removed while the dialog is open is caught at OK, and marked
  // until another is chosen.
  frmTransferStandIDs again(inv.Host(), inv.defaults);
  auto& layers = inv.document.FocusMap().layers;
  layers.erase(layers.begin() + 2);  // Plots
  again.Fire("cmdOK", ControlEvent::Click);
  ASSERT_EQ(inv.app.boxes.size(), 2u);
  EXPECT_EQ(inv.app.boxes[1].title, "Missing Layer:");
  EXPECT_EQ(inv.app.boxes[1].text, "The layer 'Plots' is no longer in the map!\n\nPlease select another layer.");
  EXPECT_EQ(again["cbxExistingPointLayer"].backColor, kYellow);
  EXPECT_EQ(again.focus, "cbxExistingPointLayer");
  EXPECT_FALSE(again.unloaded);
  again.SetListIndex("cbxExistingPointLayer", 1);
  EXPECT_EQ(again["cbxExistingPointLayer"].backColor, kWhite);

  // A map without polygon layers offers nothing and keeps OK disabled.
  inv.document.FocusMap().layers = {Layer(inv.plots, "Plots")};
  frmTransferStandIDs empty(inv.Host(), inv.defaults);
  EXPECT_TRUE(empty["lbxLayers"].entries.empty());
  EXPECT_FALSE(empty["cmdOK"].enabled);
}

TEST(CheckTransferStandIDChoices, RefusesInControlOrderWithTheDialogsTexts) {
  Inventory inv;
  auto bare = testkit::MakeClass(inv.store, testkit::ClassSpec("Bare", platform::GeometryType::Point, {}));
  const TransferStandIDChoices good{
      Layer(inv.stands, "Stands"), "StandID", {"Age"}, Layer(inv.plots, "Plots"), kClonePolygonFieldEntry};
  // A change to good choices, the start of its refusal and the control marked.
  const std::vector<std::tuple<std::function<void(TransferStandIDChoices&)>, std::string, std::string>> cases = {
      {[&](auto& c) { c.standLayer = Layer(inv.plots, "Plots"); }, "The stand layer 'Plots' is not a polygon",
       "lbxLayers"},
      {[](auto& c) { c.standIdField = kSelectFieldEntry; }, "Please select a Stand ID field!", "cbxStandID"},
      {[](auto& c) { c.standIdField = "Nope"; }, "The layer 'Stands' has no field 'Nope' (Stand ID).", "cbxStandID"},
      {[](auto& c) { c.additionalFields = {"standid"}; }, "The Stand ID field 'StandID' cannot be an additional",
       "lbxFields"},
      {[](auto& c) { c.pointLayer.reset(); }, "Please select a Plot Point layer to add points to!",
       "cbxExistingPointLayer"},
      {[&](auto& c) { c.pointLayer = Layer(inv.stands, "Again"); }, "The point layer 'Again' is the stand layer",
       "cbxExistingPointLayer"},
      {[&](auto& c) { c.pointLayer = Layer(inv.stands2, "Stands2"); }, "The point layer 'Stands2' is not a point",
       "cbxExistingPointLayer"},
      {[](auto& c) { c.pointStandIdField = ""; }, "Please select a Stand ID field in your Point Layer!",
       "cbxExistingIDField"},
      {[](auto& c) { c.pointStandIdField = "Nope"; }, "The point layer 'Plots' has no field 'Nope'.",
       "cbxExistingIDField"},
      {[&](auto& c) { c.pointLayer = Layer(bare, "Bare"); },
       "There is a problem with the spatial reference for 'Bare':\n\n  --> Spatial Reference is unknown!", ""},
  };
  for (const auto& [change, text, control] : cases) {
    TransferStandIDChoices choices = good;
    change(choices);
    const auto checked = CheckTransferStandIDChoices(inv.app, choices);
    const CheckMessage* refusal = Refusal(checked);
    ASSERT_NE(refusal, nullptr) << text;
    EXPECT_EQ(refusal->text.substr(0, text.size()), text);
    EXPECT_EQ(refusal->control, control) << text;
  }
  // Good choices pass; what they give a run is the whole-road test's.
  EXPECT_EQ(Refusal(CheckTransferStandIDChoices(inv.app, good)), nullptr);
}

// The toolbar command's whole road: the dialog model shown modally, OK, the
// driver on what OK stored, the report, the data on disk.
TEST(clsTransferStandIDs, RunsFromTheDialogToTheDataOnDisk) {
  Inventory inv;
  const auto userFillsIn = [](DialogModel& dialog) {
    dialog.SetSelected("lbxFields", 0, true);  // Age
    dialog.Fire("cmdOK", ControlEvent::Click);
  };
  clsTransferStandIDs command(
      [&] {
        return std::make_unique<ModelToolDialog>(
            [&](HostArray& host) { return std::make_unique<frmTransferStandIDs>(host, inv.defaults); }, userFillsIn);
      },
      RunImportStandIDValues);
  command.OnCreate(inv.app, inv.document, &inv.extension);
  command.OnClick();
  ASSERT_EQ(inv.app.reports.size(), 1u) << (inv.app.boxes.empty() ? "" : inv.app.boxes[0].text);
  EXPECT_NE(inv.app.reports[0].text.find("Import Complete"), std::string::npos) << inv.app.reports[0].text;
  EXPECT_TRUE(inv.document.IsDirty());

  const std::string plots = inv.store + "|layername=Plots";
  const Value a1{std::string("A-1")}, b2{std::string("B-2")}, c3{std::string("C-3")}, none;
  EXPECT_EQ(Column(plots, "StandID"), (std::vector<Value>{a1, a1, b2, c3, none}));
  EXPECT_EQ(Column(plots, "Age"), (std::vector<Value>{Value{40L}, Value{40L}, none, Value{7L}, none}));

  frmTransferStandIDs cancelled(inv.Host(), inv.defaults);
  cancelled.Fire("cmdCancel", ControlEvent::Click);
  EXPECT_TRUE(cancelled.unloaded);
  EXPECT_FALSE(inv.extension.ShouldContinue);
  EXPECT_FALSE(inv.extension.frmTransferStandIDReturn.has_value());
}

}  // namespace
}  // namespace tarnwick
