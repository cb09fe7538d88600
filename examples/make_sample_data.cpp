// Writes the sample forest: stands and plot points in UTM zone 10N (NAD 1983),
// as a GeoPackage (with a NAD 1927 copy of the stands) and as shapefiles, under the folder given (default
// examples/data).
#include <cstdio>
#include <filesystem>
#include <string>

#include "forest_generator.h"
#include "platform/workspace.h"

namespace {

using namespace tarnwick;
using platform::Field;
using platform::FieldType;

void WriteStands(platform::Workspace& workspace, const std::string& name, const std::vector<samples::Stand>& stands,
                 const platform::SpatialReference& sr) {
  if (workspace.NameExists(name)) workspace.DeleteFeatureClass(name);
  auto fc = workspace.CreateFeatureClass({.name = name,
                                          .geometryType = platform::GeometryType::Polygon,
                                          .spatialReference = sr,
                                          .fields = {{"StandID", "Stand ID", FieldType::String, 16},
                                                     {"PlotCount", "Plot count", FieldType::Integer},
                                                     {"XSpacing", "X spacing (ft)", FieldType::Double, 0, 12, 3},
                                                     {"YSpacing", "Y spacing (ft)", FieldType::Double, 0, 12, 3},
                                                     {"Orient", "Grid orientation", FieldType::Double, 0, 12, 3},
                                                     {"Age", "Stand age", FieldType::SmallInteger}}});
  const int id = fc->FindField("StandID"), plots = fc->FindField("PlotCount"), xs = fc->FindField("XSpacing"),
            ys = fc->FindField("YSpacing"), orient = fc->FindField("Orient"), age = fc->FindField("Age");
  auto cursor = fc->Insert();
  auto buffer = cursor->CreateFeatureBuffer();
  for (const auto& stand : stands) {
    buffer.shape = platform::Geometry::MakePolygon(stand.parts, sr);
    buffer.values[id] = stand.standId;
    buffer.values[plots] = std::int64_t{stand.plotCount};
    buffer.values[xs] = stand.xSpacing;
    buffer.values[ys] = stand.ySpacing;
    buffer.values[orient] = stand.orientation;
    buffer.values[age] = std::int64_t{stand.age};
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
}

void WritePlots(platform::Workspace& workspace, const std::string& name, const std::vector<platform::XY>& points,
                const platform::SpatialReference& sr) {
  if (workspace.NameExists(name)) workspace.DeleteFeatureClass(name);
  auto fc = workspace.CreateFeatureClass({.name = name,
                                          .geometryType = platform::GeometryType::Point,
                                          .spatialReference = sr,
                                          .fields = {{"PlotID", "Plot ID", FieldType::Integer},
                                                     {"Elevation", "Elevation (ft)", FieldType::Double, 0, 10, 1}}});
  const int plotId = fc->FindField("PlotID"), elevation = fc->FindField("Elevation");
  auto cursor = fc->Insert();
  auto buffer = cursor->CreateFeatureBuffer();
  std::int64_t n = 0;
  for (const auto& p : points) {
    buffer.shape = platform::Geometry::MakePoint(p.x, p.y, sr);
    buffer.values[plotId] = ++n;
    buffer.values[elevation] = 800.0 + static_cast<double>((n * 37) % 400);
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
}

// The same stands as an older map would hold them: NAD 1927 UTM zone 10N.
// They are taken there through WGS 1984 with two published transformations
// that need no grid files (NAD 1983 to WGS 1984, then WGS 1984 back to
// NAD 1927), so the copy sits where a NAD 1927 survey put it.
std::vector<samples::Stand> ToNad1927(std::vector<samples::Stand> stands, const platform::SpatialReference& from) {
  const platform::GeoTransformation nad83ToWgs84{"NAD_1983_To_WGS_1984_1", 1188, "EPSG", 4269, 4326};
  const platform::GeoTransformation nad27ToWgs84{"NAD_1927_To_WGS_1984_4", 1173, "EPSG", 4267, 4326};
  const auto wgs84 = platform::SpatialReference::FromEpsg(4326);
  const auto nad27Utm = platform::SpatialReference::FromEpsg(26710);
  for (auto& stand : stands) {
    const auto shape = platform::Geometry::MakePolygon(stand.parts, from)
                           .ProjectEx(wgs84, nad83ToWgs84, platform::TransformDirection::Forward)
                           .ProjectEx(nad27Utm, nad27ToWgs84, platform::TransformDirection::Reverse);
    stand.parts = shape.Polygons();
  }
  return stands;
}

}  // namespace

int main(int argc, char** argv) {
  const std::filesystem::path folder = argc > 1 ? argv[1] : "examples/data";
  try {
    std::filesystem::create_directories(folder / "shp");
    const auto sr = platform::SpatialReference::FromEpsg(26910);  // NAD 1983 UTM zone 10N
    const auto stands = samples::SampleForest();
    const auto plots = samples::ScatterPoints(stands, 4, 77);
    auto gpkg = platform::Workspace::OpenOrCreate((folder / "forest.gpkg").string());
    WriteStands(*gpkg, "Stands", stands, sr);
    WritePlots(*gpkg, "Plots", plots, sr);
    WriteStands(*gpkg, "StandsNAD27", ToNad1927(stands, sr), platform::SpatialReference::FromEpsg(26710));
    auto shp = platform::Workspace::OpenOrCreate((folder / "shp").string());
    WriteStands(*shp, "stands", stands, sr);
    WritePlots(*shp, "plots", plots, sr);
    std::printf("Sample forest written to %s: %zu stands, %zu plot points\n", folder.string().c_str(),
                stands.size(), plots.size());
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "make_sample_data: %s\n", e.what());
    return 1;
  }
}
