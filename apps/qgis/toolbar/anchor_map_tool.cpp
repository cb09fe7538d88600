#include "toolbar/anchor_map_tool.h"

#include <qgsmapmouseevent.h>

namespace tarnwick::desktop {

namespace {

// The host's button numbers: 1 left, 2 right, 4 middle; shift 1 for Shift,
// 2 for Ctrl, 4 for Alt.
int ButtonOf(Qt::MouseButtons buttons) {
  return (buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) | (buttons & Qt::MiddleButton ? 4 : 0);
}

int ShiftOf(Qt::KeyboardModifiers modifiers) {
  return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0) |
         (modifiers & Qt::AltModifier ? 4 : 0);
}

}  // namespace

AnchorMapTool::AnchorMapTool(QgsMapCanvas* canvas, clsSelPointTool& tool) : QgsMapTool(canvas), tool_(tool) {
  setCursor(Qt::CrossCursor);
}

void AnchorMapTool::canvasPressEvent(QgsMapMouseEvent* event) {
  const QgsPointXY point = event->mapPoint();
  tool_.OnMouseDown(ButtonOf(event->button()), ShiftOf(event->modifiers()), point.x(), point.y());
}

void AnchorMapTool::canvasMoveEvent(QgsMapMouseEvent* event) {
  const QgsPointXY point = event->mapPoint();
  tool_.OnMouseMove(ButtonOf(event->buttons()), ShiftOf(event->modifiers()), point.x(), point.y());
}

void AnchorMapTool::canvasReleaseEvent(QgsMapMouseEvent* event) {
  const QgsPointXY point = event->mapPoint();
  tool_.OnMouseUp(ButtonOf(event->button()), ShiftOf(event->modifiers()), point.x(), point.y());
}

void AnchorMapTool::deactivate() {
  tool_.Deactivate();
  QgsMapTool::deactivate();
}

}  // namespace tarnwick::desktop
