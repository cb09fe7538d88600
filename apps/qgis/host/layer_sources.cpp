#include "host/layer_sources.h"

#include <QFileInfo>
#include <algorithm>

#include <qgsproviderregistry.h>
#include <qgsvectorlayer.h>

#include "host/qt_text.h"

namespace tarnwick::desktop {

std::optional<std::string> PlatformLayerSource(const QgsMapLayer& layer) {
  if (layer.type() != QgsMapLayerType::VectorLayer || layer.providerType() != QLatin1String("ogr")) return std::nullopt;
  const QVariantMap parts = QgsProviderRegistry::instance()->decodeUri(layer.providerType(), layer.source());
  const QString path = parts.value(QStringLiteral("path")).toString();
  // GDAL's virtual file systems (web addresses, archives) are not files the
  // tools can write beside.
  if (path.isEmpty() || path.startsWith(QLatin1String("/vsi")) || path.contains(QLatin1String("://"))) {
    return std::nullopt;
  }
  const QString layerName = parts.value(QStringLiteral("layerName")).toString();
  return ToStdString(layerName.isEmpty() ? path : path + "|layername=" + layerName);
}

platform::FeatureLayer ToFeatureLayer(const QgsVectorLayer& layer, const std::string& source) {
  platform::FeatureLayer result;
  const QString path = ToQString(source).section(QLatin1Char('|'), 0, 0);
  if (layer.isValid() && QFileInfo::exists(path)) {
    try {
      result = platform::OpenFeatureLayer(source);
    } catch (...) {
      result = {};
    }
  }
  result.name = ToStdString(layer.name());
  result.valid = result.featureClass != nullptr;
  if (result.valid) {
    const QgsFeatureIds ids = layer.selectedFeatureIds();
    result.selection.assign(ids.begin(), ids.end());
    std::sort(result.selection.begin(), result.selection.end());
  }
  return result;
}

QString QgisSourceOf(const std::string& classPath) {
  const platform::ClassPath split = platform::SplitClassPath(classPath);
  const QString workspace = ToQString(split.workspace);
  if (workspace.endsWith(QLatin1String(".gdb"), Qt::CaseInsensitive) ||
      workspace.endsWith(QLatin1String(".gpkg"), Qt::CaseInsensitive)) {
    return workspace + "|layername=" + ToQString(split.name);
  }
  return ToQString(classPath);
}

}  // namespace tarnwick::desktop
