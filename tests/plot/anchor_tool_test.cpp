// The anchor point tool with an open Plot Layout dialog: the toggle button
// and the tool mirror each other, a press, drag and release write the
// release point, the one marker stays at the press point.
#include "plot_dialog_fixture.h"
#include "shell/sel_point_tool.h"

namespace tarnwick {
namespace {

using namespace plotfix;

TEST_F(PlotDialogTest, AnchorToolPressDragReleaseAndTheToggleButton) {
  map().layers = {MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}})};
  map().spatialReference = utm;
  frmPlotLayout& d = Open();
  clsSelPointTool tool;
  tool.OnCreate(app, document, &extension);
  EXPECT_FALSE(tool.Enabled());

  d.SetValue("chkApplyAnchor", 1);
  d.SetListIndex("cbxAnchorOption", 0);
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
