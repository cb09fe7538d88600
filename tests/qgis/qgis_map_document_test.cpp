// The map document on a QGIS project: the tools see the file layers in
// table-of-contents order with their selections, never a memory layer, and a
// layer whose file is gone as invalid; a run adds its layer and its markers.
// And a run's progress on QGIS's status bar.
#include <gtest/gtest.h>

#include <QFile>

#include <qgslayertree.h>
#include <qgsvertexmarker.h>

#include "desktop_fixture.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::desktop::testing {
namespace {

// Plot points numbered 1..count (field PlotID) at (i, 2i), in UTM zone 10N.
void WritePlotPoints(const std::string& store, const std::string& name, int count) {
  std::vector<testkit::Row> rows;
  for (int i = 1; i <= count; ++i) rows.push_back({testkit::PointWkt(i, 2 * i), {std::int64_t{i}}});
  const platform::Field plotId{"PlotID", "", platform::FieldType::Integer};
  const auto utm10 = platform::SpatialReference::FromEpsg(26910);
  testkit::MakeClass(store, testkit::ClassSpec(name, platform::GeometryType::Point, utm10, {plotId}), rows);
}

QgsVectorLayer* AddLayer(QgsProject& project, const std::string& source, const QString& name,
                         const QString& provider = "ogr") {
  auto* layer = new QgsVectorLayer(QString::fromStdString(source), name, provider);
  project.addMapLayer(layer);
  return layer;
}

TEST(QgisMapDocument, OffersFileLayersInTreeOrderWithTheirSelectionsAndAddsLayersMarkersAndProgress) {
  testkit::TempDir dir;
  WritePlotPoints(dir / "forest.gpkg", "Plots", 5);
  WritePlotPoints(dir / "forest.gpkg", "Cruise", 3);
  WritePlotPoints(dir / "shp", "plots", 4);
  WritePlotPoints(dir / "gone.gpkg", "Old", 1);
  MiniDesktop desktop;
  DesktopSession session(desktop.Windows());
  QgsProject& project = *desktop.project;
  AddLayer(project, dir / "gone.gpkg|layername=Old", "Old plots");
  AddLayer(project, "Point?crs=EPSG:26910", "Scratch", "memory");
  QgsVectorLayer* shapefile = AddLayer(project, dir / "shp/plots.shp", "Shapefile plots");
  QgsVectorLayer* plots = AddLayer(project, dir / "forest.gpkg|layername=Plots", "Plots");
  AddLayer(project, dir / "forest.gpkg|layername=Cruise", "Cruise");
  QFile::remove(QString::fromStdString(dir / "gone.gpkg"));

  // QGIS's feature IDs of a GDAL layer are the platform's object IDs.
  plots->selectByExpression("\"PlotID\" IN (2, 4)");
  shapefile->selectByExpression("\"PlotID\" = 3");

  auto layers = session.Document().FocusMap().Layers();
  std::vector<std::string> names;
  for (const auto& layer : layers) names.push_back(layer.name);
  // New layers go to the top of the tree; the memory layer is not offered.
  EXPECT_EQ(names, (std::vector<std::string>{"Cruise", "Plots", "Shapefile plots", "Old plots"}));
  EXPECT_FALSE(layers[3].valid);
  EXPECT_EQ(layers[3].featureClass, nullptr);
  const std::vector<std::pair<std::size_t, std::vector<std::int64_t>>> selections{{1, {2, 4}}, {2, {3}}};
  for (const auto& [index, expected] : selections) {
    const auto& layer = layers[index];
    ASSERT_TRUE(layer.valid);
    std::vector<std::int64_t> ids;
    auto cursor = layer.featureClass->SearchOids(layer.selection);
    while (auto feature = cursor->NextFeature()) {
      ids.push_back(std::get<std::int64_t>(feature->values[layer.featureClass->FindField("PlotID")]));
    }
    EXPECT_EQ(ids, expected) << layer.name;
  }

  desktop.layerTree->setCurrentLayer(plots);
  const auto selected = session.Document().SelectedLayers();
  ASSERT_EQ(selected.size(), 1u);
  EXPECT_EQ(selected[0].name, "Plots");

  // A run's new class joins the map at the top of the tree.
  QgisMap& map = session.Document().FocusMap();
  desktop.canvas->setDestinationCrs(QgsCoordinateReferenceSystem("EPSG:26910"));
  EXPECT_EQ(map.GetSpatialReference().FactoryCode(), 26910);
  WritePlotPoints(dir / "out.gpkg", "NewPlots", 2);
  map.AddLayer(platform::OpenFeatureLayer(dir / "out.gpkg|layername=NewPlots"));
  const auto added = desktop.project->layerTreeRoot()->findLayers().at(0)->layer();
  EXPECT_EQ(added->name(), "NewPlots");
  EXPECT_TRUE(added->isValid());
  EXPECT_EQ(desktop.project->count(), 6);

  map.AddGraphic({"Anchor", 500000, 4800000, 12, {255, 0, 0}});
  map.AddGraphic({"Other", 1, 2});
  map.DeleteGraphicsByName("ANCHOR");
  EXPECT_EQ(map.GraphicNames(), std::vector<std::string>{"Other"});
  ASSERT_EQ(map.Markers().Markers().size(), 1u);
  EXPECT_EQ(desktop.canvas->scene()->items().count(const_cast<QgsVertexMarker*>(map.Markers().Markers()[0])), 1);

  // A run's progress: its message and its steps on QGIS's status bar.
  auto& bar = dynamic_cast<QgisStatusBar&>(session.Application().GetStatusBar());
  bar.ShowProgressBar("Generating plots...", 0, 10, 2, true);
  bar.Step();
  bar.Step();
  EXPECT_EQ(bar.ProgressBar()->value(), 4);
  EXPECT_TRUE(bar.ProgressBar()->isVisibleTo(desktop.window.get()));
  EXPECT_EQ(bar.Message(), "Generating plots...");
  bar.SetPosition(99);  // held at the end
  EXPECT_EQ(bar.ProgressBar()->value(), 10);
  bar.HideProgressBar();
  EXPECT_FALSE(bar.ProgressBar()->isVisibleTo(desktop.window.get()));
  EXPECT_EQ(bar.Message(), "");
}

}  // namespace
}  // namespace tarnwick::desktop::testing
