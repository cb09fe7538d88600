// The Plot Layout dialog without a screen: its start, its guesses from the
// learnt field names, the spacing boxes, the browse for a new output, and
// the anchor point tool working with it.
#include <filesystem>
#include <fstream>

#include "plot_dialog_fixture.h"
#include "shell/sel_point_tool.h"

namespace tarnwick {
namespace {

using namespace plotfix;

TEST_F(PlotDialogTest, StartsWithoutLayersAndFallsBackToTheDocumentFolder) {
  extension.DirectoryType = "File Geodatabase";
  extension.DirectoryPath = dir / "deleted.gdb";
  std::ofstream(dir / "Plots.shp") << "";
  frmPlotLayout& d = Open();

  EXPECT_TRUE(d["lbxPolygons"].entries.empty());
  EXPECT_EQ(d["lblAll"].caption, "All Stands (n = Unknown)");
  EXPECT_EQ(d["lblSelected"].caption, "Unable to get selection...");
  EXPECT_FALSE(d["cmdOK"].enabled);
  EXPECT_EQ(d.OutputKind(), 1);
  EXPECT_EQ(d["txtOutput"].text, dir / "Plots_1.shp");
  EXPECT_EQ(d.OutputName(), "Plots_1.shp");
  EXPECT_EQ(d["lblToolVersion"].caption, "Tool Version 1.2.3");
  EXPECT_EQ(extension.PlotLayoutForm, &d);
  EXPECT_EQ(d["txtXSpacing"].text, "1");  // a fresh extension's 0 shows as 1
  EXPECT_TRUE(app.windows.empty());

  d.Fire("cmdCancel", ControlEvent::Click);
  EXPECT_TRUE(d.unloaded);
  EXPECT_EQ(extension.PlotLayoutForm, nullptr);

  // A geodatabase that is there but cannot be opened any more is passed over
  // the same way, so that the dialog still opens.
  std::filesystem::create_directory(dir / "broken.gdb");
  std::ofstream(dir / "broken.gdb/gdb") << "not a geodatabase";
  extension.DirectoryPath = dir / "broken.gdb";
  EXPECT_EQ(Open()["txtOutput"].text, dir / "Plots_1.shp");
  EXPECT_TRUE(app.windows.empty());
}

TEST_F(PlotDialogTest, GuessesFieldsFromTheLearntNamesTheLastMatchWinning) {
  auto makeClass = [&](const std::string& name, std::vector<Field> fields) {
    auto featureClass = testkit::MakeClass(dir / "stands.gpkg",
                                           testkit::ClassSpec(name, platform::GeometryType::Polygon, utm, std::move(fields)),
                                           {{Square(500000, 4000000, 100), {}}, {Square(500200, 4000000, 100), {}}});
    return platform::FeatureLayer{name, featureClass, {}, true};
  };
  const Field id{"ID", "", FieldType::String, 10};
  const Field standId{"Stand_ID", "", FieldType::String, 10};
  map().layers.push_back(makeClass("IdFirst", {id, standId, Field{"Count", "", FieldType::Integer},
                                                Field{"Shape_Area", "", FieldType::Double},
                                                Field{"Gap", "Width", FieldType::Double}}));
  auto standIdFirst = makeClass("StandIdFirst", {standId, id});
  standIdFirst.selection = {1};
  map().layers.push_back(standIdFirst);
  document.selectedLayers = {standIdFirst};
  frmPlotLayout& d = Open();

  // The layer chosen in the table of contents comes first.
  EXPECT_EQ(d["lbxPolygons"].SelectedEntry(), "StandIdFirst");
  EXPECT_EQ(d["lbxStandFields"].SelectedEntry(), "ID");
  EXPECT_EQ(d["optSel"].value, 1);
  EXPECT_EQ(d["lblAll"].caption, "All Stands (n = 2)");
  EXPECT_EQ(d["lblSelected"].caption, "Selected Stands (n = 1)");
  EXPECT_EQ(extension.StandIDHistory, "StandID,Stand_ID,ID");

  d.SetListIndex("lbxPolygons", 0);
  EXPECT_EQ(d["lbxStandFields"].entries, (std::vector<std::string>{"ID", "Stand_ID", "Count", "Gap"}));
  EXPECT_EQ(d["lbxStandFields"].SelectedEntry(), "Stand_ID");
  EXPECT_EQ(d["cbxPlotsField"].SelectedEntry(), "Count");
  EXPECT_EQ(d["cbxXSpacing"].SelectedEntry(), "Gap");  // by its alias
  EXPECT_EQ(d["cbxYSpacing"].listIndex, 0);            // "<-- Select Field -->"
  EXPECT_EQ(d["optAll"].value, 1);
  EXPECT_FALSE(d["optSel"].enabled);
}

TEST_F(PlotDialogTest, SpacingBoxesFollowTheRatioAndTheOptionSwitchesControls) {
  map().layers.push_back(MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}}));
  frmPlotLayout& d = Open();
  Fill(d, {{"cbxPlotsOption", 2}, {"cbxSpacingRatioOptions", 1}, {"txtXSpacing", "10"}});
  EXPECT_EQ(d["txtYSpacing"].text, "20");
  d.SetText("txtYSpacing", "30");
  EXPECT_EQ(d["txtXSpacing"].text, "15");
  EXPECT_TRUE(d["txtXSpacing"].visible);
  EXPECT_FALSE(d["txtNumPlots"].visible);

  d.SetListIndex("cbxPlotsOption", 3);
  EXPECT_TRUE(d["cbxXSpacing"].visible);
  EXPECT_FALSE(d["txtXSpacing"].visible);
  EXPECT_FALSE(d["cbxSpacingRatioOptions"].enabled);
  EXPECT_EQ(d["cbxSpacingRatioOptions"].backColor, kSwitchedOffGrey);

  Fill(d, {{"cbxPlotsOption", 0}, {"cbxSpacingRatioOptions", 3}});
  EXPECT_TRUE(d["txtXRatio"].visible);
  EXPECT_EQ(d["txtXRatio"].bounds.top, 3570);
  d.Fire("optOrientFieldOff", ControlEvent::Click);
  EXPECT_TRUE(d["cbxOrientationField"].visible);
  EXPECT_FALSE(d["txtGridOrientation"].visible);
  EXPECT_TRUE(d["optOrientFieldOn"].visible);
  EXPECT_EQ(d["optOrientFieldOn"].bounds.top, d["optOrientFieldOff"].bounds.top);
  // A minus sign is no key for a spacing.
  EXPECT_EQ(d.KeyPress("txtXSpacing", '-'), 0);
}

TEST_F(PlotDialogTest, BrowseAsksAgainAfterAnUnknownKindAndCleansADatabaseName) {
  Open();
  app.choices = {{"plots", "/data", "Raster Dataset"}, {"new plots.shp", dir / "inventory.gdb", "File Geodatabase"}};
  app.answers = {platform::host::MessageResult::OK};
  dialog->Fire("cmdGetWorkspace", ControlEvent::Click);

  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "Invalid Feature Class Type:");
  EXPECT_EQ(app.boxes[0].text.substr(0, 46), "Unexpected Feature Class Type (Raster Dataset)");
  EXPECT_EQ(app.suggestions[0], dir / "Plots.shp");
  EXPECT_EQ(dialog->OutputKind(), 2);
  EXPECT_EQ((*dialog)["txtOutput"].text, dir / "inventory.gdb" + "/new_plots");
}

// The toggle button and the tool mirror each other; a press, drag and
// release write the release point; the one marker stays at the press point.
TEST_F(PlotDialogTest, AnchorToolPressDragReleaseAndTheToggleButton) {
  map().layers = {MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}})};
  map().spatialReference = utm;
  frmPlotLayout& d = Open();
  clsSelPointTool tool;
  tool.OnCreate(app, document, &extension);
  EXPECT_FALSE(tool.Enabled());

  Fill(d, {{"chkApplyAnchor", 1}, {"cbxAnchorOption", 0}});
  d.Fire("imgButtonUp", ControlEvent::Click);
  EXPECT_EQ(app.tool, kSelPointToolCommand.progId);
  EXPECT_TRUE(tool.Enabled());
  EXPECT_TRUE(d["imgButtonDown"].visible);
  EXPECT_FALSE(d["imgButtonUp"].visible);
  tool.OnClick();
  EXPECT_EQ(app.statusBar.statusTexts.back(), "Click on new location to select point...");

  tool.OnMouseDown(1, 0, 500010.125, 4000020.5);
  tool.OnMouseMove(1, 0, 500100, 4000100);
  EXPECT_EQ(d["txtAnchorX"].text, "500100.000");
  tool.OnMouseMove(0, 0, 1, 1);  // no button down: the boxes stay
  tool.OnMouseUp(1, 0, 500200.4444, 4000300.5556);
  EXPECT_EQ(d["txtAnchorX"].text, "500200.444");
  EXPECT_EQ(d["txtAnchorY"].text, "4000300.556");
  EXPECT_DOUBLE_EQ(d.AnchorX(), 500200.444);
  ASSERT_EQ(map().graphics.size(), 1u);
  EXPECT_EQ(map().graphics[0].name, kAnchorMarkerName);
  EXPECT_EQ(map().graphics[0].x, 500010.125);
  EXPECT_EQ(map().graphics[0].color, (platform::host::Rgb{0, 155, 0}));
  tool.OnMouseDown(1, 0, 7, 8);
  ASSERT_EQ(map().graphics.size(), 1u);
  EXPECT_EQ(map().graphics[0].x, 7);

  // A geographic map gets 8 decimals.
  map().spatialReference = platform::SpatialReference::FromEpsg(4326);
  tool.OnMouseUp(1, 0, -122.5, 45.25);
  EXPECT_EQ(d["txtAnchorX"].text, "-122.50000000");

  // The user picks another tool: the button pops up, the tool is disabled.
  app.tool.clear();
  EXPECT_TRUE(tool.Deactivate());
  EXPECT_TRUE(d["imgButtonUp"].visible);
  EXPECT_FALSE(tool.Enabled());

  // With no dialog open a click changes nothing.
  d.Fire("cmdCancel", ControlEvent::Click);
  map().graphics.clear();
  tool.OnMouseDown(1, 0, 5, 5);
  tool.OnMouseUp(1, 0, 5, 5);
  EXPECT_TRUE(map().graphics.empty());
  clsSelPointTool orphan;
  orphan.OnCreate(app, document, nullptr);
  EXPECT_FALSE(orphan.Enabled());
  orphan.OnClick();
  EXPECT_TRUE(app.windows.empty());
}

}  // namespace
}  // namespace tarnwick
