#pragma once
// The sample forest in a QGIS main window, as the screenshot tools draw it
// offscreen: a project named beside the forest (where new plots are
// suggested), a map canvas over the given layers in the Stands' system, and
// a desktop session with the Tarnwick toolbar.
#include <qgsmapcanvas.h>
#include <qgsproject.h>
#include <qgsvectorlayer.h>

#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QStringList>
#include <memory>

#include "session/desktop_session.h"

namespace tarnwick::desktop {

class SampleForestWindow {
 public:
  SampleForestWindow(const QString& forest, const QStringList& layers) {
    project.setFileName(QFileInfo(forest).absoluteDir().filePath(QStringLiteral("forest.qgz")));
    canvas = new QgsMapCanvas(&window);
    window.setCentralWidget(canvas);
    canvas->setProject(&project);
    window.resize(1000, 700);
    for (const QString& name : layers) {
      project.addMapLayer(new QgsVectorLayer(forest + "|layername=" + name, name, QStringLiteral("ogr")));
    }
    canvas->setDestinationCrs(project.mapLayersByName(QStringLiteral("Stands")).at(0)->crs());
    canvas->setLayers(project.mapLayers().values());
    canvas->zoomToFullExtent();
    window.show();
    session = std::make_unique<DesktopSession>(
        DesktopWindows{&window, canvas, nullptr, nullptr, &project, QDir::tempPath().toStdString()});
  }

  QgsProject project;
  QMainWindow window;
  QgsMapCanvas* canvas = nullptr;  // owned by the window
  std::unique_ptr<DesktopSession> session;
};

}  // namespace tarnwick::desktop
