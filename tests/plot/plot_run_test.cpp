// Whole plot runs on GeoPackage stands: the points written, their numbers,
// the three texts of a run and what it leaves in its output's metadata.
#include "plot/plot_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <regex>

#include "metadata/document_io.h"
#include "platform/host/memory_map_document.h"
#include "plot_fixtures.h"
#include "testkit/fake_application.h"
#include "testkit/golden.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using namespace plotfix;
using platform::SpatialReference;
using platform::XY;
using ::testing::HasSubstr;
using ::testing::Not;

LocalTime At(int hour, int minute, int second) {
  using namespace std::chrono;
  return local_days{year{2026} / 11 / 23} + hours{hour} + minutes{minute} + seconds{second};
}

NewPlotClass NewClass(const std::string& store, const std::string& name = "Plots") {
  return NewPlotClass{store + "/" + name, store, name};
}

class PlotRun : public ::testing::Test {
 protected:
  PlotRun() : document((dir.path() / "forest.qgs").string(), "forest") {}

  PlotLayoutResult Run(const PlotLayoutParameters& parameters) {
    PlotRunOptions options;
    int calls = 0;
    options.clock = [calls]() mutable { return calls++ == 0 ? At(9, 5, 7) : At(9, 6, 12); };
    return GeneratePlotLayout(app, document, parameters, options);
  }

  // A 30 m square grid of the stands into a new class in store.
  PlotLayoutParameters NewClassRun(const platform::FeatureLayer& stands, const std::string& store) {
    PlotLayoutParameters p;
    p.stands = StandsOf(stands);
    p.units = "Meters";
    p.spacing = ManualSpacing{30, 30};
    p.orientation = ConstantOrientation{0};
    p.firstPlotNumber = 1;
    p.output = NewClass(store);
    return p;
  }

  // UTM stands in stands.gpkg: 100 m squares 100 m apart, with these IDs.
  platform::FeatureLayer RowOfStands(const std::vector<Value>& ids) {
    std::vector<StandRow> rows;
    for (const Value& id : ids) rows.push_back({Square(500000 + 200.0 * rows.size(), 4000000, 100), id});
    return MakeStands(dir / "stands.gpkg", utm, rows);
  }

  // A 30 m grid over stands of these rows (kept in `stands`) into plots.gpkg.
  PlotLayoutParameters GridOver(const std::vector<StandRow>& rows, const SpatialReference& sr) {
    stands = MakeStands(dir / "stands.gpkg", sr, rows);
    return NewClassRun(stands, dir / "plots.gpkg");
  }

  std::string MetadataOf(platform::FeatureClass& featureClass) {
    bool failed = false;
    const std::string xml = metadata::ReturnMetadataXMLStringFromDataset(featureClass, failed);
    EXPECT_FALSE(failed);
    return xml;
  }

  testkit::TempDir dir;
  testkit::FakeApplication app;
  platform::host::MemoryMapDocument document;
  const SpatialReference utm = SpatialReference::FromEpsg(26910);
  platform::FeatureLayer stands;
};

TEST_F(PlotRun, NewClassReportParameterPurposeAndMetadata) {
  const std::string store = dir / "plots.gpkg";
  const PlotLayoutResult result = Run(NewClassRun(RowOfStands({"A", "B"}), store));
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.caption, "Analysis Complete:");
  EXPECT_EQ(result.plotsWritten, 18);
  testkit::ExpectGolden(result.rtfReport, "plot_run_new_class.rtf");
  testkit::ExpectGolden(result.parameterText + "\n" + result.purposeText + "\n", "plot_run_new_class.txt",
                        {{store, "<STORE>"}});

  // The points: text plot IDs from 1, the stand's ID, a 3 by 3 grid from
  // 20 m inside each stand, northern row first, west to east.
  const auto plots = ReadAll(*result.outputClass);
  ASSERT_EQ(plots.size(), 18u);
  const int standField = result.outputClass->FindField("StandID");
  const int plotField = result.outputClass->FindField("PlotID");
  for (int i = 0; i < 18; ++i) {
    EXPECT_EQ(platform::ValueToText(plots[i].values.at(plotField)), std::to_string(i + 1));
    EXPECT_EQ(platform::ValueToText(plots[i].values.at(standField)), i < 9 ? "A" : "B");
    EXPECT_EQ(plots[i].shape.PointXY(), (XY{500020.0 + 200 * (i / 9) + 30 * (i % 3), 4000080.0 - 30 * (i % 9 / 3)}));
  }

  // The new class joins the map; the progress bar was used and put away.
  ASSERT_EQ(document.FocusMap().Layers().size(), 1u);
  EXPECT_EQ(document.FocusMap().Layers()[0].name, "Plots");
  EXPECT_FALSE(app.statusBar.visible);
  EXPECT_EQ(app.statusBar.messages.front(), "Generating Plots in Stands...");
  EXPECT_EQ(app.statusBar.messages[1], "Generating Plots in Stands [Stand ID = A)");
  EXPECT_EQ(app.yields, 2);

  // A new class gets an abstract, the history and its fields' descriptions.
  const std::string xml = MetadataOf(*result.outputClass);
  for (const char* text : {"This feature class contains an array of plot locations distributed over stand polygons "
                           "from 'Stands'.",
                           "Generated an array of plots over stands from 'Stands'",
                           "NOTE:  This is not Python or VB Code!", "GeneratePlotLayout", "Plot ID Value of this point.",
                           "ID Value of stand that contains this plot point, extracted from Attribute Field [StandID] "
                           "in feature class 'Stands'.",
                           "Tarnwick, LLC"}) {
    EXPECT_THAT(xml, HasSubstr(text));
  }
}

TEST_F(PlotRun, ExistingClassWithCountAnchorBufferAndFieldOrientation) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 200), "A", {}, {}, {}, 30.0},
                                  {Square(500400, 4000000, 200), "B", {}, {}, {}, Value{}}});
  // An existing class without a stand field, text plot IDs 3 and 17 already in it.
  auto existingClass =
      testkit::MakeClass(dir / "plots.gpkg",
                         testkit::ClassSpec("Existing", platform::GeometryType::Point, utm,
                                            {Field{"PlotID", "", FieldType::String, 10}}),
                         {{"POINT (1 1)", {std::string("3")}}, {"POINT (1 1)", {std::string("17")}}});

  PlotLayoutParameters p;
  p.stands = StandsOf(stands);
  p.units = "Meters";
  p.spacing = PlotsPerPolygon{5, SpacingRatio::Of(SpacingRatioOption::OneToTwo)};
  p.orientation = OrientationFromField{kOrientationIndex, FieldAt(stands, kOrientationIndex)};
  p.buffer = {5, "Feet"};
  p.firstPlotNumber = 0;
  p.output = ExistingLayer("Plot points", existingClass, "PlotID", true);
  p.anchor = ClickedAnchor{500010, 4000010, utm, std::nullopt, platform::TransformDirection::Forward};

  const PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  // The stand without an orientation keeps the one before; the iteration
  // counts of the search are masked.
  std::string report = result.rtfReport;
  for (std::size_t at = 0; (at = report.find("Plot Count = 5 (", at)) != std::string::npos;) {
    at += 16;
    report.replace(at, report.find(')', at) - at, "N iterations");
  }
  testkit::ExpectGolden(report, "plot_run_existing_class.rtf");
  testkit::ExpectGolden(result.parameterText + "\n" + result.purposeText + "\n", "plot_run_existing_class.txt",
                        {{existingClass->GetWorkspace()->PathName(), "<STORE>"}});

  // The stand field was added; numbers go on above 17 as text.
  const auto plots = ReadAll(*existingClass);
  ASSERT_EQ(plots.size(), 12u);
  const int standField = existingClass->FindField("StandID");
  ASSERT_GE(standField, 0);
  for (int i = 2; i < 12; ++i) {
    EXPECT_EQ(platform::ValueToText(plots[i].values.at(2)), std::to_string(16 + i));
    EXPECT_EQ(platform::ValueToText(plots[i].values.at(standField)), i < 7 ? "A" : "B");
  }
  EXPECT_TRUE(document.FocusMap().Layers().empty());  // no new layer for an existing class
}

TEST_F(PlotRun, NumericPlotIdsStartAboveHighestOnAnEmptyClassAndHistoryOnly) {
  const auto stands = RowOfStands({"A"});
  auto numbered = testkit::MakeClass(
      dir / "plots.gpkg", testkit::ClassSpec("Numbered", platform::GeometryType::Point, utm,
                                             {Field{"PLOT", "", FieldType::Integer},
                                              Field{"StandID", "", FieldType::String, 12}}));
  PlotLayoutParameters p = NewClassRun(stands, "");
  p.output = ExistingLayer("Numbered", numbered, "PLOT", true);
  p.firstPlotNumber = 0;
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_THAT(result.purposeText, HasSubstr("['Numbered' in workspace '"));  // names equal: no dataset part

  // A second run from a given number.
  std::get<ExistingPlotLayer>(p.output).startAboveHighest = false;
  p.firstPlotNumber = 100;
  result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  const auto plots = ReadAll(*numbered);
  ASSERT_EQ(plots.size(), 18u);
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(plots[i].values.at(2), Value{std::int64_t{i + 1}});
    EXPECT_EQ(plots[9 + i].values.at(2), Value{std::int64_t{100 + i}});
  }

  // An existing class that has its stand field gets the history only.
  const std::string xml = MetadataOf(*numbered);
  EXPECT_THAT(xml, HasSubstr("NOTE:  This is not Python or VB Code!"));
  EXPECT_THAT(xml, Not(HasSubstr("ID Value of stand that contains this plot point")));
  EXPECT_THAT(xml, Not(HasSubstr("This feature class contains an array of plot locations")));
}

TEST_F(PlotRun, NullStandIdFailsTheRunAndNothingOfItStays) {
  const std::string store = dir / "plots.gpkg";
  const PlotLayoutResult result = Run(NewClassRun(RowOfStands({"A", Value{}, "C"}), store));
  EXPECT_FALSE(result.succeeded);
  EXPECT_EQ(result.caption, "Analysis Failed:");
  EXPECT_EQ(result.standsDone, 2);
  EXPECT_EQ(result.plotsWritten, 9);
  std::smatch head;
  ASSERT_TRUE(std::regex_search(result.failureReport, head,
                                std::regex("^Analysis Failed:\r\n  --> Line Number (\\d+)\r\n  --> Error Number = 94\r\n"
                                           "  --> Error Source = GeneratePlotLayout PlotLayoutFunctions[^\r]*\r\n"
                                           "  --> Error Description = [^\r]*Invalid use of Null")))
      << result.failureReport;
  // The progress message showed the Null before the run failed on it.
  EXPECT_EQ(app.statusBar.messages.back(), "Generating Plots in Stands [Stand ID = <Null>)");
  // The error road showed and logged the stack; the log names the same line as the report.
  ASSERT_TRUE(result.errorLog.has_value());
  EXPECT_TRUE(std::filesystem::exists(result.errorLog->path));
  ASSERT_EQ(app.windows.size(), 1u);
  EXPECT_THAT(app.windows[0], HasSubstr("GeneratePlotLayout PlotLayoutFunctions Line : " + head[1].str() + "\r\n"));
  // What went wrong, without the stack, and where.
  EXPECT_EQ(result.errorLog->reason, "Invalid use of Null");
  EXPECT_EQ(result.failedStandId, "<Null>");
  // The first stand's plots went with the store the run made.
  EXPECT_FALSE(std::filesystem::exists(store));
}

// Stands without a spatial reference are the command line's plot layout test.
TEST_F(PlotRun, ZeroSpacingFromAFieldFailsTheRun) {
  PlotLayoutParameters p = GridOver(
      {{Square(500000, 4000000, 100), "A", {}, 30.0, 30.0}, {Square(500200, 4000000, 100), "B", {}, 0.0, 30.0}}, utm);
  p.spacing = SpacingFromFields{kXSpacingIndex, FieldAt(stands, kXSpacingIndex), kYSpacingIndex,
                                FieldAt(stands, kYSpacingIndex)};
  const PlotLayoutResult result = Run(p);
  EXPECT_FALSE(result.succeeded);
  EXPECT_EQ(result.plotsWritten, 9);
  EXPECT_THAT(result.failureReport, HasSubstr("Stand 'B': the X spacing in field [XSp] is 0"));
}

TEST_F(PlotRun, BufferThatEliminatesAStandIsNoted) {
  PlotLayoutParameters p = GridOver(
      {{Square(500000, 4000000, 100), "Wide"},
       {"POLYGON((500200 4000000,500300 4000000,500300 4000030,500200 4000030,500200 4000000))", "Thin"}},
      utm);
  p.spacing = ManualSpacing{10, 10};
  p.buffer = {20, "Meters"};
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_THAT(result.rtfReport, HasSubstr("\\par \\b0\\tab 2] Stand 'Thin': Buffer Distance of '20' completely "
                                          "eliminated the polygon\r\n"));
  // Only the wide stand's shrunken 60 m square holds plots: 7 by 7 lattice points.
  EXPECT_EQ(result.plotsWritten, 49);
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const XY xy = plot.shape.PointXY();
    EXPECT_TRUE(xy.x >= 500020 && xy.x <= 500080 && xy.y >= 4000020 && xy.y <= 4000080);
  }

  // A negative distance shrinks the same way and tells the empty stand apart.
  p.buffer = {-20, "Meters"};
  p.output = NewClass(dir / "plots2.gpkg");
  result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 49);
  EXPECT_THAT(result.rtfReport, HasSubstr("2] Stand 'Thin': Stand Polygon is Empty"));
}

TEST_F(PlotRun, SelfIntersectingStandIsRepairedBeforeTheGrid) {
  // A bow tie: two 100 m triangles meeting at (500050, 4000050).
  PlotLayoutParameters p =
      GridOver({{"POLYGON((500000 4000000,500100 4000100,500100 4000000,500000 4000100,500000 4000000))", "Bow"}}, utm);
  p.spacing = ManualSpacing{10, 10};
  const PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  // Both triangles hold plots: points left and right of the crossing.
  bool west = false, east = false;
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const XY xy = plot.shape.PointXY();
    west = west || xy.x < 500040;
    east = east || xy.x > 500060;
    EXPECT_LE(std::abs(xy.y - 4000050), std::abs(xy.x - 500050) + 1e-6);  // inside the bow tie
  }
  EXPECT_TRUE(west && east);
  EXPECT_GT(result.plotsWritten, 40);
}

TEST_F(PlotRun, LatticePassesThroughTheAnchor) {
  PlotLayoutParameters p = GridOver({{Square(500000, 4000000, 300), "A"}}, utm);
  const XY anchor{499871.3, 4000512.9};  // outside the stand
  const double k = 3.14159265358979323846 / 180;
  // Steps from the anchor along the row (123 degrees) and column (33 degrees)
  // directions of orientation 33.
  auto steps = [&](XY p) {
    const double dx = p.x - anchor.x, dy = p.y - anchor.y;
    return XY{(dx * std::sin(123 * k) + dy * std::cos(123 * k)) / 30, (dx * std::sin(33 * k) + dy * std::cos(33 * k)) / 30};
  };
  p.orientation = ConstantOrientation{33};
  p.anchor = ClickedAnchor{anchor.x, anchor.y, utm, std::nullopt, platform::TransformDirection::Forward};
  const PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_GT(result.plotsWritten, 80);
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const XY s = steps(plot.shape.PointXY());
    EXPECT_NEAR(s.x, std::round(s.x), 1e-6);
    EXPECT_NEAR(s.y, std::round(s.y), 1e-6);
  }

}

TEST_F(PlotRun, PlotCountFromAFieldOnAGeographicLayer) {
  PlotLayoutParameters p = GridOver(
      {{"POLYGON((-122.010 45.000,-121.995 45.000,-121.995 45.010,-122.003 45.004,-122.010 45.010,-122.010 45.000))",
        "G1", std::int64_t{20}},
       {Square(-121.990, 45.000, 0.01), "G2", std::int64_t{0}}},
      SpatialReference::FromEpsg(4269));
  p.units = "";
  p.spacing = PlotsFromField{kPlotsIndex, FieldAt(stands, kPlotsIndex), SpacingRatio::Of(SpacingRatioOption::Square)};
  p.buffer = {10, "Meters"};
  const PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 20);
  EXPECT_THAT(result.rtfReport, HasSubstr("1] Stand 'G1': Plot Count = 20 ("));
  EXPECT_THAT(result.rtfReport, HasSubstr("2] Stand 'G2': Plot Count = 0; No plots generated..."));
  EXPECT_EQ(result.outputClass->GetSpatialReference().FactoryCode(), 4269);
}

TEST_F(PlotRun, SelectedStandsOnlyAndAllWhenNoneIsSelected) {
  const auto stands = RowOfStands({"A", "B", "C"});
  PlotLayoutParameters p = NewClassRun(stands, dir / "plots.gpkg");
  p.stands.doAllStands = false;
  p.stands.layer.selection = stands.featureClass->Select("StandID = 'C'");
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 9);
  EXPECT_THAT(result.rtfReport, HasSubstr("Selected Stand Polygons (n = 1)"));
  EXPECT_THAT(result.rtfReport, HasSubstr("1] Stand 'C'"));

  p.stands.layer.selection.clear();
  p.output = NewClass(dir / "plots.gpkg", "Plots2");
  result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 27);
  EXPECT_THAT(result.rtfReport, HasSubstr("All Stand Polygons (n = 3)"));
}

}  // namespace
}  // namespace tarnwick
