// The modal tool dialogs in QGIS over the sample forest: opened from the
// toolbar (or the menu), filled in by their controls' names, OK pressed, and
// what they did checked on disk, in the report window and in the project.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>

#include "desktop_fixture.h"
#include "shell/extension.h"
#include "testkit/layers.h"
#include "testkit/run_command.h"
#include "toolbar/tarnwick_toolbar.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_candidates.h"
#include "transforms/transform_checks.h"
#include "ui_frmReportDialog.h"
#include "views/report_window.h"

namespace tarnwick::desktop::testing {
namespace {

class ModalToolViewsTest : public ::testing::Test {
 protected:
  ModalToolViewsTest() {
    for (const char* folder : {"data", "cli"}) {
      const auto made = testkit::RunCommand(dir, TARNWICK_MAKE_SAMPLE_DATA, folder);
      EXPECT_EQ(made.exitCode, 0) << made.err;
    }
    for (const char* name : {"StandsNAD27", "Plots", "Stands"}) {
      desktop.project->addMapLayer(new QgsVectorLayer(Source("data", name), name, "ogr"));
    }
    session = std::make_unique<DesktopSession>(desktop.Windows());
    // A dialog takes the test's next step each time it is the window in
    // front and idle; without one left the watcher closes it. Report
    // windows are read.
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

  QString Source(const char* folder, const char* name) const {
    return QString::fromStdString(dir / folder) + "/forest.gpkg|layername=" + name;
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

  testkit::TempDir dir;
  MiniDesktop desktop;
  std::unique_ptr<DesktopSession> session;
  ModalWatcher watcher;
  std::map<QString, std::vector<std::function<void(QWidget&)>>> answers;  // steps by the form's name
  bool pressing = false;
  QStringList answered;
  QStringList reports;
};

template <class W>
W& Widget(QWidget& form, const char* control) {
  W* widget = form.findChild<W*>(control);
  if (!widget) throw std::runtime_error(std::string("no widget ") + control);
  return *widget;
}

void Choose(QWidget& form, const char* combo, const QString& entry) {
  auto& box = Widget<QComboBox>(form, combo);
  const int index = box.findText(entry);
  ASSERT_GE(index, 0) << combo << ": " << entry.toStdString();
  box.setCurrentIndex(index);
  emit box.activated(index);
}

void Select(QWidget& form, const char* list, const QString& entry) {
  const auto items = Widget<QListWidget>(form, list).findItems(entry, Qt::MatchExactly);
  ASSERT_EQ(items.size(), 1) << list << ": " << entry.toStdString();
  items[0]->setSelected(true);
}

void Type(QWidget& form, const char* box, const std::string& text) {
  auto& edit = Widget<QLineEdit>(form, box);
  edit.setText(QString::fromStdString(text));
  emit edit.textEdited(edit.text());
}

using testkit::Column;

TEST_F(ModalToolViewsTest, ImportStandIDsWritesWhatTheCommandLineWrites) {
  answers["frmTransferStandIDs"] = {[this](QWidget& form) {
    EXPECT_EQ(form.windowTitle(), "  Import Stand ID Parameters:");
    EXPECT_TRUE(form.windowFlags() & Qt::WindowStaysOnTopHint);
    // Stands, StandID and the plots' cloned field are the defaults.
    EXPECT_EQ(Widget<QComboBox>(form, "cbxStandID").currentText(), "StandID");
    EXPECT_EQ(Widget<QComboBox>(form, "cbxExistingIDField").currentText(), "<-- Clone Polygon Field -->");
    Select(form, "lbxFields", "Age");
    Press(form, "cmdOK");
  }};
  Trigger("Tarnwick.clsTransferStandIDs");
  ASSERT_EQ(reports.size(), 1) << watcher.shown.join("\n").toStdString();
  EXPECT_TRUE(reports[0].contains("Import Complete")) << reports[0].toStdString();
  // The sample's K20 crosses itself: the run goes on and says so.
  EXPECT_TRUE(reports[0].contains("Stand K20 (OID 10): its polygon is not valid")) << reports[0].toStdString();
  EXPECT_TRUE(desktop.project->isDirty());

  const auto cli =
      testkit::RunCommand(dir, TARNWICK_EXE,
                          "import-stand-ids --stands 'cli/forest.gpkg|layername=Stands' --stand-id StandID "
                          "--attributes Age --points 'cli/forest.gpkg|layername=Plots' --clone");
  ASSERT_EQ(cli.exitCode, 0) << cli.err;
  for (const char* field : {"StandID", "Age"}) {
    const auto written = Column(Source("data", "Plots").toStdString(), field);
    EXPECT_EQ(written, Column(Source("cli", "Plots").toStdString(), field)) << field;
    EXPECT_GT(std::count_if(written.begin(), written.end(), [](const auto& v) { return v.index() != 0; }), 30);
  }
}

TEST_F(ModalToolViewsTest, WaypointConverterWritesTheCommandLinesFileAndRepaintsItsProgress) {
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
    EXPECT_EQ(form.windowTitle(), " TNWK Solo Waypoint Converter:");
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
  Trigger("Tarnwick.cmdTNWKWPConverter");
  ASSERT_EQ(reports.size(), 1) << watcher.shown.join("\n").toStdString();
  EXPECT_FALSE(reports[0].contains("Function Failed...")) << reports[0].toStdString();
  // The check's bar was drawn as it moved, not only once at the end.
  EXPECT_GT(progressPaints, 5);

  const auto cli = testkit::RunCommand(
      dir, TARNWICK_EXE,
      "waypoints --points 'cli/forest.gpkg|layername=Plots' --plot-id PlotID --elevation Elevation --out cli.way");
  ASSERT_EQ(cli.exitCode, 0) << cli.err;
  const std::string written = testkit::ReadFile(output);
  EXPECT_GT(written.size(), 1000u);
  EXPECT_EQ(written, testkit::ReadFile(dir / "cli.way"));
}

TEST_F(ModalToolViewsTest, ALayerRemovedWhileTheDialogIsOpenIsCaughtAtOk) {
  answers["frmTransferStandIDs"] = {
      [this](QWidget& form) {
        desktop.project->removeMapLayer(desktop.project->mapLayersByName("Plots").at(0));
        Press(form, "cmdOK");
      },
      // After the refusal's box the user gives up.
      [this](QWidget& form) {
        EXPECT_EQ(Widget<QComboBox>(form, "cbxExistingPointLayer").palette().color(QPalette::Base), QColor(Qt::yellow));
        Press(form, "cmdCancel");
      }};
  Trigger("Tarnwick.clsTransferStandIDs");
  EXPECT_TRUE(watcher.shown.contains("The layer 'Plots' is no longer in the map!\n\nPlease select another layer."))
      << watcher.shown.join("\n").toStdString();
  EXPECT_TRUE(reports.isEmpty());
  EXPECT_FALSE(session->Extension().ShouldContinue);
}

TEST_F(ModalToolViewsTest, TheChoiceOfTheMenusChooserIsKeptInTheProject) {
  auto& map = session->Document().FocusMap();
  const auto layer = [&map](const std::string& name) {
    for (auto& found : map.Layers()) {
      if (found.name == name) return found;
    }
    throw std::runtime_error("no layer " + name);
  };
  // The stands and the map, drawn on WGS 1984; not the first candidate,
  // which the tools would take anyway, but one that runs here.
  desktop.canvas->setDestinationCrs(QgsCoordinateReferenceSystem("EPSG:4326"));
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  const auto candidates = FindTransformCandidates(session->Application(), layer("Stands"), wgs84);
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

  // Saved and read again, the project holds the choice, and the tools'
  // sequence takes it before it searches.
  const QString path = QString::fromStdString(dir / "forest.qgz");
  ASSERT_TRUE(desktop.project->write(path));
  desktop.project->clear();
  EXPECT_TRUE(map.Transformations().empty());
  ASSERT_TRUE(desktop.project->read(path));
  TransformationDefaults none;
  const auto choice = SelectGeoTransformation(session->Application(), map, none, layer("Stands"), wgs84);
  EXPECT_EQ(choice.origin, TransformationChoice::Origin::Memory);
  ASSERT_TRUE(choice.transformation.has_value());
  EXPECT_EQ(choice.transformation->name, chosen.name);
  EXPECT_EQ(choice.transformation->code, chosen.code);
}

}  // namespace
}  // namespace tarnwick::desktop::testing
