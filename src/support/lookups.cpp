#include "support/lookups.h"

#include <algorithm>
#include <cctype>

#include "errors/error_road.h"
#include "platform/host/map_document.h"
#include "platform/spatial_reference.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "MyGeneralOperations";
using platform::FieldType;
using platform::GeometryType;

// True when the mask's binary text (of the given width) has a "1" for bit.
bool HasBit(const std::string& binary, int bit) {
  const auto index = static_cast<long>(binary.size()) - 1 - bit;
  return index >= 0 && binary[static_cast<std::size_t>(index)] == '1';
}

int FieldMaskBit(FieldType type) {
  switch (type) {
    case FieldType::String: return 0;
    case FieldType::SmallInteger:
    case FieldType::Integer:
    case FieldType::Single:
    case FieldType::Double: return 1;
    case FieldType::Date: return 2;
    case FieldType::OID: return 3;
    case FieldType::Geometry: return 4;
    case FieldType::Blob: return 5;
    case FieldType::Raster: return 6;
    case FieldType::GUID: return 7;
    case FieldType::GlobalID: return 8;
    case FieldType::XML: return 9;
  }
  return -1;
}
}  // namespace

bool CaseInsensitiveLess::operator()(std::string_view a, std::string_view b) const {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) < std::tolower(static_cast<unsigned char>(y));
  });
}

bool CompareSpatialReferences(const platform::SpatialReference* a, const platform::SpatialReference* b,
                              bool& equal, bool& xyPrecisionEqual) {
  return Guarded("CompareSpatialReferences", kModule, [&] {
    if (!a && !b) return true;
    if (!a || !b) return false;
    equal = a->FactoryCode() == b->FactoryCode();
    if (!equal) return false;
    // References here carry no precision of their own: equal references
    // share it.
    xyPrecisionEqual = true;
    return xyPrecisionEqual;
  });
}

platform::SpatialReference CreateSpatialReferenceWGS84() {
  return Guarded("CreateSpatialReferenceWGS84", kModule, [&] { return platform::SpatialReference::FromEpsg(4326); });
}

bool FieldIsNumeric(FieldType type) {
  return type == FieldType::SmallInteger || type == FieldType::Integer || type == FieldType::Single ||
         type == FieldType::Double;
}

bool FieldIsString(FieldType type) { return type == FieldType::String; }

std::string ReturnEsriFieldTypeNameFromNumber(int type) {
  static constexpr const char* kNames[] = {
      "esriFieldTypeSmallInteger", "esriFieldTypeInteger", "esriFieldTypeSingle",   "esriFieldTypeDouble",
      "esriFieldTypeString",       "esriFieldTypeDate",    "esriFieldTypeOID",      "esriFieldTypeGeometry",
      "esriFieldTypeBlob",         "esriFieldTypeRaster",  "esriFieldTypeGUID",     "esriFieldTypeGlobalID",
      "esriFieldTypeXML"};
  return type >= 0 && type < 13 ? kNames[type] : "";
}

std::string ReturnEsriFieldTypeNameFromNumber_Friendly(int type) {
  static constexpr const char* kNames[] = {"Short Integer", "Long Integer", "Float",  "Double",    "Text",
                                           "Date",          "Object ID",    "Geometry", "Blob",    "Raster",
                                           "GUID",          "Global ID",    "XML"};
  return type >= 0 && type < 13 ? kNames[type] : "";
}

std::string ConvertLongBinary(long value, int width) {
  return Guarded("ConvertLongBinary", kModule, [&] {
    std::string binary;
    auto v = static_cast<unsigned long>(value);
    do {
      binary.insert(binary.begin(), static_cast<char>('0' + (v & 1UL)));
      v >>= 1;
    } while (v != 0);
    if (static_cast<int>(binary.size()) < width) binary.insert(0, width - binary.size(), '0');
    return binary;
  });
}

std::vector<platform::Field> ReturnFieldsByType(const std::vector<platform::Field>& fields, long mask) {
  return Guarded("ReturnFieldsByType", kModule, [&] {
    const std::string binary = ConvertLongBinary(mask, 10);
    std::vector<platform::Field> chosen;
    for (const auto& field : fields) {
      if (HasBit(binary, FieldMaskBit(field.type))) chosen.push_back(field);
    }
    return chosen;
  });
}

std::vector<platform::FeatureLayer> ReturnLayersByType(platform::host::Map& map, long mask) {
  return Guarded("ReturnLayersByType", kModule, [&] {
    const std::string binary = ConvertLongBinary(mask, 9);
    std::vector<platform::FeatureLayer> chosen;
    for (const auto& layer : map.Layers()) {
      if (!layer.valid || !layer.featureClass) continue;
      bool take = HasBit(binary, 0);
      if (!take) {
        switch (layer.featureClass->ShapeType()) {
          case GeometryType::Point: take = HasBit(binary, 3); break;
          case GeometryType::Polyline: take = HasBit(binary, 4); break;
          case GeometryType::Polygon: take = HasBit(binary, 5); break;
          case GeometryType::Multipoint: take = HasBit(binary, 6); break;
          default: break;
        }
      }
      if (take) chosen.push_back(layer);
    }
    return chosen;
  });
}

}  // namespace tarnwick
