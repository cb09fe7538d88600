// Draws the Plot Layout dialog offscreen over the sample forest, opened from
// its toolbar button, in the states a forester meets, and saves each as an
// image for the README: plot_layout_screenshots FOREST.gpkg OUTDIR
//   plot_layout_count.png     plots per stand, with a ratio of the user's
//   plot_layout_spacing.png   X/Y spacing typed in, orientation from a field
//   plot_layout_check.png     OK without a plot count field: the list in yellow
//   plot_layout_existing.png  adding to the forest's plot layer, numbered on
//   plot_layout_anchor.png    a point clicked on the map with the anchor tool
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include <qgsapplication.h>
#include <qgsmapcanvas.h>

#include "sample_forest_window.h"
#include "shell/sel_point_tool.h"
#include "toolbar/tarnwick_toolbar.h"
#include "views/plot_layout_view.h"

namespace {

using tarnwick::desktop::PlotLayoutView;

PlotLayoutView* OpenDialog(tarnwick::desktop::DesktopSession& session) {
  session.Toolbar().Action("Tarnwick.clsPlotLayout")->trigger();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* view = qobject_cast<PlotLayoutView*>(window); view && view->isVisible()) return view;
  }
  return nullptr;
}

void SelectEntry(tarnwick::frmPlotLayout& dialog, const char* list, const std::string& entry) {
  const auto& entries = dialog[list].entries;
  const auto found = std::find(entries.begin(), entries.end(), entry);
  if (found != entries.end()) dialog.SetListIndex(list, static_cast<int>(found - entries.begin()));
}

bool Save(QWidget& window, const QDir& folder, const char* name) {
  QApplication::processEvents();
  const bool saved = window.grab().save(folder.filePath(QString::fromLatin1(name)));
  if (!saved) std::fprintf(stderr, "plot_layout_screenshots: cannot write %s\n", name);
  return saved;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: plot_layout_screenshots FOREST.gpkg OUTDIR\n");
    return 2;
  }
  QgsApplication app(argc, argv, true);
  QgsApplication::initQgis();
  const QString forest = QString::fromLocal8Bit(argv[1]);
  const QDir folder(QString::fromLocal8Bit(argv[2]));
  int failures = 0;
  {
    tarnwick::desktop::SampleForestWindow forestWindow(forest, {QStringLiteral("Plots"), QStringLiteral("Stands")});
    tarnwick::desktop::DesktopSession& session = *forestWindow.session;
    QgsMapCanvas* canvas = forestWindow.canvas;
    // The failed check's box is answered as it opens.
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) box->accept();
    });
    answer.start(50);

    if (PlotLayoutView* view = OpenDialog(session)) {
      tarnwick::frmPlotLayout& d = view->Model();
      d.SetListIndex("cbxUnits", 1);
      d.SetListIndex("cbxPlotsOption", 0);
      d.SetText("txtNumPlots", "12");
      d.SetListIndex("cbxSpacingRatioOptions", 3);
      d.SetText("txtXRatio", "2");
      d.SetText("txtYRatio", "3");
      d.SetText("txtBuffer", "33");
      d.SetListIndex("cbxBufferUnits", 1);
      failures += !Save(*view, folder, "plot_layout_count.png");

      d.SetListIndex("cbxPlotsOption", 2);
      d.SetListIndex("cbxSpacingRatioOptions", 0);
      d.SetText("txtXSpacing", "264");
      d.Fire("optOrientFieldOff", tarnwick::ControlEvent::Click);
      failures += !Save(*view, folder, "plot_layout_spacing.png");

      // OK with "<-- Select Field -->" for the plot count.
      d.SetListIndex("cbxPlotsOption", 1);
      d.SetListIndex("cbxPlotsField", 0);
      d.Fire("cmdOK", tarnwick::ControlEvent::Click);
      failures += !Save(*view, folder, "plot_layout_check.png");

      d.SetListIndex("cbxPlotsOption", 0);
      d.SetText("txtNumPlots", "8");
      d.Fire("optOrientEnterOff", tarnwick::ControlEvent::Click);
      d.SetListIndex("cbxCreatePointsIn", 1);
      d.SetListIndex("cbxExistingPointLayer", 0);
      SelectEntry(d, "cbxExistingIDField", "PlotID");
      d.SetValue("chkGridStartAtHighest", 1);
      failures += !Save(*view, folder, "plot_layout_existing.png");

      d.SetValue("chkApplyAnchor", 1);
      d.SetListIndex("cbxAnchorOption", 0);
      d.Fire("imgButtonUp", tarnwick::ControlEvent::Click);
      // A click on the map, as the anchor tool passes it on.
      const QgsPointXY centre = canvas->extent().center();
      tarnwick::clsSelPointTool tool;
      tool.OnCreate(session.Application(), session.Document(), &session.Extension());
      tool.OnMouseDown(1, 0, centre.x(), centre.y());
      tool.OnMouseUp(1, 0, centre.x(), centre.y());
      failures += !Save(*view, folder, "plot_layout_anchor.png");
      view->close();
    } else {
      std::fprintf(stderr, "plot_layout_screenshots: the dialog did not open\n");
      ++failures;
    }
  }
  QgsApplication::exitQgis();
  return failures == 0 ? 0 : 1;
}
