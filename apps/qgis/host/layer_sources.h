#pragma once
// Between QGIS layers and the platform's: which QGIS layers the tools can use
// (those GDAL opens as files) and how each opens through the platform.
#include <QString>
#include <optional>
#include <string>

#include "platform/workspace.h"

class QgsMapLayer;
class QgsVectorLayer;

namespace tarnwick::desktop {

// "PATH" or "PATH|layername=NAME" for a vector layer read by GDAL from a
// file; nullopt for any other (a memory, web or database layer).
std::optional<std::string> PlatformLayerSource(const QgsMapLayer& layer);

// The layer under its table-of-contents name with its selected features.
// QGIS numbers the features of a GDAL layer by GDAL's feature IDs, which are
// the platform's object IDs, so the selection carries over as it is. A
// layer whose data is gone or cannot be opened is listed with valid false.
platform::FeatureLayer ToFeatureLayer(const QgsVectorLayer& layer, const std::string& source);

// The QGIS data source of a class the platform names by path
// ("x.gpkg/Plots" gives "x.gpkg|layername=Plots", "dir/p.shp" stays).
QString QgisSourceOf(const std::string& classPath);

}  // namespace tarnwick::desktop
