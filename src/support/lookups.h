#pragma once
// Lookups in keyed collections, field and layer lists by kind, field type
// names, and the identity of spatial references.
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/field.h"
#include "platform/workspace.h"

namespace tarnwick::platform {
class SpatialReference;
namespace host {
class Map;
}
}  // namespace tarnwick::platform

namespace tarnwick {

// Orders keys without regard to case, as the host's keyed collections do.
struct CaseInsensitiveLess {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

template <class T>
using KeyedCollection = std::map<std::string, T, CaseInsensitiveLess>;

template <class T>
bool CollectionHasKey(const KeyedCollection<T>& collection, std::string_view key) {
  return collection.find(key) != collection.end();
}

// Two references are equal when their factory codes are; both missing counts
// as equal (the flags are then left alone), one missing as different. The
// precision flag is set only when the references are equal.
bool CompareSpatialReferences(const platform::SpatialReference* a, const platform::SpatialReference* b,
                              bool& equal, bool& xyPrecisionEqual);

// WGS 1984 (EPSG 4326).
platform::SpatialReference CreateSpatialReferenceWGS84();

// Small integer, integer, single or double.
bool FieldIsNumeric(platform::FieldType type);
bool FieldIsString(platform::FieldType type);

// "esriFieldTypeSmallInteger" ... "esriFieldTypeXML"; empty for an unknown number.
std::string ReturnEsriFieldTypeNameFromNumber(int type);
// "Short Integer", "Long Integer", "Float", "Double", "Text", "Date", ...
std::string ReturnEsriFieldTypeNameFromNumber_Friendly(int type);

// value in binary, most significant digit first, padded with "0" to width.
std::string ConvertLongBinary(long value, int width);

// Field mask bits: 1 text, 2 numeric, 4 date, 8 OID, 16 geometry, 32 blob,
// 64 raster, 128 GUID, 256 global ID, 512 XML.
std::vector<platform::Field> ReturnFieldsByType(const std::vector<platform::Field>& fields, long mask);

// Layer mask bits: 1 any feature layer, else by shape: 8 point, 16 polyline,
// 32 polygon, 64 multipoint. Only valid layers, in map order.
std::vector<platform::FeatureLayer> ReturnLayersByType(platform::host::Map& map, long mask);

}  // namespace tarnwick
