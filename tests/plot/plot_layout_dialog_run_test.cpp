// Runs started from the Plot Layout dialog's OK: the plots written, the
// settings the extension keeps, the transformation settled for an anchor on
// another geographic system, the report and the closed dialog.
#include <tuple>

#include "plot_dialog_fixture.h"
#include "shell/sel_point_tool.h"

namespace tarnwick {
namespace {

using namespace plotfix;

const PlotLayoutParameters& RunParameters(const clsExtension& extension) {
  return std::any_cast<const PlotLayoutParameters&>(extension.frmLayerIDReturn);
}

TEST_F(PlotDialogTest, RunIntoAGeoPackageStoresTheChoicesAndClosesTheDialog) {
  map().layers = {MakeStands(dir / "stands.gpkg", utm,
                             {{Square(500000, 4000000, 100), "A"}, {Square(500200, 4000000, 100), "B"}})};
  map().spatialReference = utm;
  map().graphics.push_back({kAnchorMarkerName, 1, 2});
  platform::Workspace::OpenOrCreate(dir / "plots.gpkg");
  extension.XSpacing = 20;
  extension.XRatio = 3;
  frmPlotLayout& d = Open();
  Fill(d,
       {{"cbxUnits", 2}, {"txtNumPlots", "4"}, {"cbxSpacingRatioOptions", 1}, {"txtOutput", dir / "plots.gpkg/Plots"}});
  ASSERT_TRUE(d["cmdOK"].enabled);
  OK();

  EXPECT_TRUE(app.boxes.empty());
  ASSERT_EQ(app.reports.size(), 1u);
  EXPECT_EQ(app.reports[0].caption, "Analysis Complete:");
  EXPECT_EQ(app.reports[0].window, platform::host::ReportWindow::Modeless);
  EXPECT_TRUE(d.unloaded);
  EXPECT_EQ(extension.PlotLayoutForm, nullptr);
  // The choices kept in the project; values the run did not read are kept as 1.
  EXPECT_EQ(std::tuple(extension.XSpacing, extension.YSpacing, extension.XRatio, extension.YRatio),
            std::tuple(1.0, 1.0, 1.0, 1.0));
  EXPECT_EQ(extension.SpacingRatioOptionIndex, 1);
  EXPECT_EQ(extension.SeparationUnitIndex, 2);
  EXPECT_EQ(extension.DirectoryPath, dir / "plots.gpkg");
  EXPECT_EQ(extension.DirectoryType, "Personal Geodatabase");
  EXPECT_TRUE(extension.ShouldContinue);
  EXPECT_EQ(std::get<PlotsPerPolygon>(RunParameters(extension).spacing).plotsPerStand, 4);

  ASSERT_EQ(map().layers.size(), 2u);
  EXPECT_EQ(map().layers[1].name, "Plots");
  const auto plots = ReadAll(*map().layers[1].featureClass);
  ASSERT_FALSE(plots.empty());
  EXPECT_EQ(plots[0].values.back(), platform::Value{std::string("1")});
  EXPECT_TRUE(map().graphics.empty());

  // The next dialog suggests a free name in the same GeoPackage.
  frmPlotLayout& next = Open();
  EXPECT_EQ(next.OutputKind(), 4);
  EXPECT_EQ(next["txtOutput"].text, dir / "plots.gpkg/Plots_1");
}

TEST_F(PlotDialogTest, AddsToAPointLayerWithABufferWithoutUnitNumberingAboveTheHighest) {
  map().layers = {MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}}),
                  MakePoints(dir / "points.gpkg", utm, {{500050, 4000050}, {500060, 4000060}}, "Points")};
  map().spatialReference = utm;
  frmPlotLayout& d = Open();
  Fill(d, {{"cbxUnits", 2}, {"txtNumPlots", "3"}, {"txtBuffer", "5"}, {"cbxBufferUnits", -1}, {"cbxCreatePointsIn", 1},
           {"cbxExistingPointLayer", 0}, {"cbxExistingIDField", 1}, {"chkGridStartAtHighest", 1},
           {"txtGridStartingNumber", ""}});
  EXPECT_FALSE(d["txtGridStartingNumber"].enabled);
  EXPECT_FALSE(d["cmdOK"].enabled);  // a buffer without a unit holds OK back ...
  OK();                              // ... but passes its checks

  EXPECT_TRUE(app.boxes.empty());
  const PlotLayoutParameters& p = RunParameters(extension);
  EXPECT_EQ(p.buffer.distance, 5);
  EXPECT_EQ(p.buffer.units, "");
  EXPECT_EQ(p.firstPlotNumber, 0);
  EXPECT_EQ(extension.BufferUnitIndex, -1);
  EXPECT_EQ(extension.GetStartFromPointFC, 1);
  EXPECT_EQ(extension.ExistingIDHistory, "ExistingID,Stand_ID,ID,PlotNum");
  ASSERT_EQ(app.reports.size(), 1u);
  EXPECT_EQ(app.reports[0].caption, "Analysis Complete:");
  EXPECT_EQ(map().layers.size(), 2u);
  std::vector<std::int64_t> numbers;
  for (const auto& feature : ReadAll(*map().layers[1].featureClass)) numbers.push_back(platform::ValueToLong(feature.values[2]));
  EXPECT_EQ(numbers, (std::vector<std::int64_t>{1, 2, 3, 4, 5}));
}

TEST_F(PlotDialogTest, ARunAboveThePlotLimitIsAskedAbout) {
  // About 100 million plots by area; the buffer leaves none to write.
  map().layers = {MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}})};
  map().spatialReference = utm;
  platform::Workspace::OpenOrCreate(dir / "plots.gpkg");
  frmPlotLayout& d = Open();
  Fill(d, {{"cbxUnits", 2}, {"cbxPlotsOption", 2}, {"txtXSpacing", "0.01"}, {"txtBuffer", "200"}, {"cbxBufferUnits", 2},
           {"txtOutput", dir / "plots.gpkg/Plots"}});

  app.answers = {platform::host::MessageResult::No};
  OK();
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].title, "Plot Layout");
  EXPECT_EQ(app.boxes[0].buttons, platform::host::MessageButtons::YesNo);
  EXPECT_EQ(app.boxes[0].text,
            "This run would lay out about 100,000,000 plots, more than the limit of 50,000,000.\n\n"
            "Do you want to lay them out anyway?");
  EXPECT_FALSE(d.unloaded);
  EXPECT_TRUE(app.reports.empty());
  EXPECT_FALSE(extension.ShouldContinue);
  EXPECT_FALSE(platform::Workspace::Open(dir / "plots.gpkg")->NameExists("Plots"));

  app.answers = {platform::host::MessageResult::Yes};
  OK();
  EXPECT_EQ(app.boxes.size(), 2u);
  ASSERT_EQ(app.reports.size(), 1u);
  EXPECT_EQ(app.reports[0].caption, "Analysis Complete:");
  EXPECT_TRUE(d.unloaded);
}

TEST_F(PlotDialogTest, AnchorOnAnotherGeographicSystemGoesThroughTheSelectionSequence) {
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  const auto nad83 = platform::SpatialReference::FromEpsg(4269);
  map().layers = {MakeStands(dir / "stands.gpkg", wgs84, {{Square(-122.5, 45.0, 0.002), "A"}}),
                  MakePoints(dir / "anchor.gpkg", nad83, {{-122.4995, 45.0005}}, "Anchor")};
  map().spatialReference = wgs84;
  platform::Workspace::OpenOrCreate(dir / "plots.gpkg");
  frmPlotLayout& d = Open();
  Fill(d, {{"cbxUnits", 2}, {"cbxPlotsOption", 2}, {"txtXSpacing", "30"}, {"txtOutput", dir / "plots.gpkg/Plots"},
           {"chkApplyAnchor", 1}, {"cbxAnchorOption", 1}, {"cbxAnchorLayer", 0}});
  EXPECT_EQ(d["lblAnchorLayerOption"].caption, "Use first point in");
  EXPECT_EQ(d["txtAnchorX"].text, "-122.49950000");
  OK();

  ASSERT_TRUE(app.boxes.empty());
  const auto& anchor = std::get<LayerAnchor>(RunParameters(extension).anchor);
  ASSERT_TRUE(anchor.transformation.has_value());
  const auto& t = *anchor.transformation;
  EXPECT_TRUE((t.fromGcsCode == 4269 && t.toGcsCode == 4326) || (t.fromGcsCode == 4326 && t.toGcsCode == 4269));
  EXPECT_FALSE(map().Transformations().empty());  // kept in the map for the next run
  ASSERT_EQ(app.reports.size(), 1u);
  EXPECT_EQ(app.reports[0].caption, "Analysis Complete:");
}

}  // namespace
}  // namespace tarnwick
