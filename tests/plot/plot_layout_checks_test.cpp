// Every check at OK of the Plot Layout dialog, each reached with one bad
// entry in an otherwise complete dialog: its text, its box title and the
// control it marks.
#include <filesystem>
#include <fstream>
#include <functional>

#include "plot/plot_layout_checks.h"
#include "plot_dialog_fixture.h"

namespace tarnwick {
namespace {

using namespace plotfix;

class PlotChecks : public PlotDialogTest {
 protected:
  PlotChecks() {
    const platform::SpatialReference none;
    layers = {MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}}),
              MakeStands(dir / "nocrs.gpkg", none, {{Square(0, 0, 100), "B"}}, "NoCrs"),
              MakePoints(dir / "points.gpkg", utm, {{500050, 4000050}}, "Points"),
              MakePoints(dir / "nocrs_points.gpkg", none, {{50, 50}}, "NoCrsPoints"),
              MakeStands(dir / "nad27.gpkg", platform::SpatialReference::FromEpsg(26710),
                         {{Square(500000, 4000000, 100), "C"}}, "Nad27")};
  }

  // A dialog on the four layers that would pass every check.
  frmPlotLayout& OpenComplete() {
    map().layers = layers;
    map().spatialReference = utm;
    frmPlotLayout& d = Open();
    d.SetText("txtNumPlots", "4");
    d.SetListIndex("cbxUnits", 2);
    return d;
  }

  std::vector<platform::FeatureLayer> layers;
};

struct CheckRow {
  int number;
  std::string head;
  std::vector<Edit> edits;
  std::string control;  // marked and focused; empty for none
  std::string title = "";
  std::string body = "";  // a part of the body, where the head is shared
  std::function<void(frmPlotLayout&)> more = {};  // any other step, after the edits
};

TEST_F(PlotChecks, EachCheckShowsItsTextAndMarksItsControl) {
  std::ofstream(dir / "broken.gdb") << "not a geodatabase";
  std::ofstream(dir / "Taken.shp") << "";
  const std::string spatial = "Invalid Spatial Reference:";
  const std::string ratio = "cbxSpacingRatioOptions", option = "cbxPlotsOption";
  const std::string layer = "cbxExistingPointLayer", field = "cbxExistingIDField";
  const Edit existing{"cbxCreatePointsIn", 1}, anchor{"chkApplyAnchor", 1};
  const Edit fromLayer{"cbxAnchorOption", 1}, clicked{"cbxAnchorOption", 0};
  const std::vector<CheckRow> rows = {
      {1, "No Stand ID Attribute Field Specified!", {{"lbxStandFields", -1}}, "lbxStandFields"},
      {2, "No Units Specified!", {{option, 2}, {"cbxUnits", -1}}, "cbxUnits"},
      {3, "No Spacing Ratio Specified!", {{ratio, -1}}, ratio},
      {4, "Invalid Value for X-Value of User-Defined Ratio!", {{ratio, 3}, {"txtXRatio", ""}}, "txtXRatio", "",
       "Please specify the X-value"},
      {5, "Invalid Value for X-Value of User-Defined Ratio!", {{ratio, 3}, {"txtXRatio", "0"}}, "txtXRatio", "",
       "non-zero X-value"},
      {6, "Invalid Value for Y-Value of User-Defined Ratio!", {{ratio, 3}, {"txtYRatio", ""}}, "txtYRatio", "",
       "Please specify the Y-value"},
      {7, "Invalid Value for Y-Value of User-Defined Ratio!", {{ratio, 3}, {"txtYRatio", "0,0"}}, "txtYRatio", "",
       "non-zero Y-value"},
      {8, "No Plot Spacing Specified!", {{option, -1}}, option},
      {9, "No Number of Plots per Stand Specified!", {{"txtNumPlots", ""}}, "txtNumPlots"},
      {10, "No Plot Count Attribute Field selected!", {{option, 1}, {"cbxPlotsField", 0}}, "cbxPlotsField"},
      {11, "No X-Axis Spacing Distance Specified!", {{option, 2}, {"txtXSpacing", ""}}, "txtXSpacing"},
      {12, "No Y-Axis Spacing Distance Specified!", {{option, 2}, {"txtYSpacing", ""}}, "txtYSpacing"},
      {13, "No X-Spacing Attribute Field selected!", {{option, 3}, {"cbxXSpacing", 0}}, "cbxXSpacing"},
      {14, "No Y-Spacing Attribute Field selected!", {{option, 3}, {"cbxXSpacing", 1}, {"cbxYSpacing", 0}},
       "cbxYSpacing"},
      {15, "No Orientation Attribute Field selected!", {}, "cbxOrientationField", "", "",
       [](auto& d) {
         d.Fire("lblOrientField", ControlEvent::Click);
         d.SetListIndex("cbxOrientationField", 0);
       }},
      {16, "No Grid Orientation Specified!", {{"txtGridOrientation", "-"}}, "txtGridOrientation"},
      {17, "No Buffer Distance Specified!", {{"txtBuffer", ""}}, "txtBuffer"},
      {18, "No Starting Number specified!", {{"txtGridStartingNumber", ""}}, "txtGridStartingNumber"},
      {19, "Failed to check workspace!", {{"txtOutput", dir / "broken.gdb/Plots"}}, "txtOutput"},
      {20, "Specified Directory does not exist!", {{"txtOutput", dir / "missing/Plots.shp"}}, "txtOutput", "",
       "--> Directory = '" + dir / "missing'"},
      {21, "Specified filename already exists!", {{"txtOutput", dir / "Taken.shp"}}, "txtOutput", "",
       "--> Filename = 'Taken.shp'"},
      {22, "No Point Feature Class selected!", {existing, {layer, -1}, {field, 0}}, layer},
      {23, "No Point ID field selected in point feature class!", {existing, {layer, 0}, {field, 0}}, field, "",
       "attribute field in 'Points'"},
      {24, "There is a problem with the spatial reference for 'NoCrs':\n  --> Spatial Reference is unknown!",
       {{"lbxPolygons", 1}, existing, {layer, 0}, {field, 1}}, "", spatial, "different stand layer"},
      {25, "There is a problem with the spatial reference for 'NoCrsPoints':", {existing, {layer, 1}, {field, 1}}, "",
       spatial, "different point ID layer"},
      {26, "No Anchor Point Feature Class selected!", {anchor, fromLayer, {"cbxAnchorLayer", -1}}, "cbxAnchorLayer"},
      {27, "Invalid X-Coordinate for Anchor Point!",
       {anchor, fromLayer, {"cbxAnchorLayer", 0}, {"txtAnchorX", "<-- Empty Point -->"}}, "txtAnchorX", "",
       "It is possible that the first point in 'Points' is an empty point."},
      {28, "Invalid Y-Coordinate for Anchor Point!", {anchor, fromLayer, {"cbxAnchorLayer", 0}, {"txtAnchorY", ""}},
       "txtAnchorY"},
      {29, "Unknown Coordinate System for Anchor Point!", {anchor, fromLayer, {"cbxAnchorLayer", 1}}, "txtAnchorY"},
      {30, "Invalid X-Coordinate for Anchor Point!", {anchor, clicked, {"txtAnchorX", ""}, {"txtAnchorY", "1"}},
       "txtAnchorX", "", "numeric value for the X-coordinate"},
      {31, "Invalid Y-Coordinate for Anchor Point!", {anchor, clicked, {"txtAnchorX", "1"}, {"txtAnchorY", "y"}},
       "txtAnchorY"},
      {32, "Unknown Coordinate System for Anchor Point!", {anchor, clicked, {"txtAnchorX", "1"}, {"txtAnchorY", "1"}},
       "txtAnchorY", "", "", [&](auto&) { map().spatialReference = {}; }},
      {34, "There is a problem with the spatial reference for 'NoCrs' (your new points feature class):",
       {{"lbxPolygons", 1}, anchor, clicked, {"txtAnchorX", "1"}, {"txtAnchorY", "1"}}, "", spatial},
      // NAD 1927 stands into NAD 1983 points: the first candidate needs grid
      // files this machine lacks, so the run is refused before it writes.
      {0, "", {{"lbxPolygons", 2}, existing, {layer, 0}, {field, 1}}, "", "Unusable Geographic Transformation:",
       "Install the grid files"},
      {0, "Layer No Longer Available!", {}, "lbxPolygons", "Layer Not Found:",
       "The layer 'Stands' has been removed from the map", [&](auto&) { map().layers.erase(map().layers.begin()); }},
  };

  for (const CheckRow& row : rows) {
    SCOPED_TRACE("check " + std::to_string(row.number));
    app.boxes.clear();
    frmPlotLayout& d = OpenComplete();
    Fill(d, row.edits);
    if (row.more) row.more(d);
    OK();
    ASSERT_EQ(app.boxes.size(), 1u);
    const std::string& text = app.boxes[0].text;
    EXPECT_EQ(text.substr(0, row.head.size()), row.head);
    EXPECT_NE(text.find(row.body), std::string::npos) << text;
    EXPECT_EQ(app.boxes[0].title, row.title);
    if (!row.control.empty()) {
      EXPECT_EQ(d[row.control].backColor, kYellow);
      EXPECT_EQ(d.focus, row.control);
    }
    EXPECT_FALSE(d.unloaded);
    EXPECT_TRUE(app.reports.empty());
  }
  // Both anchor boxes are marked when the anchor's system is unknown, and a
  // marked box turns white at its next change.
  frmPlotLayout& d = OpenComplete();
  Fill(d, rows[28].edits);
  OK();
  EXPECT_EQ(d["txtAnchorX"].backColor, kYellow);
  d.SetText("txtAnchorX", "12");
  EXPECT_EQ(d["txtAnchorX"].backColor, kWhite);
}

// The dialog's order lets the checks on the anchor's and the existing
// layer's systems catch an unknown system first; these two guard the
// geographic system behind a known one.
TEST(PlotChecksAlone, ChecksOfTheSystemsBehindAnchorAndExistingOutput) {
  const platform::SpatialReference none;
  const PlotCheck anchor = CheckAnchorReference(none);
  ASSERT_TRUE(anchor);
  EXPECT_EQ(anchor->number, 33);
  EXPECT_EQ(anchor->head, "There is a problem with the spatial reference for your Anchor point!\n  --> Spatial Reference is unknown!");
  EXPECT_EQ(anchor->icon, platform::host::MessageIcon::Exclamation);
  const PlotCheck existing = CheckExistingOutputReference("Plots", none);
  ASSERT_TRUE(existing);
  EXPECT_EQ(existing->number, 35);
  EXPECT_TRUE(existing->marked.empty());
  EXPECT_FALSE(CheckAnchorReference(platform::SpatialReference::FromEpsg(26910)));
}

}  // namespace
}  // namespace tarnwick
