#include "common/gdal_floor.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

namespace tarnwick::bench {
namespace {

using Clock = std::chrono::steady_clock;
double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

struct DatasetCloser {
  void operator()(GDALDataset* ds) const { GDALClose(ds); }
};
using DatasetPtr = std::unique_ptr<GDALDataset, DatasetCloser>;

DatasetPtr OpenUpdate(const std::string& path) {
  GDALAllRegister();
  DatasetPtr ds(GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE));
  if (!ds) throw std::runtime_error("cannot open " + path);
  return ds;
}

OGRLayer& LayerOf(GDALDataset& ds, const std::string& path, const std::string& name) {
  auto* layer = ds.GetLayerByName(name.c_str());
  if (!layer) throw std::runtime_error("no class " + name + " in " + path);
  return *layer;
}

int FieldOf(OGRLayer& layer, const std::string& field) {
  const int index = layer.GetLayerDefn()->GetFieldIndex(field.c_str());
  if (index < 0) throw std::runtime_error("no field " + field + " in " + layer.GetName());
  return index;
}

}  // namespace

double GdalWritePoints(const std::string& gpkgPath, const std::string& layerName,
                       const std::vector<platform::XY>& points, int epsg) {
  GDALAllRegister();
  std::filesystem::remove(gpkgPath);
  const auto start = Clock::now();
  auto* driver = GetGDALDriverManager()->GetDriverByName("GPKG");
  DatasetPtr ds(driver->Create(gpkgPath.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  OGRSpatialReference sr;
  sr.importFromEPSG(epsg);
  auto* layer = ds->CreateLayer(layerName.c_str(), &sr, wkbPoint, nullptr);
  OGRFieldDefn standId("StandID", OFTString);
  standId.SetWidth(16);
  layer->CreateField(&standId);
  OGRFieldDefn plotId("PlotID", OFTString);
  plotId.SetWidth(50);
  layer->CreateField(&plotId);
  ds->StartTransaction();
  OGRFeature feature(layer->GetLayerDefn());
  long n = 0;
  for (const auto& p : points) {
    feature.SetFID(OGRNullFID);
    feature.SetGeometry(std::make_unique<OGRPoint>(p.x, p.y).get());
    feature.SetField(0, "S-00001");
    feature.SetField(1, std::to_string(++n).c_str());
    if (layer->CreateFeature(&feature) != OGRERR_NONE) throw std::runtime_error("cannot write a point");
  }
  ds->CommitTransaction();
  ds.reset();
  return Since(start);
}

double GdalReadPoints(const std::string& gpkgPath, const std::string& layerName) {
  const auto start = Clock::now();
  auto ds = OpenUpdate(gpkgPath);
  auto* layer = ds->GetLayerByName(layerName.c_str());
  double sum = 0;
  for (auto& feature : *layer) {
    if (auto* g = feature->GetGeometryRef(); g && g->getGeometryType() == wkbPoint) sum += g->toPoint()->getX();
    for (int i = 0; i < feature->GetFieldCount(); ++i) (void)feature->GetFieldAsString(i);
  }
  (void)sum;
  return Since(start);
}

double GdalReadAndWriteField(const std::string& gpkgPath, const std::string& layerName, const std::string& field) {
  const auto start = Clock::now();
  auto ds = OpenUpdate(gpkgPath);
  auto* layer = &LayerOf(*ds, gpkgPath, layerName);
  if (layer->GetLayerDefn()->GetFieldIndex(field.c_str()) < 0) {
    OGRFieldDefn added(field.c_str(), OFTString);
    added.SetWidth(16);
    if (layer->CreateField(&added) != OGRERR_NONE) throw std::runtime_error("cannot add field " + field);
  }
  const int index = FieldOf(*layer, field);
  ds->StartTransaction();
  layer->ResetReading();
  for (auto& feature : *layer) {
    feature->SetField(index, "S-00001");
    if (layer->SetFeature(feature.get()) != OGRERR_NONE) throw std::runtime_error("cannot rewrite a point");
  }
  ds->CommitTransaction();
  return Since(start);
}

std::vector<platform::XY> GdalReadPointXY(const std::string& gpkgPath, const std::string& layerName) {
  auto ds = OpenUpdate(gpkgPath);
  std::vector<platform::XY> points;
  for (auto& feature : LayerOf(*ds, gpkgPath, layerName)) {
    if (auto* g = feature->GetGeometryRef(); g && wkbFlatten(g->getGeometryType()) == wkbPoint) {
      points.push_back({g->toPoint()->getX(), g->toPoint()->getY()});
    }
  }
  return points;
}

std::unordered_map<std::string, long> GdalCountByField(const std::string& gpkgPath, const std::string& layerName,
                                                       const std::string& field) {
  auto ds = OpenUpdate(gpkgPath);
  auto& layer = LayerOf(*ds, gpkgPath, layerName);
  const int index = FieldOf(layer, field);
  std::unordered_map<std::string, long> counts;
  for (auto& feature : layer) ++counts[feature->GetFieldAsString(index)];
  return counts;
}

std::unordered_map<std::string, long> GdalReadKeyedIntegers(const std::string& gpkgPath, const std::string& layerName,
                                                            const std::string& keyField,
                                                            const std::string& valueField) {
  auto ds = OpenUpdate(gpkgPath);
  auto& layer = LayerOf(*ds, gpkgPath, layerName);
  const int key = FieldOf(layer, keyField), value = FieldOf(layer, valueField);
  std::unordered_map<std::string, long> values;
  for (auto& feature : layer) values[feature->GetFieldAsString(key)] = feature->GetFieldAsInteger(value);
  return values;
}

}  // namespace tarnwick::bench
