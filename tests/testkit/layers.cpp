#include "testkit/layers.h"

namespace tarnwick::testkit {

std::shared_ptr<platform::FeatureClass> MakeClass(const std::string& store,
                                                  const platform::Workspace::NewFeatureClass& spec,
                                                  const std::vector<Row>& rows) {
  auto featureClass = platform::Workspace::OpenOrCreate(store)->CreateFeatureClass(spec);
  auto cursor = featureClass->Insert();
  for (const Row& row : rows) {
    auto buffer = cursor->CreateFeatureBuffer();
    if (!row.wkt.empty()) buffer.shape = platform::Geometry::FromWkt(row.wkt, spec.spatialReference);
    for (std::size_t i = 0; i < row.values.size(); ++i) buffer.values.at(i + 2) = row.values[i];
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return featureClass;
}

platform::Workspace::NewFeatureClass ClassSpec(std::string name, platform::GeometryType type,
                                               const platform::SpatialReference& sr,
                                               std::vector<platform::Field> fields) {
  platform::Workspace::NewFeatureClass spec;
  spec.name = std::move(name);
  spec.geometryType = type;
  spec.spatialReference = sr;
  spec.fields = std::move(fields);
  return spec;
}

std::string PointWkt(double x, double y) {
  return "POINT (" + platform::NumberToText(x) + " " + platform::NumberToText(y) + ")";
}

std::string Square(double x, double y, double side) {
  auto p = [](double a, double b) { return platform::NumberToText(a) + " " + platform::NumberToText(b); };
  return "POLYGON((" + p(x, y) + "," + p(x + side, y) + "," + p(x + side, y + side) + "," + p(x, y + side) + "," +
         p(x, y) + "))";
}

std::vector<platform::Feature> ReadAll(platform::FeatureClass& featureClass) {
  std::vector<platform::Feature> features;
  auto cursor = featureClass.Search();
  while (auto feature = cursor->NextFeature()) features.push_back(std::move(*feature));
  return features;
}

}  // namespace tarnwick::testkit
