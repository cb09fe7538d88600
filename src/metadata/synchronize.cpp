#include "metadata/synchronize.h"

#include <algorithm>
#include <cctype>
#include <map>

#include <fmt/format.h>

#include "platform/geometry.h"

namespace tarnwick::metadata {

namespace {

using platform::DatasetDescription;
using platform::Envelope;
using platform::FieldType;

std::string Number(double value) { return fmt::format("{}", value); }

std::string NormalisedName(std::string text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return "";
  text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

// The first child element of that name, appended when there is none.
pugi::xml_node Child(pugi::xml_node parent, const char* name) {
  pugi::xml_node child = parent.child(name);
  return child ? child : parent.append_child(name);
}

void SetChildText(pugi::xml_node parent, const char* name, const std::string& value) {
  Child(parent, name).text().set(value.c_str());
}

void SetIfEmpty(MetadataPropertySet& set, const std::string& key, const std::string& value) {
  if (set.GetProperty(key).empty()) set.SetPropertyX(key, value);
}

// The extent in geographic degrees; the dataset's own coordinates when it
// has no coordinate system or the projection fails.
Envelope GeographicExtent(const DatasetDescription& dataset) {
  const Envelope& e = dataset.extent;
  const auto& sr = dataset.spatialReference;
  if (sr.IsUnknown() || sr.IsGeographic()) return e;
  try {
    // Sample the edges so that a curved graticule is bounded properly.
    constexpr int kSteps = 16;
    platform::Ring ring;
    for (int i = 0; i < kSteps; ++i) ring.push_back({e.xMin + e.Width() * i / kSteps, e.yMin});
    for (int i = 0; i < kSteps; ++i) ring.push_back({e.xMax, e.yMin + e.Height() * i / kSteps});
    for (int i = 0; i < kSteps; ++i) ring.push_back({e.xMax - e.Width() * i / kSteps, e.yMax});
    for (int i = 0; i < kSteps; ++i) ring.push_back({e.xMin, e.yMax - e.Height() * i / kSteps});
    ring.push_back(ring.front());
    const auto polygon = platform::Geometry::MakePolygon({{ring}}, sr);
    const Envelope geographic = polygon.Project(sr.GeographicCoordinateSystem()).GetEnvelope();
    return geographic.empty ? e : geographic;
  } catch (const std::exception&) {
    return e;
  }
}

void WriteExtent(MetadataPropertySet& set, const DatasetDescription& dataset) {
  if (dataset.extent.empty) {
    set.DeleteProperty("idinfo/spdom");
    set.DeleteProperty("dataIdInfo/dataExt/geoEle");
    return;
  }
  const Envelope& native = dataset.extent;
  const Envelope geographic = GeographicExtent(dataset);
  set.SetPropertyX("idinfo/spdom/bounding/westbc", Number(geographic.xMin));
  set.SetPropertyX("idinfo/spdom/bounding/eastbc", Number(geographic.xMax));
  set.SetPropertyX("idinfo/spdom/bounding/northbc", Number(geographic.yMax));
  set.SetPropertyX("idinfo/spdom/bounding/southbc", Number(geographic.yMin));
  set.SetPropertyX("idinfo/spdom/lboundng/leftbc", Number(native.xMin));
  set.SetPropertyX("idinfo/spdom/lboundng/rightbc", Number(native.xMax));
  set.SetPropertyX("idinfo/spdom/lboundng/bottombc", Number(native.yMin));
  set.SetPropertyX("idinfo/spdom/lboundng/topbc", Number(native.yMax));
  const std::string box = "dataIdInfo/dataExt/geoEle/GeoBndBox";
  set.SetAttribute(box, "esriExtentType", "search");
  set.SetPropertyX(box + "/exTypeCode", "1");
  set.SetPropertyX(box + "/westBL", Number(geographic.xMin));
  set.SetPropertyX(box + "/eastBL", Number(geographic.xMax));
  set.SetPropertyX(box + "/southBL", Number(geographic.yMin));
  set.SetPropertyX(box + "/northBL", Number(geographic.yMax));
}

void WriteSpatialReference(MetadataPropertySet& set, const DatasetDescription& dataset) {
  const auto& sr = dataset.spatialReference;
  set.DeleteProperty("spref/horizsys/cordsysn");
  set.DeleteProperty("refSysInfo");
  if (sr.IsUnknown()) return;
  set.SetPropertyX(sr.IsGeographic() ? "spref/horizsys/cordsysn/geogcsn" : "spref/horizsys/cordsysn/projcsn",
                   sr.Name());
  if (sr.IsProjected()) {
    set.SetPropertyX("spref/horizsys/cordsysn/geogcsn", sr.GeographicCoordinateSystem().Name());
  }
  const std::string id = "refSysInfo/RefSystem/refSysID";
  set.SetPropertyX(id + "/identCode", "");
  set.SetAttribute(id + "/identCode", "code", std::to_string(sr.FactoryCode()));
  set.SetPropertyX(id + "/idCodeSpace", "EPSG");
}

std::string GeometryTermName(platform::GeometryType type) {
  switch (type) {
    case platform::GeometryType::Point:
    case platform::GeometryType::Multipoint: return "Entity point";
    case platform::GeometryType::Polyline:
    case platform::GeometryType::Line: return "String";
    case platform::GeometryType::Polygon: return "G-polygon";
    default: return "";
  }
}

void WriteCounts(MetadataPropertySet& set, const DatasetDescription& dataset) {
  const std::string count = std::to_string(dataset.featureCount);
  set.SetPropertyX("spdoinfo/direct", "Vector");
  set.SetPropertyX("spdoinfo/ptvctinf/sdtsterm/sdtstype", GeometryTermName(dataset.shapeType));
  set.SetPropertyX("spdoinfo/ptvctinf/sdtsterm/ptvctcnt", count);
  set.SetPropertyX("spatRepInfo/VectSpatRep/geometObjs/geoObjCnt", count);
  set.SetPropertyX("eainfo/detailed/enttyp/enttypl", dataset.name);
  set.SetPropertyX("eainfo/detailed/enttyp/enttypt", "Feature Class");
  set.SetPropertyX("eainfo/detailed/enttyp/enttypc", count);
}

// Describes the object ID and shape fields as the store manages them, unless
// someone has described them already.
void DescribeManagedField(pugi::xml_node attr, FieldType type) {
  const char* definition = nullptr;
  const char* domain = nullptr;
  if (type == FieldType::OID) {
    definition = "Internal feature number.";
    domain = "Sequential unique whole numbers that are automatically generated.";
  } else if (type == FieldType::Geometry) {
    definition = "Feature geometry.";
    domain = "Coordinates defining the features.";
  } else {
    return;
  }
  if (attr.child("attrdef")) return;
  SetChildText(attr, "attrdef", definition);
  SetChildText(attr, "attrdefs", "Esri");
  SetChildText(Child(attr, "attrdomv"), "udom", domain);
}

void WriteFields(MetadataPropertySet& set, const DatasetDescription& dataset) {
  set.SetPropertyX("eainfo/detailed/enttyp/enttypl", dataset.name);
  pugi::xml_node detailed = set.Root().child("eainfo").child("detailed");

  // Take the existing entries out, keyed by field name (the first of a name wins).
  std::map<std::string, pugi::xml_document> existing;
  for (pugi::xml_node attr = detailed.child("attr"); attr;) {
    pugi::xml_node next = attr.next_sibling("attr");
    const std::string key = NormalisedName(attr.child_value("attrlabl"));
    if (!existing.contains(key)) existing[key].append_copy(attr);
    detailed.remove_child(attr);
    attr = next;
  }

  for (const platform::Field& field : dataset.fields) {
    const auto found = existing.find(NormalisedName(field.name));
    pugi::xml_node attr = found != existing.end() ? detailed.append_copy(found->second.first_child())
                                                  : detailed.append_child("attr");
    SetChildText(attr, "attrlabl", field.name);
    SetChildText(attr, "attalias", field.alias.empty() ? field.name : field.alias);
    SetChildText(attr, "attrtype", FieldTypeName(field.type));
    SetChildText(attr, "attwidth", std::to_string(field.length));
    SetChildText(attr, "atprecis", std::to_string(field.precision));
    SetChildText(attr, "attscale", std::to_string(field.scale));
    DescribeManagedField(attr, field.type);
  }
}

}  // namespace

std::string FieldTypeName(FieldType type) {
  switch (type) {
    case FieldType::SmallInteger: return "SmallInteger";
    case FieldType::Integer: return "Integer";
    case FieldType::Single: return "Single";
    case FieldType::Double: return "Double";
    case FieldType::String: return "String";
    case FieldType::Date: return "Date";
    case FieldType::OID: return "OID";
    case FieldType::Geometry: return "Geometry";
    case FieldType::Blob: return "Blob";
    case FieldType::Raster: return "Raster";
    case FieldType::GUID: return "GUID";
    case FieldType::GlobalID: return "GlobalID";
    case FieldType::XML: return "XML";
  }
  return "";
}

void SynchronizeDocument(MetadataPropertySet& set, const DatasetDescription& dataset, const DateTime& now) {
  set.SetPropertyX("Esri/SyncDate", now.CompactDate());
  set.SetPropertyX("Esri/SyncTime", now.CompactTime() + "00");
  set.SetPropertyX("Esri/ModDate", now.CompactDate());
  set.SetPropertyX("Esri/ModTime", now.CompactTime() + "00");
  set.SetPropertyX("Esri/DataProperties/itemProps/itemName", dataset.name);
  set.SetPropertyX("Esri/DataProperties/itemProps/itemLocation/linkage", dataset.fullPath);
  SetIfEmpty(set, "dataIdInfo/idCitation/resTitle", dataset.name);
  SetIfEmpty(set, "idinfo/citation/citeinfo/title", dataset.name);
  set.SetPropertyX("idinfo/natvform", dataset.storeKind);
  set.SetPropertyX("distInfo/distFormat/formatName", dataset.storeKind);
  WriteExtent(set, dataset);
  WriteSpatialReference(set, dataset);
  WriteCounts(set, dataset);
  WriteFields(set, dataset);
}

}  // namespace tarnwick::metadata
