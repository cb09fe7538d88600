// The Qt and QGIS headers most files of the plugin include, compiled once.
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QtCore>
#include <QtGui>
#include <QtWidgets>

#include <qgsmapcanvas.h>
#include <qgsproject.h>
#include <qgsvectorlayer.h>
