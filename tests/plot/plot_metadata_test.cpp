// What a run leaves in its output's metadata, and repair of invalid stands.
#include <gtest/gtest.h>

#include "platform/host/memory_map_document.h"
#include "metadata/document_io.h"
#include "platform/host/map_document.h"
#include "plot/plot_run.h"
#include "plot_fixtures.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using namespace plotfix;

class PlotRunRecords : public ::testing::Test {
 protected:
  PlotRunRecords() : document((dir.path() / "forest.qgs").string(), "forest") {}

  PlotLayoutParameters Grid(const platform::FeatureLayer& stands) {
    PlotLayoutParameters p;
    p.stands = StandsOf(stands);
    p.units = "Meters";
    p.spacing = ManualSpacing{30, 30};
    return p;
  }

  std::string MetadataOf(platform::FeatureClass& featureClass) {
    bool booError = false;
    const std::string xml = metadata::ReturnMetadataXMLStringFromDataset(featureClass, booError);
    EXPECT_FALSE(booError);
    return xml;
  }

  testkit::TempDir dir;
  testkit::FakeApplication app;
  platform::host::MemoryMapDocument document;
  const platform::SpatialReference utm = platform::SpatialReference::FromEpsg(26910);
};

TEST_F(PlotRunRecords, NewClassGetsAbstractHistoryAndFieldDescriptionsAnExistingOneOnlyHistory) {
  const auto stands = MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}});
  PlotLayoutParameters p = Grid(stands);
  const std::string store = dir / "plots.gpkg";
  p.output = NewPlotClass{store + "/Plots", store, "Plots"};
  PlotLayoutResult result = GeneratePlotLayout(app, document, p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  std::string xml = MetadataOf(*result.outputClass);
  for (const char* text : {"This feature class contains an array of plot locations distributed over stand polygons "
                           "from 'Stands'.",
                           "Generated an array of plots over stands from 'Stands'",
                           "NOTE:  This is not Python or VB Code!", "GeneratePlotLayout", "Plot ID Value of this point.",
                           "ID Value of stand that contains this plot point, extracted from Attribute Field [StandID] "
                           "in feature class 'Stands'.",
                           "Tarnwick, LLC"}) {
    EXPECT_NE(xml.find(text), std::string::npos) << text;
  }

  // An existing class that has its stand field gets the history only.
  auto existingClass = testkit::MakeClass(
      store, testkit::ClassSpec("Existing", platform::GeometryType::Point, utm,
                                {Field{"PlotID", "", FieldType::Integer}, Field{"StandID", "", FieldType::String, 12}}));
  p.output = ExistingLayer("Existing", existingClass, "PlotID");
  result = GeneratePlotLayout(app, document, p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  xml = MetadataOf(*existingClass);
  EXPECT_NE(xml.find("NOTE:  This is not Python or VB Code!"), std::string::npos);
  EXPECT_EQ(xml.find("ID Value of stand that contains this plot point"), std::string::npos);
  EXPECT_EQ(xml.find("This feature class contains an array of plot locations"), std::string::npos);
}

TEST_F(PlotRunRecords, SelfIntersectingStandIsRepairedBeforeTheGrid) {
  // A bow tie: two 100 m triangles meeting at (500050, 4000050).
  const auto stands = MakeStands(
      dir / "stands.gpkg", utm,
      {{"POLYGON((500000 4000000,500100 4000100,500100 4000000,500000 4000100,500000 4000000))", "Bow"}});
  PlotLayoutParameters p = Grid(stands);
  p.spacing = ManualSpacing{10, 10};
  const std::string store = dir / "plots.gpkg";
  p.output = NewPlotClass{store + "/Plots", store, "Plots"};
  const PlotLayoutResult result = GeneratePlotLayout(app, document, p);
  ASSERT_TRUE(result.succeeded) << result.failureReport;
  // Both triangles hold plots: points left and right of the crossing.
  bool west = false, east = false;
  for (const auto& plot : ReadAll(*result.outputClass)) {
    const platform::XY xy = plot.shape.PointXY();
    west = west || xy.x < 500040;
    east = east || xy.x > 500060;
    EXPECT_LE(std::abs(xy.y - 4000050), std::abs(xy.x - 500050) + 1e-6);  // inside the bow tie
  }
  EXPECT_TRUE(west);
  EXPECT_TRUE(east);
  EXPECT_GT(result.plotsWritten, 40);
}

}  // namespace
}  // namespace tarnwick
