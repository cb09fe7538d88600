"""Runs inside QGIS (qgis --code): waits for the map, then saves the main
window and the Tarnwick Tools toolbar as images in $TARNWICK_SCREENSHOTS."""
import os

from qgis.PyQt.QtCore import QRect, QTimer
from qgis.PyQt.QtWidgets import QApplication, QToolBar
from qgis.utils import iface

folder = os.environ["TARNWICK_SCREENSHOTS"]


def shoot():
    window = iface.mainWindow()
    canvas = iface.mapCanvas()
    canvas.waitWhileRendering()
    QApplication.processEvents()
    window.grab().save(os.path.join(folder, "qgis_window.png"))
    toolbar = window.findChild(QToolBar, "Tarnwick_Toolbar")
    if toolbar:
        last = toolbar.widgetForAction(toolbar.actions()[-1]).geometry()
        toolbar.grab(QRect(0, 0, last.right() + 6, toolbar.height())).save(os.path.join(folder, "toolbar.png"))
    os._exit(0 if toolbar else 1)


iface.mainWindow().showMaximized()
iface.mapCanvas().zoomToFullExtent()
iface.mapCanvas().refresh()
QTimer.singleShot(3000, shoot)
