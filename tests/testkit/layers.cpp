#include "testkit/layers.h"

namespace tarnwick::testkit {

std::shared_ptr<platform::FeatureClass> MakeClass(const std::string& store,
                                                  const platform::Workspace::NewFeatureClass& newClass,
                                                  const std::vector<Row>& rows) {
  auto featureClass = platform::Workspace::OpenOrCreate(store)->CreateFeatureClass(newClass);
  auto cursor = featureClass->Insert();
  for (const Row& row : rows) {
    auto buffer = cursor->CreateFeatureBuffer();
    if (!row.wkt.empty()) buffer.shape = platform::Geometry::FromWkt(row.wkt, newClass.spatialReference);
    for (std::size_t i = 0; i < row.values.size(); ++i) buffer.values.at(i + 2) = row.values[i];
    cursor->InsertFeature(buffer);
  }
  cursor->Flush();
  return featureClass;
}

platform::Workspace::NewFeatureClass ClassSpec(std::string name, platform::GeometryType type,
                                               const platform::SpatialReference& sr,
                                               std::vector<platform::Field> fields) {
  return {.name = std::move(name), .geometryType = type, .spatialReference = sr, .fields = std::move(fields)};
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

std::vector<platform::Value> Column(platform::FeatureClass& featureClass, const std::string& field) {
  const auto index = static_cast<std::size_t>(featureClass.FindField(field));
  std::vector<platform::Value> values;
  for (auto& feature : ReadAll(featureClass)) values.push_back(std::move(feature.values.at(index)));
  return values;
}

std::vector<platform::Value> Column(const std::string& layerSource, const std::string& field) {
  return Column(*platform::OpenFeatureLayer(layerSource).featureClass, field);
}

}  // namespace tarnwick::testkit
