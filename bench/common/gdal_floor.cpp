#include "common/gdal_floor.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include <fcntl.h>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

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

namespace {

// Adds the text field when the class lacks it and returns its index.
int EnsureTextField(OGRLayer& layer, const std::string& field) {
  if (layer.GetLayerDefn()->GetFieldIndex(field.c_str()) < 0) {
    OGRFieldDefn added(field.c_str(), OFTString);
    added.SetWidth(16);
    if (layer.CreateField(&added) != OGRERR_NONE) throw std::runtime_error("cannot add field " + field);
  }
  return FieldOf(layer, field);
}

// Reads every point of the layer with its fid and shape only.
template <typename PerPoint>
void ReadPoints(OGRLayer& layer, PerPoint&& perPoint) {
  CPLStringList ignored;
  for (int i = 0; i < layer.GetLayerDefn()->GetFieldCount(); ++i) {
    ignored.AddString(layer.GetLayerDefn()->GetFieldDefn(i)->GetNameRef());
  }
  layer.SetIgnoredFields(const_cast<const char**>(ignored.List()));
  layer.ResetReading();
  for (auto& feature : layer) {
    const OGRGeometry* g = feature->GetGeometryRef();
    if (g == nullptr || wkbFlatten(g->getGeometryType()) != wkbPoint) throw std::runtime_error("a point without shape");
    perPoint(feature->GetFID(), g->toPoint()->getX(), g->toPoint()->getY());
  }
}

constexpr const char* kStandId = "S-00001";

}  // namespace

double GeoPackageAttributeFloor(const std::string& gpkgPath, const std::string& layerName, const std::string& field) {
  const auto start = Clock::now();
  auto ds = OpenUpdate(gpkgPath);
  auto& layer = LayerOf(*ds, gpkgPath, layerName);
  EnsureTextField(layer, field);
  ds->StartTransaction();
  auto* db = static_cast<sqlite3*>(ds->GetInternalHandle("SQLITE_HANDLE"));
  const std::string sql = "UPDATE \"" + layerName + "\" SET \"" + field + "\" = ? WHERE \"" +
                          layer.GetFIDColumn() + "\" = ?";
  sqlite3_stmt* update = nullptr;
  if (db == nullptr || sqlite3_prepare_v2(db, sql.c_str(), -1, &update, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot prepare " + sql);
  }
  double sum = 0;
  ReadPoints(layer, [&](GIntBig fid, double x, double) {
    sum += x;
    sqlite3_reset(update);
    sqlite3_bind_text(update, 1, kStandId, -1, SQLITE_STATIC);
    sqlite3_bind_int64(update, 2, fid);
    if (sqlite3_step(update) != SQLITE_DONE) throw std::runtime_error("cannot update a point");
  });
  sqlite3_finalize(update);
  if (ds->CommitTransaction() != OGRERR_NONE) throw std::runtime_error("cannot commit");
  (void)sum;
  return Since(start);
}

double ShapefileAttributeFloor(const std::string& folder, const std::string& layerName, const std::string& field) {
  const auto start = Clock::now();
  int index = 0;
  {
    auto ds = OpenUpdate(folder);
    index = EnsureTextField(LayerOf(*ds, folder, layerName), field);
  }
  // The .dbf's layout: header size, record size and the field's offset.
  const std::string dbf = folder + "/" + layerName + ".dbf";
  const int fd = ::open(dbf.c_str(), O_RDWR);
  if (fd < 0) throw std::runtime_error("cannot open " + dbf);
  unsigned char header[32];
  if (::pread(fd, header, sizeof header, 0) != 32) throw std::runtime_error("no header in " + dbf);
  const std::size_t headerSize = header[8] | (header[9] << 8), recordSize = header[10] | (header[11] << 8);
  std::vector<unsigned char> descriptors(headerSize - 32);
  if (::pread(fd, descriptors.data(), descriptors.size(), 32) != static_cast<ssize_t>(descriptors.size())) {
    throw std::runtime_error("no header in " + dbf);
  }
  std::size_t offset = 1;
  for (int i = 0; i < index; ++i) offset += descriptors[static_cast<std::size_t>(i) * 32 + 16];
  const std::size_t width = descriptors[static_cast<std::size_t>(index) * 32 + 16];
  std::string value = kStandId;
  value.resize(width, ' ');

  const std::size_t windowRecords = (1u << 20) / recordSize;
  std::vector<char> window(windowRecords * recordSize);
  GIntBig first = 0, held = 0;
  auto flush = [&] {
    if (held > 0 && ::pwrite(fd, window.data(), static_cast<std::size_t>(held) * recordSize,
                             static_cast<off_t>(headerSize + static_cast<std::size_t>(first) * recordSize)) < 0) {
      throw std::runtime_error("cannot write " + dbf);
    }
  };
  {
    DatasetPtr ds(GDALDataset::Open(folder.c_str(), GDAL_OF_VECTOR));
    if (!ds) throw std::runtime_error("cannot open " + folder);
    auto& layer = LayerOf(*ds, folder, layerName);
    const GIntBig records = layer.GetFeatureCount(TRUE);
    ReadPoints(layer, [&](GIntBig fid, double, double) {
      if (fid < first || fid >= first + held) {
        flush();
        first = fid;
        held = std::min<GIntBig>(static_cast<GIntBig>(windowRecords), records - fid);
        ::pread(fd, window.data(), static_cast<std::size_t>(held) * recordSize,
                static_cast<off_t>(headerSize + static_cast<std::size_t>(fid) * recordSize));
      }
      std::memcpy(window.data() + static_cast<std::size_t>(fid - first) * recordSize + offset, value.data(), width);
    });
  }
  flush();
  ::close(fd);
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
