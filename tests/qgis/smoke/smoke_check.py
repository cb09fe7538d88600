"""Runs inside QGIS (qgis --code): checks that the plugin's toolbar and menu
are there, then that the settings go out with a saved project and come back
with a reopened one. Writes its findings as JSON to $TARNWICK_SMOKE_RESULT
and ends QGIS."""
import json
import os
import xml.etree.ElementTree as ElementTree

from qgis.core import QgsProject
from qgis.PyQt.QtWidgets import QMenu, QToolBar
from qgis.utils import iface

work = os.environ["TARNWICK_SMOKE_DIR"]
result = {"errors": []}


def settings_of(path):
    """The plugin's values in a project file, by key: (type, text)."""
    settings = ElementTree.parse(path).getroot().find("properties/Tarnwick/Settings")
    return {} if settings is None else {v.tag: (v.get("type"), v.text or "") for v in settings}


def check(condition, message):
    if not condition:
        result["errors"].append(message)


try:
    window = iface.mainWindow()
    toolbar = window.findChild(QToolBar, "Tarnwick_Toolbar")
    check(toolbar is not None, "no Tarnwick_Toolbar: the plugin did not load")
    if toolbar:
        result["toolbar"] = [a.text() if not a.isSeparator() else "|" for a in toolbar.actions()]
        result["enabled"] = [a.isEnabled() for a in toolbar.actions() if not a.isSeparator()]
        check(toolbar.isVisible(), "the toolbar is hidden")
    menu = window.findChild(QMenu, "Tarnwick_Menu")
    check(menu is not None and menu.title() == "Tarnwick Tools", "no Tarnwick Tools menu")
    project = QgsProject.instance()
    result["layers"] = sorted(layer.name() for layer in project.mapLayers().values())

    # Saved: the 24 values, typed, under the project's Tarnwick properties.
    first = os.path.join(work, "saved.qgs")
    check(project.write(first), "cannot write " + first)
    saved = settings_of(first)
    check(len(saved) == 24, f"{len(saved)} values saved, not 24")
    check(saved.get("v21") == ("QString", "Shapefile"), f"DirectoryType saved as {saved.get('v21')}")
    check(saved.get("v24", ("",))[0] == "bool", "OrientationFromField not saved as a Boolean")

    # A project holding other values: they reach the extension when it is
    # opened (the spacing repaired) and go out again when it is saved.
    with open(first, encoding="utf-8") as text:
        edited = text.read().replace('<v01 type="QString"></v01>', '<v01 type="QString">SmokeStandID</v01>')
    edited = edited.replace('<v18 type="double">0</v18>', '<v18 type="double">-20</v18>')
    reopened = os.path.join(work, "edited.qgs")
    with open(reopened, "w", encoding="utf-8") as text:
        text.write(edited)
    check(project.read(reopened), "cannot read " + reopened)
    second = os.path.join(work, "resaved.qgs")
    check(project.write(second), "cannot write " + second)
    resaved = settings_of(second)
    result["resaved"] = {key: resaved.get(key) for key in ("v01", "v18", "v21")}
    check(resaved.get("v01") == ("QString", "SmokeStandID"), "StandIDHistory did not survive the reopened project")
    check(resaved.get("v18") == ("double", "20"), "XSpacing was not loaded and repaired")
except Exception as error:  # the result must be written whatever happens
    result["errors"].append(repr(error))

with open(os.environ["TARNWICK_SMOKE_RESULT"], "w", encoding="utf-8") as out:
    json.dump(result, out, indent=1)
os._exit(0)
