#include "desktop_fixture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

namespace tarnwick::desktop::testing {

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
    if (auto* dialog = qobject_cast<QDialog*>(modal); dialog && dialog->isVisible()) dialog->reject();
  });
  timer_.start();
}

void Choose(QWidget& form, const char* combo, const QString& entry) {
  auto& box = Widget<QComboBox>(form, combo);
  const int index = box.findText(entry);
  ASSERT_GE(index, 0) << combo << ": " << entry.toStdString();
  box.setCurrentIndex(index);
  emit box.activated(index);
}

// Key by key, so the form's key filter sees each one.
void Type(QWidget& form, const char* box, const std::string& text) {
  auto& edit = Widget<QLineEdit>(form, box);
  edit.setFocus();
  edit.selectAll();
  QTest::keyClicks(&edit, QString::fromStdString(text));
  EXPECT_EQ(edit.text().toStdString(), text) << box;
}

}  // namespace tarnwick::desktop::testing
