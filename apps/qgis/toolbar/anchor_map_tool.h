#pragma once
// The anchor point tool on the canvas: QGIS's mouse events, in map
// coordinates, go to clsSelPointTool, which writes the point into the open
// Plot Layout dialog.
#include <qgsmaptool.h>

#include "shell/sel_point_tool.h"

namespace tarnwick::desktop {

class AnchorMapTool : public QgsMapTool {
  Q_OBJECT
 public:
  AnchorMapTool(QgsMapCanvas* canvas, clsSelPointTool& tool);
  void canvasPressEvent(QgsMapMouseEvent* event) override;
  void canvasMoveEvent(QgsMapMouseEvent* event) override;
  void canvasReleaseEvent(QgsMapMouseEvent* event) override;
  void deactivate() override;

 private:
  clsSelPointTool& tool_;
};

}  // namespace tarnwick::desktop
