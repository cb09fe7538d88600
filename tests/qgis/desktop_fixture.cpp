#include "desktop_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>

namespace tarnwick::desktop::testing {

platform::FeatureLayer WritePlotPoints(const std::string& workspacePath, const std::string& name, int count) {
  const auto sr = platform::SpatialReference::FromEpsg(26910);
  auto workspace = platform::Workspace::OpenOrCreate(workspacePath);
  auto points = workspace->CreateFeatureClass({.name = name,
                                               .geometryType = platform::GeometryType::Point,
                                               .spatialReference = sr,
                                               .fields = {{"PlotID", "", platform::FieldType::Integer}}});
  {
    auto cursor = points->Insert();
    auto buffer = cursor->CreateFeatureBuffer();
    for (int i = 1; i <= count; ++i) {
      buffer.shape = platform::Geometry::MakePoint(i, 2 * i, sr);
      buffer.values[points->FindField("PlotID")] = std::int64_t{i};
      cursor->InsertFeature(buffer);
    }
    cursor->Flush();
  }
  return {name, points, {}, true};
}

MiniDesktop::MiniDesktop() : project(std::make_unique<QgsProject>()), window(std::make_unique<QMainWindow>()) {
  canvas = new QgsMapCanvas(window.get());
  window->setCentralWidget(canvas);
  canvas->setProject(project.get());
  layerTree = new QgsLayerTreeView(window.get());
  layerTree->setModel(new QgsLayerTreeModel(project->layerTreeRoot(), layerTree));
  statusBar = new QgsStatusBar(window.get());
  window->statusBar()->addPermanentWidget(statusBar, 1);
  window->resize(1000, 700);
}

MiniDesktop::~MiniDesktop() = default;

DesktopWindows MiniDesktop::Windows() {
  return {window.get(), canvas, layerTree, statusBar, project.get(), TARNWICK_SOURCE_DIR};
}

namespace {

QString TextOf(QWidget* window) {
  if (auto* box = qobject_cast<QMessageBox*>(window)) return box->text();
  if (auto* view = window->findChild<QPlainTextEdit*>()) return view->toPlainText();
  QStringList texts;
  for (auto* label : window->findChildren<QLabel*>()) texts << label->text();
  return texts.join('\n');
}

}  // namespace

ModalWatcher::ModalWatcher() {
  timer_.setInterval(20);
  QObject::connect(&timer_, &QTimer::timeout, [this] {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal) return;
    shown << TextOf(modal);
    if (handle && handle(modal)) return;
    if (inspect) inspect(modal);
    if (!modal->isVisible()) return;  // the inspection closed it
    for (auto* button : modal->findChildren<QAbstractButton*>()) {
      if (!answer.isEmpty() && button->text().remove('&') == answer) {
        button->click();
        return;
      }
    }
    if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
  });
  timer_.start();
}

}  // namespace tarnwick::desktop::testing
