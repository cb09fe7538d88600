// Draws the modal tool dialogs offscreen over the sample forest, opened from
// the toolbar and the menu as a forester opens them, and saves each as an
// image for the README: tool_dialog_screenshots FOREST.gpkg OUTDIR
//   import_stand_ids.png           stands, Stand ID and one more field onto the plots
//   waypoint_converter.png         the plots with their Plot ID and elevation
//   transformation_layers.png      the two layers of the menu's entry
//   transformation_chooser.png     the candidates between NAD 1927 and NAD 1983
#include <qgsapplication.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

#include "sample_forest_window.h"
#include "toolbar/tarnwick_toolbar.h"

namespace {

void Choose(QWidget& form, const char* combo, const QString& entry) {
  if (auto* box = form.findChild<QComboBox*>(QString::fromLatin1(combo))) {
    const int index = box->findText(entry);
    box->setCurrentIndex(index);
    emit box->activated(index);
  }
}

void Click(QWidget& form, const char* button) {
  if (auto* found = form.findChild<QPushButton*>(QString::fromLatin1(button))) {
    QTimer::singleShot(0, found, &QPushButton::click);  // after this tick: it may open a window of its own
  }
}

// Saves each dialog once as it opens, then answers it as a forester would.
class Photographer {
 public:
  explicit Photographer(const QDir& folder) : folder_(folder) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Shoot(); });
    timer_.start(30);
  }
  int failures = 0;

 private:
  void Save(QWidget& window, const char* name) {
    QApplication::processEvents();
    if (!window.grab().save(folder_.filePath(QString::fromLatin1(name)))) {
      std::fprintf(stderr, "tool_dialog_screenshots: cannot write %s\n", name);
      ++failures;
    }
  }
  void Shoot() {
    auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    // A new dialog may stand where the last one stood: each is marked.
    if (!form || form->property("photographed").toBool()) return;
    form->setProperty("photographed", true);
    const QString name = form->objectName();
    if (name == QLatin1String("frmTransferStandIDs")) {
      auto* fields = form->findChild<QListWidget*>(QStringLiteral("lbxFields"));
      for (auto* item : fields->findItems(QStringLiteral("Age"), Qt::MatchExactly)) {
        item->setSelected(true);
        fields->scrollToItem(item);
      }
      Save(*form, "import_stand_ids.png");
      Click(*form, "cmdCancel");
    } else if (name == QLatin1String("frmLayerID")) {
      Save(*form, "waypoint_converter.png");
      Click(*form, "cmdCancel");
    } else if (name == QLatin1String("TransformationPairDialog")) {
      Choose(*form, "cbxLayer1", QStringLiteral("StandsNAD27"));
      Choose(*form, "cbxLayer2", QStringLiteral("Stands"));
      Save(*form, "transformation_layers.png");
      Click(*form, "cmdOK");
    } else if (name == QLatin1String("frmTransform")) {
      auto* list = form->findChild<QListWidget*>(QStringLiteral("lbxTransformations"));
      list->setCurrentRow(0);
      Save(*form, "transformation_chooser.png");
      Click(*form, "cmdCancel");
    } else {
      form->reject();
    }
  }

  QDir folder_;
  QTimer timer_;
};

}  // namespace

int main(int argc, char* argv[]) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: tool_dialog_screenshots FOREST.gpkg OUTDIR\n");
    return 2;
  }
  QgsApplication app(argc, argv, true);
  QgsApplication::initQgis();
  const QString forest = QString::fromLocal8Bit(argv[1]);
  int failures = 0;
  {
    tarnwick::desktop::SampleForestWindow forestWindow(
        forest, {QStringLiteral("StandsNAD27"), QStringLiteral("Plots"), QStringLiteral("Stands")});
    Photographer photographer{QDir(QString::fromLocal8Bit(argv[2]))};
    auto& toolbar = forestWindow.session->Toolbar();
    toolbar.Action("Tarnwick.clsTransferStandIDs")->trigger();
    toolbar.Action("Tarnwick.cmdTNWKWPConverter")->trigger();
    toolbar.Menu()->findChild<QAction*>(QStringLiteral("TNWK_Geographic_Transformation"))->trigger();
    failures = photographer.failures;
  }
  QgsApplication::exitQgis();
  return failures == 0 ? 0 : 1;
}
