// The Plot Layout dialog in QGIS over the sample forest: opened from the
// toolbar, filled in by its controls' names, run from OK into the project,
// the anchor tool on the canvas, and a layer gone before OK.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <map>

#include <qgsmaptoolpan.h>
#include <qgssinglesymbolrenderer.h>
#include <qgssymbol.h>
#include <qgsvertexmarker.h>

#include "desktop_fixture.h"
#include "shell/extension.h"
#include "testkit/run_command.h"
#include "toolbar/anchor_map_tool.h"
#include "toolbar/tarnwick_toolbar.h"
#include "views/plot_layout_view.h"
#include "views/report_window.h"

namespace tarnwick::desktop::testing {
namespace {

constexpr const char* kAnchorTool = "Tarnwick.clsSelPointTool";

class PlotLayoutViewTest : public ::testing::Test {
 protected:
  PlotLayoutViewTest() {
    const auto made = testkit::RunCommand(dir, TARNWICK_MAKE_SAMPLE_DATA, "data");
    EXPECT_EQ(made.exitCode, 0) << made.err;
    for (const char* name : {"Plots", "Stands"}) {
      desktop.project->addMapLayer(
          new QgsVectorLayer(QString::fromStdString(dir / "data/forest.gpkg") + "|layername=" + name, name, "ogr"));
    }
    stands = desktop.project->mapLayersByName("Stands").at(0);
    desktop.canvas->setDestinationCrs(stands->crs());
    desktop.canvas->setLayers(desktop.project->mapLayers().values());
    desktop.window->show();
    desktop.canvas->setExtent(stands->extent());
    session = std::make_unique<DesktopSession>(desktop.Windows());
  }

  PlotLayoutView& Open() {
    session->Toolbar().Action("Tarnwick.clsPlotLayout")->trigger();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<PlotLayoutView*>(window); found && found->isVisible()) view = found;
    }
    EXPECT_NE(view, nullptr);
    QApplication::setActiveWindow(view);
    return *view;
  }
  template <class W>
  W* Widget(const char* name) {
    W* widget = view->findChild<W*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  // The user picks an entry of a drop-down list ...
  void Choose(const char* combo, const QString& entry) {
    QComboBox* box = Widget<QComboBox>(combo);
    const int index = box->findText(entry);
    ASSERT_GE(index, 0) << combo << ": " << entry.toStdString();
    box->setCurrentIndex(index);
    emit box->activated(index);
  }
  // ... and types over a text box.
  void Type(const char* box, const std::string& text) {
    QLineEdit* edit = Widget<QLineEdit>(box);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromStdString(text));
    EXPECT_EQ(edit->text().toStdString(), text) << box;
  }
  // Plots per stand with a 1:2 ratio, turned 30 degrees, 33 feet inside.
  void ChooseCountRun(const std::string& output) {
    Choose("cbxUnits", "Feet");
    Choose("cbxPlotsOption", "Enter # Plots per Polygon");
    Type("txtNumPlots", "5");
    Choose("cbxSpacingRatioOptions", "1:2 (Rectangular pattern)");
    Type("txtGridOrientation", "30");
    Type("txtBuffer", "33");
    Choose("cbxBufferUnits", "Feet");
    Type("txtOutput", output);
  }

  testkit::TempDir dir;
  MiniDesktop desktop;
  QgsMapLayer* stands = nullptr;
  std::unique_ptr<DesktopSession> session;
  QPointer<PlotLayoutView> view;
};

// Plot ID to point of every plot in a class.
std::map<std::string, platform::XY> PlotsOf(const std::string& store) {
  auto plots = platform::Workspace::Open(store)->OpenFeatureClass("Plots");
  const int plotId = plots->FindField("PlotID");
  std::map<std::string, platform::XY> points;
  auto cursor = plots->Search();
  while (auto plot = cursor->NextFeature()) {
    points[std::get<std::string>(plot->values[static_cast<std::size_t>(plotId)])] = plot->shape.PointXY();
  }
  return points;
}

// The lines of a report from its notes to its end of analysis.
QString NotesOf(const QString& report) {
  const auto from = report.indexOf("Notes on Analysis:");
  return report.mid(from, report.indexOf("Analysis Parameters also saved") - from).trimmed();
}

TEST_F(PlotLayoutViewTest, RunsFromTheToolbarIntoTheProjectAsTheCommandLineDoes) {
  platform::Workspace::OpenOrCreate(dir / "dialog.gpkg");
  Open();
  EXPECT_EQ(view->windowTitle(), " Plot Layout Parameters:");
  EXPECT_TRUE(view->windowFlags().testFlag(Qt::Tool));
  EXPECT_FALSE(view->isModal());
  EXPECT_EQ(view->width(), 516);
  EXPECT_EQ(Widget<QListWidget>("lbxPolygons")->currentItem()->text(), "Stands");
  EXPECT_EQ(Widget<QListWidget>("lbxStandFields")->currentItem()->text(), "StandID");
  QPushButton* ok = Widget<QPushButton>("cmdOK");
  EXPECT_FALSE(ok->isEnabled());  // no number of plots yet
  ChooseCountRun(dir / "dialog.gpkg/Plots");
  ASSERT_TRUE(ok->isEnabled());
  // The run counts its stands on QGIS's status bar.
  const QProgressBar* progress = dynamic_cast<QgisStatusBar&>(session->Application().GetStatusBar()).ProgressBar();
  int shown = -1;
  QObject::connect(progress, &QProgressBar::valueChanged, [&](int value) { shown = std::max(shown, value); });
  QTest::mouseClick(ok, Qt::LeftButton);
  EXPECT_EQ(shown, progress->maximum());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(view.isNull());  // closed after its run

  // The new layer, styled, over the sample forest's.
  QgsVectorLayer* added = nullptr;
  for (QgsMapLayer* layer : desktop.project->mapLayers()) {
    if (layer->source().contains("dialog.gpkg")) added = qobject_cast<QgsVectorLayer*>(layer);
  }
  ASSERT_NE(added, nullptr);
  const auto* renderer = dynamic_cast<const QgsSingleSymbolRenderer*>(added->renderer());
  ASSERT_NE(renderer, nullptr);
  EXPECT_EQ(renderer->symbol()->color(), QColor(198, 40, 40));

  const auto cli = testkit::RunCommand(dir, TARNWICK_EXE,
                                       "plot-layout --stands 'data/forest.gpkg|layername=Stands' --stand-id StandID "
                                       "--units feet --plots 5 --ratio 1:2 --orientation 30 --buffer 33 "
                                       "--buffer-units feet --start 1 --out cli.gpkg/Plots");
  ASSERT_EQ(cli.exitCode, 0) << cli.err;
  const auto fromDialog = PlotsOf(dir / "dialog.gpkg");
  const auto fromCli = PlotsOf(dir / "cli.gpkg");
  ASSERT_EQ(fromDialog.size(), 60u);
  ASSERT_EQ(fromDialog.size(), fromCli.size());
  for (const auto& [id, point] : fromCli) {
    ASSERT_EQ(fromDialog.count(id), 1u) << id;
    EXPECT_NEAR(fromDialog.at(id).x, point.x, 1e-6) << id;
    EXPECT_NEAR(fromDialog.at(id).y, point.y, 1e-6) << id;
  }

  // The report beside the map, with the run's notes.
  ReportWindow* report = nullptr;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* found = qobject_cast<ReportWindow*>(window); found && found->isVisible()) report = found;
  }
  ASSERT_NE(report, nullptr);
  EXPECT_EQ(report->windowTitle(), "Analysis Complete:");
  EXPECT_FALSE(report->isModal());
  const QString notes = NotesOf(QString::fromStdString(report->Model().Text()));
  EXPECT_TRUE(notes.contains("Stand 'A10': Plot Count = 5")) << notes.toStdString();
  EXPECT_EQ(notes, NotesOf(QString::fromStdString(cli.out)));
  report->close();
}

TEST_F(PlotLayoutViewTest, TheAnchorToolWritesTheReleasePointAndMarksThePressPoint) {
  Open();
  QAction* toolButton = session->Toolbar().Action(kAnchorTool);
  Widget<QCheckBox>("chkApplyAnchor")->click();
  Choose("cbxAnchorOption", "Select Point by Clicking on Screen");
  EXPECT_FALSE(toolButton->isEnabled());

  // The dialog's toggle turns the tool on, and the toolbar's button with it.
  QTest::mouseClick(Widget<QLabel>("imgButtonUp"), Qt::LeftButton);
  EXPECT_TRUE(Widget<QLabel>("imgButtonDown")->isVisible());
  EXPECT_FALSE(Widget<QLabel>("imgButtonUp")->isVisible());
  EXPECT_TRUE(toolButton->isEnabled());
  EXPECT_TRUE(toolButton->isChecked());
  ASSERT_NE(dynamic_cast<AnchorMapTool*>(desktop.canvas->mapTool()), nullptr);

  QWidget* viewport = desktop.canvas->viewport();
  const QPoint press(200, 150), drag(260, 200), release(300, 240);
  QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, press);
  QMouseEvent move(QEvent::MouseMove, drag, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(viewport, &move);
  QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, release);

  const auto* toMap = desktop.canvas->getCoordinateTransform();
  const QgsPointXY released = toMap->toMapCoordinates(release);
  EXPECT_EQ(Widget<QLineEdit>("txtAnchorX")->text(), QString::number(released.x(), 'f', 3));
  EXPECT_EQ(Widget<QLineEdit>("txtAnchorY")->text(), QString::number(released.y(), 'f', 3));
  const auto markers = session->Document().FocusMap().Markers().Markers();
  ASSERT_EQ(markers.size(), 1u);
  const QgsPointXY pressed = toMap->toMapCoordinates(press);
  EXPECT_NEAR(markers[0]->center().x(), pressed.x(), 1e-6);
  EXPECT_NEAR(markers[0]->center().y(), pressed.y(), 1e-6);

  // Another map tool releases the toggle and greys the toolbar's button.
  QgsMapToolPan pan(desktop.canvas);
  desktop.canvas->setMapTool(&pan);
  EXPECT_TRUE(Widget<QLabel>("imgButtonUp")->isVisible());
  EXPECT_FALSE(toolButton->isEnabled());
  EXPECT_FALSE(toolButton->isChecked());
  desktop.canvas->unsetMapTool(&pan);
}

TEST_F(PlotLayoutViewTest, AStandLayerRemovedWhileTheDialogIsOpenIsCaughtAtOK) {
  Open();
  ChooseCountRun(dir / "Plots.shp");
  desktop.project->removeMapLayer(stands);
  ModalWatcher watcher;
  QTest::mouseClick(Widget<QPushButton>("cmdOK"), Qt::LeftButton);
  ASSERT_EQ(watcher.shown.size(), 1);
  EXPECT_EQ(watcher.shown[0],
            "Layer No Longer Available!\n\nThe layer 'Stands' has been removed from the map, or its data can no "
            "longer be read.  Please choose another layer...");
  EXPECT_TRUE(view->isVisible());
  EXPECT_EQ(Widget<QListWidget>("lbxPolygons")->palette().color(QPalette::Base), QColor(255, 255, 0));
  EXPECT_EQ(desktop.project->count(), 1);  // nothing ran
}

}  // namespace
}  // namespace tarnwick::desktop::testing
