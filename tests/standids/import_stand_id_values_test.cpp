#include "standids/import_stand_id_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "metadata/document_io.h"
#include "standids/transfer_fixtures.h"
#include "testkit/fake_application.h"
#include "testkit/golden.h"

namespace tarnwick {
namespace {

using namespace testfix;
using ::testing::EndsWith;
using ::testing::StartsWith;

Value T(const char* s) { return Value{std::string(s)}; }
Value I(std::int64_t i) { return Value{i}; }

platform::Field FieldOf(const platform::FeatureClass& featureClass, const std::string& name) {
  return featureClass.Fields().at(static_cast<size_t>(featureClass.FindField(name)));
}

TransferStandIDParameters Parameters(const std::shared_ptr<platform::FeatureClass>& stands,
                                     const std::shared_ptr<platform::FeatureClass>& points,
                                     const std::vector<std::string>& additional) {
  TransferStandIDParameters p;
  p.standLayer = Layer(stands, "Stand Layer");
  p.standIdField = FieldOf(*stands, "StandID");
  for (const auto& name : additional) p.additionalFields.push_back(FieldOf(*stands, name));
  p.pointLayer = Layer(points, "Plot Layer");
  return p;
}

TEST(ImportStandIDValues, GeoPackageTakesFirstStandNullsAndReusesOrRenamesFields) {
  testkit::TempDir dir;
  const std::string store = dir / "inventory.gpkg";
  auto stands = MakeStands(store, 26910, ThreeStands());
  // Area holds old values that the run overwrites.
  auto points = MakePoints(store, "Plots", 26910,
                           {Field{"Age", "", FieldType::String, 8}, Field{"Area", "", FieldType::Double}}, FivePlots(),
                           {Value{}, Value{99.0}});
  testkit::FakeApplication app;
  const auto result = ImportStandIDValues(app, nullptr, Parameters(stands, points, {"Age", "Area"}));
  ASSERT_TRUE(result.Succeeded()) << result.errorText;

  // The Stand ID is cloned under its own name; the text "Age" blocks an
  // integer Age, which is added as Age1; the double "Area" is reused.
  EXPECT_EQ(result.addedFields, (std::vector<std::string>{"StandID", "Age1"}));
  EXPECT_EQ(FieldOf(*points, "Age1").type, FieldType::Integer);
  EXPECT_EQ(Column(*points, "StandID"), (std::vector<Value>{T("A-1"), T("A-1"), T("B-2"), T("C-3"), Value{}}));
  EXPECT_EQ(Column(*points, "Age1"), (std::vector<Value>{I(40), I(40), Value{}, I(7), Value{}}));
  EXPECT_EQ(Column(*points, "Area"), (std::vector<Value>{Value{1.5}, Value{1.5}, Value{2.25}, Value{}, Value{}}));
  EXPECT_EQ(Column(*points, "Age"), std::vector<Value>(5));  // the text field is left alone
  EXPECT_EQ(result.pointsUpdated, 5);
  EXPECT_EQ(result.pointsInStands, 4);
  EXPECT_EQ(app.statusBar.messages, (std::vector<std::string>{"Importing Stand ID Values...", "Updating Metadata..."}));
  EXPECT_EQ(app.yields, 3);  // under 100 points: only one turn per metadata line (two fields, one summary)
  EXPECT_FALSE(app.statusBar.visible);
  // The report and the run's summary list the attributes in order.
  EXPECT_NE(result.report.find("\\par \\tab 1] Age\r\n\\par \\tab 2] Area\r\n"), std::string::npos);
  EXPECT_NE(metadata::ReturnMetadataPropertySet(*points)
                .GetProperty("Esri/DataProperties/lineage/Process[2]")
                .find("Additional Stand Fields to Import = <Age, Area>, "),
            std::string::npos);
}

TEST(ImportStandIDValues, ShapefileWritesMissingValuesAndSetsDoublePrecision) {
  testkit::TempDir dir;
  auto stands = MakeStands(dir / "stands.gpkg", 26910, ThreeStands());
  auto points = MakePoints(dir / "shp", "plots", 26910, {Field{"Age", "", FieldType::String, 8}}, FivePlots());
  testkit::FakeApplication app;
  auto result = ImportStandIDValues(app, nullptr, Parameters(stands, points, {"Age", "Area"}));
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  EXPECT_EQ(result.addedFields, (std::vector<std::string>{"StandID", "Age1", "Area"}));
  const auto area = FieldOf(*points, "Area");
  EXPECT_EQ(area.type, FieldType::Double);
  EXPECT_EQ(area.precision, 12);
  EXPECT_EQ(area.scale, 6);
  // The empty text written for the point outside all stands reads back from the dBASE file as Null.
  EXPECT_EQ(Column(*points, "StandID"), (std::vector<Value>{T("A-1"), T("A-1"), T("B-2"), T("C-3"), Value{}}));
  EXPECT_EQ(Column(*points, "Age1"), (std::vector<Value>{I(40), I(40), I(-999), I(7), I(-999)}));
  EXPECT_EQ(Column(*points, "Area"), (std::vector<Value>{Value{1.5}, Value{1.5}, Value{2.25}, Value{-999.0}, Value{-999.0}}));
  // The added double's log line gives its scale and precision.
  EXPECT_EQ(metadata::ReturnMetadataPropertySet(*points).GetProperty("Esri/DataProperties/lineage/Process[2]"),
            "[NOTE: This is not Python or VB Code!][Add Additional Stand Attribute Field to plots:  Field Name = "
            "'Area', Field_Alias = 'Area' & Field_Type = 'esriFieldTypeDouble', Field_Scale = '6', Field_Precision = "
            "'12']");

  // A double Stand ID field cloned into a shapefile keeps its own precision and scale.
  auto shapeStands = MakeStands(dir / "standshp", 26910, ThreeStands());
  auto more = MakePoints(dir / "shp", "more", 26910, {}, {platform::XY{10, 10}});
  auto p = Parameters(shapeStands, more, {});
  p.standIdField = FieldOf(*shapeStands, "Area");
  result = ImportStandIDValues(app, nullptr, p);
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  const auto cloned = FieldOf(*more, "Area");
  EXPECT_EQ(cloned.precision, 10);
  EXPECT_EQ(cloned.scale, 2);
  EXPECT_EQ(Column(*more, "Area"), (std::vector<Value>{Value{1.5}}));
}

TEST(ImportStandIDValues, ExistingPointFieldAndProjectedPoints) {
  testkit::TempDir dir;
  const std::string store = dir / "inventory.gpkg";
  // Stands in NAD 1983 UTM zone 10N, plots in NAD 1983 geographic: the same
  // datum, so the points are projected without a transformation.
  auto stands = MakeStands(store, 26910, {{testkit::Square(500000, 5000000, 1000), {T("North"), I(12), Value{3.0}}}});
  const auto utm = platform::SpatialReference::FromEpsg(26910);
  const auto nad83 = platform::SpatialReference::FromEpsg(4269);
  auto toNad83 = [&](double x, double y) { return platform::Geometry::MakePoint(x, y, utm).Project(nad83).PointXY(); };
  auto points = MakePoints(store, "Plots", 4269, {Field{"Stand", "", FieldType::String, 12}},
                           {toNad83(500010, 5000010), toNad83(500990, 5000500), toNad83(501010, 5000500)});
  testkit::FakeApplication app;
  auto p = Parameters(stands, points, {});
  p.cloneStandIdField = false;
  p.pointStandIdField = FieldOf(*points, "Stand");
  const auto result = ImportStandIDValues(app, nullptr, p);
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  EXPECT_TRUE(result.addedFields.empty());
  EXPECT_EQ(Column(*points, "Stand"), (std::vector<Value>{T("North"), T("North"), Value{}}));
  EXPECT_NE(result.report.find("\\par \\cf1\\b Point ID FIeld: \\b0  \\cf0 Stand\r\n"), std::string::npos);
  EXPECT_NE(result.report.find("Point Coordinate System:\\cf0  \\b0  GCS_North_American_1983\r\n"), std::string::npos);
  // No attributes and no transformation read "<-None->", in the report and in the metadata.
  EXPECT_NE(result.report.find("Additional Stand Attributes:\\cf0\\b0 \r\n\\par \\tab <-None->\r\n"),
            std::string::npos);
  EXPECT_NE(result.report.find("\\par \\cf1\\b Geographic Transformation:\\b0  \\cf0  <-None->\r\n"
                               "\\par \\cf1\\b Transformation Direction: \\cf0\\b0  <-None->\\fs20 \r\n"),
            std::string::npos);
  const auto document = metadata::ReturnMetadataPropertySet(*points);
  EXPECT_EQ(document.GetProperty("dqInfo/dataLineage/prcStep[0]/stepDesc"),
            "Imported Stand ID values from Stand Polygon Layer 'Stand Layer' to Plot Point Layer 'Plot Layer'. Stand "
            "Layer is located at '" + store + "/Stands'. Plot Layer is located at '" + store + "/Plots'. ");
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[0]"),
            "[NOTE: This is not Python or VB Code!][Import Stand IDs to Point Feature Class: Stand_Layer = 'Stand "
            "Layer', Stand_ID_Field = 'StandID', Additional Stand Fields to Import = <-None->, Point_Layer = 'Plot "
            "Layer', Point_Stand_ID_Field = 'Stand', Stand_Layer_Spatial_Reference = 'NAD_1983_UTM_Zone_10N', "
            "Point_Layer_Spatial_Reference = 'GCS_North_American_1983', Geographic_Transformation = <-None->, "
            "Transformation_Direction = <-None->]");
}

TEST(ImportStandIDValues, ReportReadsLineForLineAndLineageIsWritten) {
  testkit::TempDir dir;
  const std::string store = dir / "inventory.gpkg";
  auto stands = MakeStands(store, 26910, ThreeStands());
  auto points = MakePoints(store, "Plots", 26910, {}, FivePlots());
  testkit::FakeApplication app;
  auto p = Parameters(stands, points, {"Age"});
  p.transformation = platform::GeoTransformation{"NAD_1927_To_NAD_1983_NADCON", 1241};
  p.direction = platform::TransformDirection::Reverse;  // same code on both sides: never applied
  const auto result = ImportStandIDValues(app, nullptr, p);
  ASSERT_TRUE(result.Succeeded()) << result.errorText;

  // The report up to the time of the run, and its end.
  const std::string timeLines = R"(\par \i \b\fs8 Analysis Began:)";
  ASSERT_NE(result.report.find(timeLines), std::string::npos);
  testkit::ExpectGolden(result.report.substr(0, result.report.find(timeLines)), "import_stand_ids_head.rtf");
  EXPECT_THAT(result.report, EndsWith("\\i0\\fs20 \r\n\\par \\pard\\f1\\fs17 \r\n\\par }\r\n \r\n"));

  // The metadata: one process step, then one lineage record per log line.
  const auto document = metadata::ReturnMetadataPropertySet(*points);
  EXPECT_EQ(document.GetProperty("dqInfo/dataLineage/prcStep[0]/stepDesc"),
            "Imported Stand ID values and additional stand attributes from Stand Polygon Layer 'Stand Layer' to "
            "Plot Point Layer 'Plot Layer'. Stand Layer is located at '" + store + "/Stands'. Plot Layer is located at '" +
                store + "/Plots'. ");
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[0]"),
            "[NOTE: This is not Python or VB Code!][Add Stand ID Field to Plots:  Field Name = 'StandID', Field_Alias = "
            "'StandID' & Field_Type = 'esriFieldTypeString', Field_Length = '10']");
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[1]"),
            "[NOTE: This is not Python or VB Code!][Add Additional Stand Attribute Field to Plots:  Field Name = 'Age', "
            "Field_Alias = 'Age' & Field_Type = 'esriFieldTypeInteger']");
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[2]"),
            "[NOTE: This is not Python or VB Code!][Import Stand IDs to Point Feature Class: Stand_Layer = 'Stand Layer', "
            "Stand_ID_Field = 'StandID', Additional Stand Fields to Import = <Age>, Point_Layer = 'Plot Layer', "
            "Point_Stand_ID_Field = 'StandID', Stand_Layer_Spatial_Reference = 'NAD_1983_UTM_Zone_10N', "
            "Point_Layer_Spatial_Reference = 'NAD_1983_UTM_Zone_10N', Geographic_Transformation = "
            "'NAD_1927_To_NAD_1983_NADCON', Transformation_Direction = 'REVERSE']");
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[2]/@Name"), "ImportStandIDValues");
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[2]/@ToolSource")
                .rfind("Import Stand ID tool in Tarnwick Extension 'Tarnwick Tools' [", 0),
            0u);
  EXPECT_EQ(document.GetProperty("Esri/DataProperties/lineage/Process[3]"), "");
}

TEST(ImportStandIDValues, FailuresNameTheAddedFieldsAndRollThemBack) {
  testkit::TempDir dir;
  const std::string store = dir / "inventory.gpkg";
  auto stands = MakeStands(store, 26910, ThreeStands());
  testkit::FakeApplication app;

  // A point without geometry: the fields are in place already.
  auto points = MakePoints(store, "Plots", 26910, {}, {platform::XY{10, 10}, std::nullopt});
  auto result = ImportStandIDValues(app, nullptr, Parameters(stands, points, {"Age"}));
  EXPECT_FALSE(result.Succeeded());
  EXPECT_EQ(result.addedFields, (std::vector<std::string>{"StandID", "Age"}));
  EXPECT_NE(result.errorText.find("ImportStandIDValues"), std::string::npos);
  EXPECT_NE(result.errorText.find("Point feature 2 of 'Plots' has no geometry."), std::string::npos);
  if (!result.errorLogPath.empty()) std::filesystem::remove(result.errorLogPath);

  // Cloning into a GeoPackage class that has a field of that name: the name is not checked, the addition fails.
  auto taken = MakePoints(store, "Taken", 26910, {Field{"StandID", "", FieldType::String, 5}}, {platform::XY{10, 10}});
  result = ImportStandIDValues(app, nullptr, Parameters(stands, taken, {}));
  EXPECT_FALSE(result.Succeeded());
  EXPECT_TRUE(result.addedFields.empty());
  if (!result.errorLogPath.empty()) std::filesystem::remove(result.errorLogPath);

  // The fields were added inside the run's transaction, which rolled back.
  // (GDAL keeps the rolled-back fields in the open package's layer, so the
  // package is read anew once every handle on it has gone.)
  points.reset();
  taken.reset();
  stands.reset();
  EXPECT_LT(platform::Workspace::Open(store)->OpenFeatureClass("Plots")->FindField("Age"), 0);
}

// A stand whose polygon crosses itself is tested against its repaired shape,
// and the report says so.
TEST(ImportStandIDValues, InvalidStandIsRepairedForTheTest) {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  auto bowtie = MakeStands(dir / "bad.gpkg", 26910, {{"POLYGON((0 0,10 10,10 0,0 10,0 0))", {T("X"), I(1)}}});
  auto plain = MakePoints(dir / "bad.gpkg", "Plots", 26910, {}, {platform::XY{1, 5}, platform::XY{5, 1}});
  const auto result = ImportStandIDValues(app, nullptr, Parameters(bowtie, plain, {}));
  ASSERT_TRUE(result.Succeeded()) << result.errorText;
  EXPECT_EQ(result.pointsInStands, 1);
  EXPECT_NE(result.report.find(R"(\par \tab Stand X (OID 1): its polygon is not valid)"), std::string::npos);
}

}  // namespace
}  // namespace tarnwick
