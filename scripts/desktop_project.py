"""Writes a QGIS project over the sample forest: the stands, filled and
labelled by stand ID, under the plot points, so that a user sees both.

usage: /usr/bin/python3 scripts/desktop_project.py FOREST.gpkg PROJECT.qgz [PLOTS_SOURCE]
PLOTS_SOURCE defaults to the forest's own Plots class (e.g. a laid-out
plots.gpkg|layername=Plots may be given instead).
"""
import os
import sys

os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")

from qgis.core import (QgsApplication, QgsFillSymbol, QgsMarkerSymbol, QgsPalLayerSettings, QgsProject,
                       QgsTextBufferSettings, QgsTextFormat, QgsVectorLayer, QgsVectorLayerSimpleLabeling)
from qgis.PyQt.QtGui import QColor, QFont


def stands_layer(forest):
    layer = QgsVectorLayer(f"{forest}|layername=Stands", "Stands", "ogr")
    layer.renderer().setSymbol(QgsFillSymbol.createSimple(
        {"color": "165,214,167,150", "outline_color": "27,94,32", "outline_width": "0.6"}))
    label = QgsPalLayerSettings()
    label.fieldName = "StandID"
    text = QgsTextFormat()
    text.setFont(QFont("DejaVu Sans"))
    text.setSize(9)
    text.setColor(QColor(27, 94, 32))
    buffer = QgsTextBufferSettings()
    buffer.setEnabled(True)
    buffer.setSize(0.8)
    text.setBuffer(buffer)
    label.setFormat(text)
    layer.setLabeling(QgsVectorLayerSimpleLabeling(label))
    layer.setLabelsEnabled(True)
    return layer


def plots_layer(source):
    layer = QgsVectorLayer(source, "Plots", "ogr")
    layer.renderer().setSymbol(QgsMarkerSymbol.createSimple(
        {"name": "circle", "color": "198,40,40", "outline_color": "255,255,255", "size": "2.2"}))
    return layer


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    forest, target = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    plots = sys.argv[3] if len(sys.argv) == 4 else f"{forest}|layername=Plots"
    app = QgsApplication([], False)
    app.initQgis()
    project = QgsProject.instance()
    project.setTitle("Sample forest")
    for layer in (stands_layer(forest), plots_layer(plots)):
        if not layer.isValid():
            sys.exit(f"desktop_project: cannot open {layer.source()}")
        project.addMapLayer(layer)
    project.setCrs(project.mapLayersByName("Stands")[0].crs())
    os.makedirs(os.path.dirname(target), exist_ok=True)
    if not project.write(target):
        sys.exit(f"desktop_project: cannot write {target}")
    print(f"QGIS project written to {target}")
    app.exitQgis()


main()
