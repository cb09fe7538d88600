// The tool dialogs in QGIS over the sample forest: opened from the toolbar
// (or the menu), filled in by their controls' names, OK pressed, and what
// they did checked on disk, in the report window and in the project against
// what the command line does with the same choices.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QTimer>
#include <filesystem>
#include <map>

#include <qgsmaptoolpan.h>
#include <qgssinglesymbolrenderer.h>
#include <qgssymbol.h>
#include <qgsvertexmarker.h>

#include "desktop_fixture.h"
#include "shell/extension.h"
#include "testkit/dataset_snapshot.h"
#include "testkit/layers.h"
#include "testkit/run_command.h"
#include "toolbar/anchor_map_tool.h"
#include "toolbar/tarnwick_toolbar.h"
#include "transforms/transform_candidates.h"
#include "transforms/transform_checks.h"
#include "ui_frmReportDialog.h"
#include "views/plot_layout_view.h"
#include "views/report_window.h"

namespace tarnwick::desktop::testing {
namespace {

// The sample forest's layers in a shown map, and a watcher that gives each
// modal dialog the test's next step when it is in front and idle (without
// one left it closes the dialog) and reads the report windows.
class ToolViewsTest : public ::testing::Test {
 protected:
  ToolViewsTest() {
    MakeSample("data");
    for (const char* name : {"StandsNAD27", "Plots", "Stands"}) {
      desktop.project->addMapLayer(new QgsVectorLayer(Source("data", name), name, "ogr"));
    }
    stands = desktop.project->mapLayersByName("Stands").at(0);
    desktop.canvas->setDestinationCrs(stands->crs());
    desktop.canvas->setLayers(desktop.project->mapLayers().values());
    desktop.window->show();
    desktop.canvas->setExtent(stands->extent());
    session = std::make_unique<DesktopSession>(desktop.Windows());
    desktop.project->setDirty(false);  // so that a run's change shows
    watcher.handle = [this](QWidget* modal) {
      if (auto* report = qobject_cast<ReportWindow*>(modal)) {
        reports << report->Form().txtReport->toPlainText();
        return false;
      }
      auto steps = answers.find(modal->objectName());
      if (steps == answers.end()) return false;
      if (pressing) return true;
      if (steps->second.empty()) return false;
      const auto step = steps->second.front();
      steps->second.erase(steps->second.begin());
      answered << modal->objectName();
      step(*modal);
      return true;
    };
  }

  // The sample forest in a folder of the test's, for a run of its own.
  void MakeSample(const char* folder) {
    const auto made = testkit::RunCommand(dir, TARNWICK_MAKE_SAMPLE_DATA, folder);
    ASSERT_EQ(made.exitCode, 0) << made.err;
  }
  QString Source(const char* folder, const char* name) const {
    return QString::fromStdString(dir / folder) + "/forest.gpkg|layername=" + name;
  }
  testkit::CommandRun Cli(const std::string& arguments) {
    auto run = testkit::RunCommand(dir, TARNWICK_EXE, arguments);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    return run;
  }
  void Trigger(const char* progId) { session->Toolbar().Action(progId)->trigger(); }
  // Pressed once the step has returned, as the press may open windows of
  // its own (and a run lets the watcher in while it goes on).
  void Press(QWidget& form, const char* button) {
    QTimer::singleShot(0, form.findChild<QPushButton*>(button), [this, &form, button] {
      pressing = true;
      form.findChild<QPushButton*>(button)->click();
      pressing = false;
    });
  }
  std::string Shown() const { return watcher.shown.join("\n").toStdString(); }

  // The Plot Layout dialog, opened beside the map from the toolbar.
  PlotLayoutView& OpenPlotLayout() {
    Trigger("Tarnwick.clsPlotLayout");
    view = Visible<PlotLayoutView>();
    if (!view) throw std::runtime_error("no Plot Layout dialog");
    QApplication::setActiveWindow(view);
    return *view;
  }
  template <class W>
  static W* Visible() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<W*>(window); found && found->isVisible()) return found;
    }
    return nullptr;
  }
  // Plots per stand with a 1:2 ratio, turned 30 degrees, 33 feet inside.
  void ChooseCountRun(const std::string& output) {
    Choose(*view, "cbxUnits", "Feet");
    Choose(*view, "cbxPlotsOption", "Enter # Plots per Polygon");
    Type(*view, "txtNumPlots", "5");
    Choose(*view, "cbxSpacingRatioOptions", "1:2 (Rectangular pattern)");
    Type(*view, "txtGridOrientation", "30");
    Type(*view, "txtBuffer", "33");
    Choose(*view, "cbxBufferUnits", "Feet");
    Type(*view, "txtOutput", output);
  }

  testkit::TempDir dir;
  MiniDesktop desktop;
  QgsMapLayer* stands = nullptr;
  std::unique_ptr<DesktopSession> session;
  ModalWatcher watcher;
  std::map<QString, std::vector<std::function<void(QWidget&)>>> answers;  // steps by the form's name
  bool pressing = false;
  QStringList answered;
  QStringList reports;
  QPointer<PlotLayoutView> view;
};

// Opened again, the plots leave the map before OK: refused, and the user
// gives up after the refusal's box.
TEST_F(ToolViewsTest, ImportStandIDsWritesWhatTheCommandLineWritesAndCatchesALayerRemovedAtOk) {
  MakeSample("cli");
  answers["frmTransferStandIDs"] = {
      [this](QWidget& form) {
        EXPECT_TRUE(form.windowFlags() & Qt::WindowStaysOnTopHint);
        // Stands, StandID and the plots' cloned field are the defaults.
        EXPECT_EQ(Widget<QComboBox>(form, "cbxStandID").currentText(), "StandID");
        EXPECT_EQ(Widget<QComboBox>(form, "cbxExistingIDField").currentText(), "<-- Clone Polygon Field -->");
        const auto age = Widget<QListWidget>(form, "lbxFields").findItems("Age", Qt::MatchExactly);
        ASSERT_EQ(age.size(), 1);
        age[0]->setSelected(true);
        Press(form, "cmdOK");
      },
      [this](QWidget& form) {
        desktop.project->removeMapLayer(desktop.project->mapLayersByName("Plots").at(0));
        Press(form, "cmdOK");
      },
      [this](QWidget& form) {
        EXPECT_EQ(Widget<QComboBox>(form, "cbxExistingPointLayer").palette().color(QPalette::Base), QColor(Qt::yellow));
        Press(form, "cmdCancel");
      }};
  Trigger("Tarnwick.clsTransferStandIDs");
  ASSERT_EQ(reports.size(), 1) << Shown();
  EXPECT_TRUE(reports[0].contains("Import Complete")) << reports[0].toStdString();
  // The sample's K20 crosses itself: the run goes on and says so.
  EXPECT_TRUE(reports[0].contains("Stand K20 (OID 10): its polygon is not valid")) << reports[0].toStdString();
  EXPECT_TRUE(desktop.project->isDirty());

  Cli("import-stand-ids --stands 'cli/forest.gpkg|layername=Stands' --stand-id StandID "
      "--attributes Age --points 'cli/forest.gpkg|layername=Plots' --clone");
  EXPECT_EQ(testkit::Snapshot(Source("data", "Plots").toStdString()),
            testkit::Snapshot(Source("cli", "Plots").toStdString()));
  for (const char* field : {"StandID", "Age"}) {
    const auto written = testkit::Column(Source("data", "Plots").toStdString(), field);
    EXPECT_GT(std::count_if(written.begin(), written.end(), [](const auto& v) { return v.index() != 0; }), 30);
  }

  Trigger("Tarnwick.clsTransferStandIDs");
  EXPECT_TRUE(watcher.shown.contains("The layer 'Plots' is no longer in the map!\n\nPlease select another layer."))
      << Shown();
  EXPECT_EQ(reports.size(), 1);
  EXPECT_FALSE(session->Extension().ShouldContinue);
}

// Also the report window of a modal run: formatted, and copied in both forms.
TEST_F(ToolViewsTest, WaypointConverterWritesTheCommandLinesFileAndRepaintsItsProgress) {
  // Cancelled first: nothing is written, and the project stays clean.
  answers["frmLayerID"] = {[this](QWidget& form) {
    Type(form, "txtOutput", dir / "cancelled.way");
    Press(form, "cmdCancel");
  }};
  Trigger("Tarnwick.cmdTNWKWPConverter");
  EXPECT_EQ(answered, QStringList{"frmLayerID"});
  EXPECT_TRUE(reports.isEmpty());
  EXPECT_FALSE(std::filesystem::exists(dir / "cancelled.way"));
  EXPECT_FALSE(desktop.project->isDirty());

  int progressPaints = 0;
  struct PaintCounter : QObject {
    int* count;
    explicit PaintCounter(int* c) : count(c) {}
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++*count;
      return false;
    }
  } counter(&progressPaints);
  const std::string output = dir / "dialog.way";
  answers["frmLayerID"] = {[&](QWidget& form) {
    auto& progress = Widget<QPlainTextEdit>(form, "txtProgress");
    EXPECT_TRUE(QFontInfo(progress.font()).fixedPitch());
    EXPECT_FALSE(progress.isVisible());
    progress.viewport()->installEventFilter(&counter);
    // PlotID and Elevation are preselected by their names.
    EXPECT_EQ(Widget<QListWidget>(form, "lbxFields").currentItem()->text(), "PlotID");
    EXPECT_EQ(Widget<QListWidget>(form, "lbxElevation").currentItem()->text(), "Elevation");
    // Made larger, the controls follow their anchoring rules.
    const QRect ok = Widget<QPushButton>(form, "cmdOK").geometry();
    const int outputWidth = Widget<QLineEdit>(form, "txtOutput").width();
    form.resize(form.size() + QSize(60, 40));
    EXPECT_EQ(Widget<QPushButton>(form, "cmdOK").geometry(), ok.translated(0, 40));
    EXPECT_EQ(Widget<QLineEdit>(form, "txtOutput").width(), outputWidth + 60);
    Type(form, "txtOutput", output);
    Press(form, "cmdOK");
  }};
  bool inspected = false;
  watcher.inspect = [&](QWidget* modal) {
    auto* window = qobject_cast<ReportWindow*>(modal);
    if (!window) return;
    inspected = true;
    EXPECT_EQ(window->windowTitle(), " Report");
    // "Point layer: " plain, the layer's name after it bold and coloured.
    const QTextDocument* document = window->Form().txtReport->document();
    const QTextCursor label = document->find("Point layer:");
    const QTextCursor name = document->find("Plots", label, QTextDocument::FindCaseSensitively);
    ASSERT_FALSE(label.isNull() || name.isNull());
    EXPECT_EQ(label.charFormat().fontWeight(), QFont::Normal);
    EXPECT_EQ(name.charFormat().fontWeight(), QFont::Bold);
    EXPECT_NE(name.charFormat().foreground().color(), QColor(Qt::black));
    window->Form().cmdCopy->click();
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->data("text/rtf").toStdString(), window->Model().TextRTF());
    EXPECT_EQ(copied->text().toStdString(), window->Model().Text());
  };
  Trigger("Tarnwick.cmdTNWKWPConverter");
  ASSERT_EQ(reports.size(), 1) << Shown();
  EXPECT_TRUE(inspected);
  EXPECT_TRUE(desktop.project->isDirty());
  EXPECT_FALSE(reports[0].contains("Function Failed...")) << reports[0].toStdString();
  // The check's bar was drawn as it moved, not only once at the end.
  EXPECT_GT(progressPaints, 5);

  Cli("waypoints --points 'data/forest.gpkg|layername=Plots' --plot-id PlotID --elevation Elevation --out cli.way");
  const std::string written = testkit::ReadFile(output);
  EXPECT_GT(written.size(), 1000u);
  EXPECT_EQ(written, testkit::ReadFile(dir / "cli.way"));
}

TEST_F(ToolViewsTest, TheChoiceOfTheMenusChooserIsKeptInTheMap) {
  auto& map = session->Document().FocusMap();
  const auto standsLayer = platform::OpenFeatureLayer(Source("data", "Stands").toStdString());
  // The stands and the map, drawn on WGS 1984; not the first candidate,
  // which the tools would take anyway, but one that runs here.
  desktop.canvas->setDestinationCrs(QgsCoordinateReferenceSystem("EPSG:4326"));
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  const auto candidates = FindTransformCandidates(session->Application(), standsLayer, wgs84);
  std::vector<int> runnable;
  for (std::size_t i = 0; i < candidates.ranked.entries.size(); ++i) {
    if (!CheckTransformationRuns(candidates.ranked.entries[i].transformation)) runnable.push_back(static_cast<int>(i));
  }
  ASSERT_FALSE(runnable.empty());
  const int wanted = runnable.size() > 1 ? runnable[1] : runnable[0];
  const platform::GeoTransformation chosen = candidates.ranked.entries[static_cast<std::size_t>(wanted)].transformation;

  answers["TransformationPairDialog"] = {[this](QWidget& form) {
    Choose(form, "cbxLayer1", "Stands");
    Choose(form, "cbxLayer2", "<-- Map Coordinate System -->");
    Press(form, "cmdOK");
  }};
  answers["frmTransform"] = {[this, wanted](QWidget& form) {
    const QString explanation = Widget<QTextEdit>(form, "txtMessage").toPlainText();
    EXPECT_TRUE(explanation.startsWith("Your datasets are in different Geographic Coordinate Systems"))
        << explanation.toStdString();
    EXPECT_TRUE(explanation.contains("Stands is in GCS_North_American_1983"));
    Widget<QListWidget>(form, "lbxTransformations").setCurrentRow(wanted);
    Press(form, "cmdOK");
  }};
  session->Toolbar().Menu()->findChild<QAction*>("TNWK_Geographic_Transformation")->trigger();
  EXPECT_EQ(answered, QStringList({"TransformationPairDialog", "frmTransform"}));
  EXPECT_TRUE(desktop.project->isDirty());

  // The map keeps the choice, both ways, where the tools' sequence looks
  // before it searches. (That the project file carries the map's
  // transformations is the settings test's.)
  ASSERT_EQ(map.Transformations().size(), 2u);
  const platform::GeoTransformation& kept = map.Transformations()[0].transformation;
  EXPECT_EQ(std::make_pair(kept.name, kept.code), std::make_pair(chosen.name, chosen.code));
  // A new project does not inherit it.
  desktop.project->clear();
  EXPECT_TRUE(map.Transformations().empty());
}

// The lines of a report from its notes to its end of analysis.
QString NotesOf(const QString& report) {
  const auto from = report.indexOf("Notes on Analysis:");
  return report.mid(from, report.indexOf("Analysis Parameters also saved") - from).trimmed();
}

TEST_F(ToolViewsTest, PlotLayoutRunsFromTheToolbarIntoTheProjectAsTheCommandLineDoes) {
  platform::Workspace::OpenOrCreate(dir / "dialog.gpkg");
  OpenPlotLayout();
  EXPECT_EQ(view->windowTitle(), " Plot Layout Parameters:");
  EXPECT_TRUE(view->windowFlags().testFlag(Qt::Tool));
  EXPECT_FALSE(view->isModal());
  EXPECT_EQ(view->width(), 516);
  EXPECT_EQ(Widget<QListWidget>(*view, "lbxPolygons").currentItem()->text(), "Stands");
  EXPECT_EQ(Widget<QListWidget>(*view, "lbxStandFields").currentItem()->text(), "StandID");
  auto& ok = Widget<QPushButton>(*view, "cmdOK");
  EXPECT_FALSE(ok.isEnabled());  // no number of plots yet
  ChooseCountRun(dir / "dialog.gpkg/Plots");
  ASSERT_TRUE(ok.isEnabled());
  QTest::mouseClick(&ok, Qt::LeftButton);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(view.isNull());  // closed after its run

  // The new layer, styled, over the sample forest's.
  const auto layers = desktop.project->mapLayers().values();
  const auto added = std::find_if(layers.begin(), layers.end(), [](auto* l) { return l->source().contains("dialog"); });
  ASSERT_NE(added, layers.end());
  const auto* layer = qobject_cast<QgsVectorLayer*>(*added);
  const auto* renderer = dynamic_cast<const QgsSingleSymbolRenderer*>(layer->renderer());
  ASSERT_NE(renderer, nullptr);
  EXPECT_EQ(renderer->symbol()->color(), QColor(198, 40, 40));

  const auto cli = Cli("plot-layout --stands 'data/forest.gpkg|layername=Stands' --stand-id StandID "
                       "--units feet --plots 5 --ratio 1:2 --orientation 30 --buffer 33 "
                       "--buffer-units feet --start 1 --out cli.gpkg/Plots");
  const std::string fromDialog = dir / "dialog.gpkg|layername=Plots";
  EXPECT_EQ(testkit::Column(fromDialog, "PlotID").size(), 60u);
  EXPECT_EQ(testkit::Snapshot(fromDialog), testkit::Snapshot(dir / "cli.gpkg|layername=Plots"));

  // The report beside the map, with the run's notes.
  ReportWindow* report = Visible<ReportWindow>();
  ASSERT_NE(report, nullptr);
  EXPECT_EQ(report->windowTitle(), "Analysis Complete:");
  EXPECT_FALSE(report->isModal());
  const QString notes = NotesOf(QString::fromStdString(report->Model().Text()));
  EXPECT_TRUE(notes.contains("Stand 'A10': Plot Count = 5")) << notes.toStdString();
  EXPECT_EQ(notes, NotesOf(QString::fromStdString(cli.out)));
  report->close();
}

TEST_F(ToolViewsTest, TheAnchorToolMarksItsPointsAndARemovedStandLayerIsCaughtAtOk) {
  OpenPlotLayout();
  QAction* toolButton = session->Toolbar().Action("Tarnwick.clsSelPointTool");
  Widget<QCheckBox>(*view, "chkApplyAnchor").click();
  Choose(*view, "cbxAnchorOption", "Select Point by Clicking on Screen");
  EXPECT_FALSE(toolButton->isEnabled());

  // The dialog's toggle turns the tool on, and the toolbar's button with it.
  auto& up = Widget<QLabel>(*view, "imgButtonUp");
  QTest::mouseClick(&up, Qt::LeftButton);
  EXPECT_TRUE(Widget<QLabel>(*view, "imgButtonDown").isVisible());
  EXPECT_FALSE(up.isVisible());
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
  EXPECT_EQ(Widget<QLineEdit>(*view, "txtAnchorX").text(), QString::number(released.x(), 'f', 3));
  EXPECT_EQ(Widget<QLineEdit>(*view, "txtAnchorY").text(), QString::number(released.y(), 'f', 3));
  const auto markers = session->Document().FocusMap().Markers().Markers();
  ASSERT_EQ(markers.size(), 1u);
  const QgsPointXY pressed = toMap->toMapCoordinates(press);
  EXPECT_NEAR(markers[0]->center().x(), pressed.x(), 1e-6);
  EXPECT_NEAR(markers[0]->center().y(), pressed.y(), 1e-6);

  // Another map tool releases the toggle and greys the toolbar's button.
  QgsMapToolPan pan(desktop.canvas);
  desktop.canvas->setMapTool(&pan);
  EXPECT_TRUE(up.isVisible());
  EXPECT_FALSE(toolButton->isEnabled());
  EXPECT_FALSE(toolButton->isChecked());
  desktop.canvas->unsetMapTool(&pan);

  // The stands leave the map while the dialog is open: OK refuses and runs nothing.
  ChooseCountRun(dir / "Plots.shp");
  desktop.project->removeMapLayer(stands);
  QTest::mouseClick(&Widget<QPushButton>(*view, "cmdOK"), Qt::LeftButton);
  ASSERT_EQ(watcher.shown.size(), 1);
  EXPECT_EQ(watcher.shown[0],
            "Layer No Longer Available!\n\nThe layer 'Stands' has been removed from the map, or its data can no "
            "longer be read.  Please choose another layer...");
  EXPECT_TRUE(view->isVisible());
  EXPECT_EQ(Widget<QListWidget>(*view, "lbxPolygons").palette().color(QPalette::Base), QColor(255, 255, 0));
  EXPECT_EQ(desktop.project->count(), 2);
}

}  // namespace
}  // namespace tarnwick::desktop::testing
