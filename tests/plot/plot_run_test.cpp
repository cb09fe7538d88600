// Whole plot runs on GeoPackage stands: the points written, their numbers,
// and the three texts of a run.
#include "platform/host/memory_map_document.h"
#include "plot/plot_run.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "platform/host/map_document.h"
#include "plot_fixtures.h"
#include "presentation/rtf_text.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using namespace plotfix;
using platform::SpatialReference;
using platform::XY;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t at; (at = text.find("\r\n", start)) != std::string::npos; start = at + 2) {
    lines.push_back(text.substr(start, at - start));
  }
  lines.push_back(text.substr(start));
  return lines;
}

LocalTime At(int hour, int minute, int second) {
  using namespace std::chrono;
  return local_days{year{2026} / 11 / 23} + hours{hour} + minutes{minute} + seconds{second};
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

  PlotLayoutParameters NewClassRun(const platform::FeatureLayer& stands, const std::string& store) {
    PlotLayoutParameters p;
    p.stands = StandsOf(stands);
    p.units = "Meters";
    p.spacing = ManualSpacing{30, 30};
    p.orientation = ConstantOrientation{0};
    p.firstPlotNumber = 1;
    p.output = NewPlotClass{store + "/Plots", store, "Plots"};
    return p;
  }

  testkit::TempDir dir;
  testkit::FakeApplication app;
  platform::host::MemoryMapDocument document;
  const SpatialReference utm = SpatialReference::FromEpsg(26910);
};

TEST_F(PlotRun, NewClassReportParameterAndPurposeTexts) {
  const std::string store = dir / "plots.gpkg";
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 100), "A"}, {Square(500200, 4000000, 100), "B"}});
  const PlotLayoutResult result = Run(NewClassRun(stands, store));
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.caption, "Analysis Complete:");
  EXPECT_EQ(result.plotsWritten, 18);
  const std::string ws = result.outputClass->GetWorkspace()->PathName();
  const std::string utmName = utm.Name();
  EXPECT_EQ(utmName, "NAD_1983_UTM_Zone_10N");

  const std::vector<std::string> expected = {
      R"({\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fswiss\fcharset0 Arial;}{\f1\fnil\fcharset0 MS Sans Serif;}})",
      R"({\colortbl ;\red0\green0\blue255;\red128\green0\blue0;})",
      R"(\viewkind4\uc1\pard\qc\tx360\b\f0\fs20 Plot Generation Complete\b0 )",
      R"(\par \pard\tx360\ul\b\fs16 Parameters)",
      R"(\par \cf1\ulnone Stand Polygons:\cf0 )",
      R"(\par \b0\tab\cf2 Feature Class: \cf0  Stands & vbNewLine\par \tab\cf2 Option to do All or Selected:  \cf0 All Stand Polygons (n = 2))",
      R"(\par \tab\cf2 Stand ID Field: \cf0  StandID (Field Index 2))",
      R"(\par \tab\cf2 Stand Coordinate System:  \cf0 NAD_1983_UTM_Zone_10N)",
      R"(\par )",
      R"(\par \cf1\b Plot Units:\cf0\b0   Meters)",
      R"(\par )",
      R"(\par \cf1\b Spacing and Plot Count:\cf0\b0 )",
      R"(\par \tab\cf2 Plot Count Option:  \cf0 Manually Enter X/Y Point Spacing)",
      R"(\par \tab\cf2 X-spacing: \cf0  30)",
      R"(\par \tab\cf2 Y-spacing:  \cf0 30)",
      R"(\par )",
      R"(\par \cf1\b Grid Orientation:\cf0\b0   0 degrees (compass direction))",
      R"(\par )",
      R"(\par \cf1\b Internal Buffer:\b0  \cf0  None)",
      R"(\par )",
      R"(\par \cf1\b Output Options:\cf0\b0 )",
      R"(\par \tab\cf2 New or Existing Option:  \cf0 Create New Feature Class)",
      R"(\par \tab\cf2 Feature Class:\cf0  Plots)",
      R"(\par \tab\cf2 Plot ID Field Name: \cf0  PlotID)",
      R"(\par \tab\cf2 Stand ID Field Name:\cf0  StandID)",
      R"(\par \tab\cf2 Feature Class Spatial Reference:  \cf0 NAD_1983_UTM_Zone_10N)",
      R"(\par \tab\cf2 First Plot Starting Number: \cf0  1)",
      R"(\par )",
      R"(\par \cf1\b Anchor Point:\cf0\b0 )",
      R"(\par \tab\cf2 Anchor Point Option:  \cf0 Do not force grid through a specified point)",
      R"(\par )",
      R"(\par \ul\b Notes on Analysis:\ulnone )",
      R"(\par \b0\tab 1] Stand 'A': Plot Count = 9 (0 iterations))",
      R"(\par \b0\tab 2] Stand 'B': Plot Count = 9 (0 iterations))",
      R"(\par )",
      R"(\par \i Analysis Parameters also saved to plot feature class metadata.\i0 )",
      R"(\par )",
      R"(\par \pard\qc\tx360 ----------------------------------)",
  };
  const std::vector<std::string> lines = Lines(result.rtfReport);
  ASSERT_GT(lines.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(lines[i], expected[i]) << "line " << i + 1;

  // The closing lines around the injected times.
  const std::string closing = R"(\par \i )" + ReturnTimeElapsedRTF(At(9, 5, 7), At(9, 6, 12), 16) +
                              "\\i0\\fs20 \r\n\\par \\pard\\f1\\fs17 \r\n\\par }\r\n \r\n";
  ASSERT_GE(result.rtfReport.size(), closing.size());
  EXPECT_EQ(result.rtfReport.substr(result.rtfReport.size() - closing.size()), closing);
  EXPECT_NE(result.rtfReport.find("1 minute, 5 seconds"), std::string::npos);
  EXPECT_NE(RtfToPlainText(result.rtfReport).find("1] Stand 'A': Plot Count = 9 (0 iterations)"), std::string::npos);

  EXPECT_EQ(result.parameterText,
            "NOTE:  This is not Python or VB Code!  [FUNCTION Generate_Plot_Layout][Parameters: "
            "Stand_Feature_Class = 'Stands', Stand_ID_Field = 'StandID' (Field Index 2), Do_All_Stands = 'TRUE', "
            "Units = 'Meters', Spacing_Method = 'Manually Enter X/Y Point Spacing', X_Spacing_Value = '30', "
            "Y_Spacing_Value = '30', Plot Layout Orientation = '0', Buffer_Distance = '0', Buffer_Units = '', "
            "Output_Option = 'Create New Feature Class', Output_Dataset_Name = 'Plots', Output_Worksapce = '" +
                store + "', First_Plot_Number = '1', Plot_ID_Field = 'PlotID', Stand_ID_Field = 'StandID', "
                "Force_Through_Anchor_Point = 'FALSE']");
  EXPECT_EQ(result.purposeText,
            "Generated an array of plots over stands from 'Stands' and saved them to a new point feature class "
            "['Plots', in workspace '" + store + "']. Plots generated every 30 Meters along X-axis, and every 30 "
            "Meters along Y-axis  (prior to grid rotation of 0 degrees). Points generated to fill stand polygons, "
            "with no edge buffer applied. Plots not forced through any anchor point.");

  // The points: text plot IDs from 1, the stand's ID, northern row first.
  const auto plots = ReadAll(*result.outputClass);
  ASSERT_EQ(plots.size(), 18u);
  const int standField = result.outputClass->FindField("StandID");
  const int plotField = result.outputClass->FindField("PlotID");
  const XY firstRow[] = {{500020, 4000080}, {500050, 4000080}, {500080, 4000080}};
  for (int i = 0; i < 18; ++i) {
    EXPECT_EQ(platform::ValueToText(plots[i].values.at(plotField)), std::to_string(i + 1));
    EXPECT_EQ(platform::ValueToText(plots[i].values.at(standField)), i < 9 ? "A" : "B");
    if (i < 3) {
      EXPECT_EQ(plots[i].shape.PointXY(), firstRow[i]);
    }
  }
  EXPECT_EQ(plots[8].shape.PointXY(), (XY{500080, 4000020}));
  EXPECT_EQ(plots[9].shape.PointXY(), (XY{500220, 4000080}));

  // The new class joins the map; the progress bar was used and put away.
  ASSERT_EQ(document.FocusMap().Layers().size(), 1u);
  EXPECT_EQ(document.FocusMap().Layers()[0].name, "Plots");
  EXPECT_FALSE(app.statusBar.visible);
  EXPECT_EQ(app.statusBar.messages.front(), "Generating Plots in Stands...");
  EXPECT_EQ(app.statusBar.messages[1], "Generating Plots in Stands [Stand ID = A)");
  EXPECT_EQ(app.yields, 2);
}

TEST_F(PlotRun, ExistingClassWithCountAnchorBufferAndFieldOrientation) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 200), "A", {}, {}, {}, 30.0},
                                  {Square(500400, 4000000, 200), "B", {}, {}, {}, Value{}}});
  // An existing class without a stand field, text plot IDs 3 and 17 already in it.
  auto workspace = platform::Workspace::OpenOrCreate(dir / "plots.gpkg");
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = "Existing";
  newClass.spatialReference = utm;
  newClass.fields = {Field{"PlotID", "", FieldType::String, 10}};
  auto existingClass = workspace->CreateFeatureClass(newClass);
  {
    auto cursor = existingClass->Insert();
    for (const char* id : {"3", "17"}) {
      auto buffer = cursor->CreateFeatureBuffer();
      buffer.shape = platform::Geometry::MakePoint(1, 1, utm);
      buffer.values[2] = std::string(id);
      cursor->InsertFeature(buffer);
    }
    cursor->Flush();
  }

  PlotLayoutParameters p;
  p.stands = StandsOf(stands);
  p.units = "Meters";
  p.spacing = PlotsPerPolygon{5, SpacingRatio::Of(SpacingRatioOption::OneToTwo)};
  p.orientation = OrientationFromField{kOrientationIndex, FieldAt(stands, kOrientationIndex)};
  p.buffer = {5, "Feet"};
  p.firstPlotNumber = 0;
  ExistingPlotLayer existing;
  existing.layer = platform::FeatureLayer{"Plot points", existingClass, {}, true};
  existing.plotIdField = existingClass->Fields().at(2);
  existing.plotIdFieldName = "PlotID";
  existing.plotIdFieldIndex = 2;
  existing.startAboveHighest = true;
  p.output = existing;
  p.anchor = ClickedAnchor{500010, 4000010, utm, std::nullopt, platform::TransformDirection::Forward};

  const PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  const std::string ws = existingClass->GetWorkspace()->PathName();
  EXPECT_EQ(result.parameterText,
            "NOTE:  This is not Python or VB Code!  [FUNCTION Generate_Plot_Layout][Parameters: "
            "Stand_Feature_Class = 'Stands', Stand_ID_Field = 'StandID' (Field Index 2), Do_All_Stands = 'TRUE', "
            "Units = 'Meters', Spacing_Method = 'Enter # Plots per Polygon', Plot_Count = '5', "
            "Spacing_Ratio_X_Axis = '1', Spacing_Ratio_Y_Axis = '2', Plot Layout Orientation = Variable, based on "
            "Stand Attribute Field [Orient], Buffer_Distance = '5', Buffer_Units = 'Feet', Output_Option = 'Add to "
            "Existing Feature Class', Existing_Dataset_Name = 'Existing', Existing_Dataset_Worksapce = '" + ws +
                "', Determine_Grid_Point_Starting_Number_from_Points_Layer = 'TRUE', Starting_Number = '18', "
                "Plot_ID_Field = 'PlotID, Stand_ID_Field = 'StandID', Point_Coordinate_System = "
                "'NAD_1983_UTM_Zone_10N', Stand_Coordinate_System = 'NAD_1983_UTM_Zone_10N', "
                "Stand_To_Point_Transform = 'None', Stand_To_Point_Transform_Direction = 'None', "
                "Force_Through_Anchor_Point = 'TRUE'Selection_Option = 'Select Point by Clicking on Screen', "
                "Anchor_X = '500010.0000000000', Anchor_Y = '4000010.0000000000', Point_Coordinate_System = "
                "'NAD_1983_UTM_Zone_10N', Anchor_Coordinate_System = 'NAD_1983_UTM_Zone_10N', "
                "Anchor_To_Point_Transform = 'None', Anchor_To_Point_Transform_Direction = 'None']");
  EXPECT_EQ(result.purposeText,
            "Generated an array of plots over stands from 'Stands' and saved them to an existing point feature "
            "class ['Plot points' (dataset name = 'Existing') in workspace '" + ws + "']. Plots generated at 5 per "
            "polygon, arranged in a rectangular pattern with an X:Y spacing ratio of 1:2 (prior to grid rotation of "
            "[Orient] degrees). Points generated to avoid a buffer along the edges of stand polygons, using a "
            "buffer distance of 5 Feet. Plots forced through anchor point, specified by clicking on the screen.");

  const std::vector<std::string> lines = Lines(result.rtfReport);
  auto has = [&lines](const std::string& line) { return std::find(lines.begin(), lines.end(), line) != lines.end(); };
  EXPECT_TRUE(has(R"(\par \tab\cf2 Stand Transformation to Plot Coordinate System:\cf0   None)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Stand Transformation Direction: \cf0  None)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Plot Count Option:  \cf0 Enter # Plots per Polygon)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Plot Spacing Option:  \cf0 1:2 (Rectangular pattern))"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Plot Count:\cf0   5)"));
  EXPECT_TRUE(has(R"(\par \cf1\b Grid Orientation:\cf0\b0   [Orient] degrees (compass direction))"));
  EXPECT_TRUE(has(R"(\par \cf1\b Internal Buffer:\b0  \cf0  5 Feet)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 New or Existing Option:  \cf0 Add to Existing Feature Class)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Feature Class:\cf0  Existing)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Plot ID Field Name: \cf0   PlotID)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Stand ID Field Name:\cf0   StandID)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Plot Starting Number Option: \cf0  Determine Grid Point Starting Number from Points Layer)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 First Plot Starting Number: \cf0  18)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Anchor Point Option:  \cf0 Select Point by Clicking on Screen)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Anchor Point X-Coordinate:  \cf0 500010)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Anchor Point Y-Coordinate:\cf0   4000010)"));
  EXPECT_TRUE(has(R"(\par \tab\cf2 Anchor Transformation Direction:\cf0   None)"));
  // The stand without an orientation keeps the one before.
  EXPECT_EQ(std::count(lines.begin(), lines.end(), R"(\par \b0\tab\tab Orientation = 30\'b0)"), 2);
  EXPECT_NE(result.rtfReport.find(R"(\par \b0\tab 1] Stand 'A': Plot Count = 5 ()"), std::string::npos);
  EXPECT_NE(result.rtfReport.find(R"(\par \b0\tab 2] Stand 'B': Plot Count = 5 ()"), std::string::npos);

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

TEST_F(PlotRun, NumericPlotIdsAndStartAboveHighestOnAnEmptyClass) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}});
  auto workspace = platform::Workspace::OpenOrCreate(dir / "plots.gpkg");
  platform::Workspace::NewFeatureClass newClass;
  newClass.name = "Numbered";
  newClass.spatialReference = utm;
  newClass.fields = {Field{"PLOT", "", FieldType::Integer}, Field{"StandID", "", FieldType::String, 12}};
  auto numbered = workspace->CreateFeatureClass(newClass);

  PlotLayoutParameters p = NewClassRun(stands, "");
  ExistingPlotLayer existing;
  existing.layer = platform::FeatureLayer{"Numbered", numbered, {}, true};
  existing.plotIdField = numbered->Fields().at(2);
  existing.plotIdFieldName = "PLOT";
  existing.plotIdFieldIndex = 2;
  existing.startAboveHighest = true;
  p.output = existing;
  p.firstPlotNumber = 0;
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_NE(result.purposeText.find("['Numbered' in workspace '"), std::string::npos);  // names equal: no dataset part

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
}

TEST_F(PlotRun, NullStandIdFailsTheRunAndNothingOfItStays) {
  const std::string store = dir / "plots.gpkg";
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 100), "A"},
                                  {Square(500200, 4000000, 100), Value{}},
                                  {Square(500400, 4000000, 100), "C"}});
  const PlotLayoutResult result = Run(NewClassRun(stands, store));
  EXPECT_FALSE(result.succeeded);
  EXPECT_EQ(result.caption, "Analysis Failed:");
  EXPECT_EQ(result.standsDone, 2);
  EXPECT_EQ(result.plotsWritten, 9);
  const std::vector<std::string> lines = Lines(result.failureReport);
  ASSERT_GE(lines.size(), 5u);
  EXPECT_EQ(lines[0], "Analysis Failed:");
  EXPECT_EQ(lines[1].rfind("  --> Line Number ", 0), 0u);
  EXPECT_EQ(lines[2], "  --> Error Number = 94");
  EXPECT_EQ(lines[3].rfind("  --> Error Source = GeneratePlotLayout PlotLayoutFunctions", 0), 0u);
  EXPECT_EQ(lines[4].rfind("  --> Error Description = ", 0), 0u);
  EXPECT_NE(result.failureReport.find("Invalid use of Null"), std::string::npos);
  // The progress message showed the Null before the run failed on it.
  EXPECT_EQ(app.statusBar.messages.back(), "Generating Plots in Stands [Stand ID = <Null>)");
  // The error road showed and logged the stack.
  ASSERT_TRUE(result.errorLog.has_value());
  EXPECT_TRUE(std::filesystem::exists(result.errorLog->path));
  ASSERT_EQ(app.windows.size(), 1u);
  // The log names the same line as the report.
  const std::string line = lines[1].substr(std::string("  --> Line Number ").size());
  EXPECT_NE(app.windows[0].find("GeneratePlotLayout PlotLayoutFunctions Line : " + line + "\r\n"),
            std::string::npos)
      << app.windows[0];
  // What went wrong, without the stack, and where.
  EXPECT_EQ(result.errorLog->reason, "Invalid use of Null");
  EXPECT_EQ(result.failedStandId, "<Null>");
  // The first stand's plots went with the store the run made.
  EXPECT_FALSE(std::filesystem::exists(store));
}

TEST_F(PlotRun, ZeroSpacingFromAFieldFailsNamingStandAndField) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 100), "A", {}, 30.0, 30.0},
                                  {Square(500200, 4000000, 100), "B", {}, 0.0, 30.0}});
  PlotLayoutParameters p = NewClassRun(stands, dir / "plots.gpkg");
  p.spacing = SpacingFromFields{kXSpacingIndex, FieldAt(stands, kXSpacingIndex), kYSpacingIndex,
                                FieldAt(stands, kYSpacingIndex)};
  const PlotLayoutResult result = Run(p);
  EXPECT_FALSE(result.succeeded);
  EXPECT_EQ(result.plotsWritten, 9);
  EXPECT_NE(result.failureReport.find("Stand 'B': the X spacing in field [XSp] is 0"), std::string::npos)
      << result.failureReport;
}

TEST_F(PlotRun, BufferThatEliminatesAStandIsNoted) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm,
                                 {{Square(500000, 4000000, 100), "Wide"},
                                  {"POLYGON((500200 4000000,500300 4000000,500300 4000030,500200 4000030,500200 4000000))",
                                   "Thin"}});
  PlotLayoutParameters p = NewClassRun(stands, dir / "plots.gpkg");
  p.spacing = ManualSpacing{10, 10};
  p.buffer = {20, "Meters"};
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_NE(result.rtfReport.find("\\par \\b0\\tab 2] Stand 'Thin': Buffer Distance of '20' completely eliminated "
                                  "the polygon\r\n"),
            std::string::npos);
  // Only the wide stand's shrunken 60 m square holds plots: 7 by 7 lattice points.
  EXPECT_EQ(result.plotsWritten, 49);
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const XY xy = plot.shape.PointXY();
    EXPECT_TRUE(xy.x >= 500020 && xy.x <= 500080 && xy.y >= 4000020 && xy.y <= 4000080);
  }

  // A negative distance shrinks the same way and tells the empty stand apart.
  p.buffer = {-20, "Meters"};
  p.output = NewPlotClass{dir / "plots2.gpkg/Plots", dir / "plots2.gpkg", "Plots"};
  result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 49);
  EXPECT_NE(result.rtfReport.find("2] Stand 'Thin': Stand Polygon is Empty"), std::string::npos);
}

TEST_F(PlotRun, LatticePassesThroughTheAnchor) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 300), "A"}});
  const XY anchor{499871.3, 4000512.9};  // outside the stand
  const double k = 3.14159265358979323846 / 180;
  // Steps from the anchor along the row (123 degrees) and column (33 degrees)
  // directions of orientation 33.
  auto steps = [&](XY p, double xSpacing, double ySpacing) {
    const double dx = p.x - anchor.x, dy = p.y - anchor.y;
    return XY{(dx * std::sin(123 * k) + dy * std::cos(123 * k)) / xSpacing,
              (dx * std::sin(33 * k) + dy * std::cos(33 * k)) / ySpacing};
  };
  PlotLayoutParameters p = NewClassRun(stands, dir / "plots.gpkg");
  p.orientation = ConstantOrientation{33};
  p.anchor = ClickedAnchor{anchor.x, anchor.y, utm, std::nullopt, platform::TransformDirection::Forward};

  p.spacing = ManualSpacing{30, 30};
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_GT(result.plotsWritten, 80);
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const XY s = steps(plot.shape.PointXY(), 30, 30);
    EXPECT_NEAR(s.x, std::round(s.x), 1e-6);
    EXPECT_NEAR(s.y, std::round(s.y), 1e-6);
  }

  // With unequal spacings the walk to the stand steps back across the
  // columns by the Y spacing: rows stay on the anchor, columns are off by
  // (40 - 25) / 40 of a step.
  p.spacing = ManualSpacing{40, 25};
  p.output = NewPlotClass{dir / "plots2.gpkg/Plots", dir / "plots2.gpkg", "Plots"};
  result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const XY s = steps(plot.shape.PointXY(), 40, 25);
    EXPECT_NEAR(s.y, std::round(s.y), 1e-6);
    EXPECT_NEAR(s.x - std::floor(s.x), 0.375, 1e-6);
  }
}

TEST_F(PlotRun, PlotCountFromAFieldOnAGeographicLayer) {
  const SpatialReference nad83 = SpatialReference::FromEpsg(4269);
  const auto stands = MakeStands(
      dir / "stands.gpkg", nad83,
      {{"POLYGON((-122.010 45.000,-121.995 45.000,-121.995 45.010,-122.003 45.004,-122.010 45.010,-122.010 45.000))",
        "G1", std::int64_t{20}},
       {Square(-121.990, 45.000, 0.01), "G2", std::int64_t{0}}});
  PlotLayoutParameters p = NewClassRun(stands, dir / "plots.gpkg");
  p.units = "";
  p.spacing = PlotsFromField{kPlotsIndex, FieldAt(stands, kPlotsIndex), SpacingRatio::Of(SpacingRatioOption::Square)};
  p.buffer = {10, "Meters"};
  const PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 20);
  EXPECT_NE(result.rtfReport.find("1] Stand 'G1': Plot Count = 20 ("), std::string::npos);
  EXPECT_NE(result.rtfReport.find("2] Stand 'G2': Plot Count = 0; No plots generated..."), std::string::npos);
  EXPECT_EQ(result.outputClass->GetSpatialReference().FactoryCode(), 4269);
}

TEST_F(PlotRun, StandsWithoutASpatialReferenceAreRefusedBeforeWriting) {
  const auto stands = MakeStands(dir / "stands.gpkg", SpatialReference(), {{Square(0, 0, 100), "A"}});
  const std::string store = dir / "plots.gpkg";
  const PlotLayoutResult result = Run(NewClassRun(stands, store));
  EXPECT_FALSE(result.succeeded);
  EXPECT_NE(result.failureReport.find("has no spatial reference"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(store));
}

TEST_F(PlotRun, SelectedStandsOnlyAndAllWhenNoneIsSelected) {
  auto stands = MakeStands(dir / "stands.gpkg", utm,
                           {{Square(500000, 4000000, 100), "A"}, {Square(500200, 4000000, 100), "B"},
                            {Square(500400, 4000000, 100), "C"}});
  PlotLayoutParameters p = NewClassRun(stands, dir / "plots.gpkg");
  p.stands.doAllStands = false;
  p.stands.layer.selection = stands.featureClass->Select("StandID = 'C'");
  PlotLayoutResult result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 9);
  EXPECT_NE(result.rtfReport.find("Selected Stand Polygons (n = 1)"), std::string::npos);
  EXPECT_NE(result.rtfReport.find("1] Stand 'C'"), std::string::npos);

  p.stands.layer.selection.clear();
  p.output = NewPlotClass{dir / "plots.gpkg/Plots2", dir / "plots.gpkg", "Plots2"};
  result = Run(p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  EXPECT_EQ(result.plotsWritten, 27);
  EXPECT_NE(result.rtfReport.find("All Stand Polygons (n = 3)"), std::string::npos);
}

}  // namespace
}  // namespace tarnwick
