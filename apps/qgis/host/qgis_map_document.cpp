#include "host/qgis_map_document.h"

#include <QFileInfo>

#include <qgslayertree.h>
#include <qgslayertreeview.h>
#include <qgsmapcanvas.h>
#include <qgsmarkersymbol.h>
#include <qgsproject.h>
#include <qgssinglesymbolrenderer.h>
#include <qgsvectorlayer.h>

#include "host/layer_sources.h"
#include "host/qt_text.h"

namespace tarnwick::desktop {

namespace {

const QString kScope = QStringLiteral("Tarnwick");
const QString kTransformationsKey = QStringLiteral("/Transformations");

// One stored transformation as "from;to;authority;code;fromGcs;toGcs;name".
QString Encoded(const platform::host::TransformationUse& use) {
  const auto& t = use.transformation;
  return QStringLiteral("%1;%2;%3;%4;%5;%6;%7")
      .arg(use.fromGcsCode)
      .arg(use.toGcsCode)
      .arg(ToQString(t.authority))
      .arg(t.code)
      .arg(t.fromGcsCode)
      .arg(t.toGcsCode)
      .arg(ToQString(t.name));
}

std::optional<platform::host::TransformationUse> Decoded(const QString& text) {
  const QStringList parts = text.split(QLatin1Char(';'));
  if (parts.size() != 7) return std::nullopt;
  platform::host::TransformationUse use;
  use.fromGcsCode = parts[0].toInt();
  use.toGcsCode = parts[1].toInt();
  use.transformation.authority = ToStdString(parts[2]);
  use.transformation.code = parts[3].toInt();
  use.transformation.fromGcsCode = parts[4].toInt();
  use.transformation.toGcsCode = parts[5].toInt();
  use.transformation.name = ToStdString(parts[6]);
  return use;
}

// The project's layers in the order of its layer tree (the table of contents).
QList<QgsMapLayer*> TreeOrder(const QgsProject& project) {
  QList<QgsMapLayer*> layers;
  for (const QgsLayerTreeLayer* node : project.layerTreeRoot()->findLayers()) {
    if (node->layer()) layers << node->layer();
  }
  return layers;
}

std::vector<platform::FeatureLayer> FeatureLayersOf(const QList<QgsMapLayer*>& layers) {
  std::vector<platform::FeatureLayer> result;
  for (QgsMapLayer* layer : layers) {
    const auto* vector = qobject_cast<QgsVectorLayer*>(layer);
    if (!vector) continue;
    if (const auto source = PlatformLayerSource(*vector)) result.push_back(ToFeatureLayer(*vector, *source));
  }
  return result;
}

}  // namespace

QgisMap::QgisMap(QgsProject& project, QgsMapCanvas* canvas) : project_(project), canvas_(canvas), markers_(canvas) {
  ReadTransformations();
}

std::vector<platform::FeatureLayer> QgisMap::Layers() { return FeatureLayersOf(TreeOrder(project_)); }

void QgisMap::AddLayer(platform::FeatureLayer layer) {
  if (!layer.featureClass) return;
  auto added = std::make_unique<QgsVectorLayer>(QgisSourceOf(layer.featureClass->FullPath()), ToQString(layer.name),
                                                QStringLiteral("ogr"));
  // New points (the plots of a run) as red dots ringed in white, which show
  // over any stand fill.
  if (added->geometryType() == QgsWkbTypes::PointGeometry) {
    added->setRenderer(new QgsSingleSymbolRenderer(QgsMarkerSymbol::createSimple(
        {{QStringLiteral("name"), QStringLiteral("circle")},
         {QStringLiteral("color"), QStringLiteral("198,40,40")},
         {QStringLiteral("outline_color"), QStringLiteral("255,255,255")},
         {QStringLiteral("size"), QStringLiteral("2.2")}})));
  }
  project_.addMapLayer(added.release());
}

platform::SpatialReference QgisMap::GetSpatialReference() {
  const QgsCoordinateReferenceSystem crs = canvas_ ? canvas_->mapSettings().destinationCrs() : project_.crs();
  if (!crs.isValid()) return {};
  try {
    const QString authority = crs.authid();
    if (authority.startsWith(QLatin1String("EPSG:")) || authority.startsWith(QLatin1String("ESRI:"))) {
      return platform::SpatialReference::FromUserInput(ToStdString(authority));
    }
    return platform::SpatialReference::FromUserInput(ToStdString(crs.toWkt(QgsCoordinateReferenceSystem::WKT_PREFERRED)));
  } catch (...) {
    return {};
  }
}

void QgisMap::WriteTransformations() {
  QStringList entries;
  for (const auto& use : transformations_) entries << Encoded(use);
  if (entries.isEmpty()) {
    project_.removeEntry(kScope, kTransformationsKey);
  } else {
    project_.writeEntry(kScope, kTransformationsKey, entries);
  }
}

void QgisMap::ReadTransformations() {
  transformations_.clear();
  for (const QString& entry : project_.readListEntry(kScope, kTransformationsKey)) {
    if (auto use = Decoded(entry)) transformations_.push_back(std::move(*use));
  }
}

QgisMapDocument::QgisMapDocument(QgsProject& project, QgsMapCanvas* canvas, QgsLayerTreeView* layerTreeView)
    : project_(project), layerTreeView_(layerTreeView), map_(project, canvas) {}

std::string QgisMapDocument::Path() const { return ToStdString(project_.fileName()); }

std::string QgisMapDocument::Title() const {
  if (!project_.fileName().isEmpty()) return ToStdString(QFileInfo(project_.fileName()).completeBaseName());
  if (!project_.title().isEmpty()) return ToStdString(project_.title());
  return "Untitled";
}

bool QgisMapDocument::IsDirty() const { return project_.isDirty(); }

void QgisMapDocument::SetDirty(bool dirty) { project_.setDirty(dirty); }

std::vector<platform::FeatureLayer> QgisMapDocument::SelectedLayers() {
  if (!layerTreeView_) return {};
  const QList<QgsMapLayer*> selected = layerTreeView_->selectedLayers();
  QList<QgsMapLayer*> ordered;
  for (QgsMapLayer* layer : TreeOrder(project_)) {
    if (selected.contains(layer)) ordered << layer;
  }
  return FeatureLayersOf(ordered);
}

}  // namespace tarnwick::desktop
