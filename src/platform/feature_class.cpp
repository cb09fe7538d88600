// A feature class on one OGR layer: its fields, extent, counts and the
// conversion of OGR features to and from this system's Feature.
#include <cstdint>
#include <cstdio>

#include "platform/errors.h"
#include "platform/internal/geometry_impl.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"
#include "platform/internal/spatial_reference_impl.h"

namespace tarnwick::platform {

int FeatureClass::FindField(const std::string& name) const {
  const auto& fields = Fields();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (EQUAL(fields[i].name.c_str(), name.c_str())) return static_cast<int>(i);
  }
  return -1;
}

namespace internal {

namespace {

constexpr const char* kSource = "FeatureClass";
constexpr int kFirstAttribute = 2;  // slots 0 and 1 hold the OID and the shape

std::string DateText(OGRFeature& feature, int index) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, zone = 0;
  float second = 0;
  feature.GetFieldAsDateTime(index, &year, &month, &day, &hour, &minute, &second, &zone);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", year, month, day, hour, minute,
                static_cast<int>(second));
  return text;
}

// A whole number too large for a small or long integer field raises
// Overflow rather than being clipped by the store.
void CheckIntegerRange(const OGRFieldDefn& field, std::int64_t value) {
  std::int64_t low = INT64_MIN, high = INT64_MAX;
  if (field.GetType() == OFTInteger && field.GetSubType() == OFSTInt16) {
    low = INT16_MIN;
    high = INT16_MAX;
  } else if (field.GetType() == OFTInteger) {
    low = INT32_MIN;
    high = INT32_MAX;
  }
  if (value < low || value > high) {
    throw PlatformError(kErrOverflow, kSource,
                        "Overflow: " + std::to_string(value) + " does not fit field '" + field.GetNameRef() + "'");
  }
}

}  // namespace

OgrFeatureClass::OgrFeatureClass(std::shared_ptr<OgrWorkspace> workspace, OGRLayer* layer)
    : workspace_(std::move(workspace)), layer_(layer), name_(layer->GetName()) {
  spatialReference_ = FromOgr(layer_->GetSpatialRef());
  ReadFields();
}

OGRLayer& OgrFeatureClass::Layer() const {
  if (layer_ == nullptr) {
    throw PlatformError(kErrObjectNotSet, kSource,
                        "The feature class '" + name_ + "' no longer exists (made in an edit that was not saved)");
  }
  return *layer_;
}

void OgrFeatureClass::Rebind(OGRLayer* layer, bool staged) {
  layer_ = layer;
  staged_ = layer != nullptr && staged;
  if (layer_ == nullptr) return;
  spatialReference_ = FromOgr(layer_->GetSpatialRef());
  ReadFields();
}

std::string OgrFeatureClass::StorageFullPath() const {
  return workspace_->StorageFolder(name_) + "/" + name_ + ".shp";
}

void OgrFeatureClass::ReadFields() {
  fields_.clear();
  std::string oid = Layer().GetFIDColumn();
  if (oid.empty()) oid = "FID";
  std::string shape = Layer().GetGeometryColumn();
  if (shape.empty()) shape = "Shape";
  fields_.push_back(Field{oid, oid, FieldType::OID, 0, 0, 0, false});
  fields_.push_back(Field{shape, shape, FieldType::Geometry, 0, 0, 0, true});
  OGRFeatureDefn* defn = Layer().GetLayerDefn();
  for (int i = 0; i < defn->GetFieldCount(); ++i) fields_.push_back(FieldFromOgr(*defn->GetFieldDefn(i), workspace_->Kind()));
}

std::string OgrFeatureClass::FullPath() const {
  const std::string& base = workspace_->PathName();
  if (workspace_->Kind() == WorkspaceKind::ShapefileFolder) return base + "/" + name_ + ".shp";
  return base + "/" + name_;
}

void OgrFeatureClass::AddField(const Field& field) {
  workspace_->RequireWritable("add field '" + field.name + "' to '" + name_ + "'");
  workspace_->PrepareToWrite(*this);
  QuietGdalErrors quiet;
  auto defn = OgrFromField(field, workspace_->Kind());
  if (Layer().CreateField(defn.get()) != OGRERR_NONE) {
    ThrowGdalError(kSource, "Cannot add field '" + field.name + "' to '" + name_ + "'");
  }
  ReadFields();
}

GeometryType OgrFeatureClass::ShapeType() const {
  switch (wkbFlatten(Layer().GetGeomType())) {
    case wkbPoint: return GeometryType::Point;
    case wkbMultiPoint: return GeometryType::Multipoint;
    case wkbLineString:
    case wkbMultiLineString: return GeometryType::Polyline;
    case wkbPolygon:
    case wkbMultiPolygon: return GeometryType::Polygon;
    default: return GeometryType::Null;
  }
}

bool OgrFeatureClass::HasZ() const { return OGR_GT_HasZ(Layer().GetGeomType()) != FALSE; }
bool OgrFeatureClass::HasM() const { return OGR_GT_HasM(Layer().GetGeomType()) != FALSE; }

Envelope OgrFeatureClass::Extent() {
  QuietGdalErrors quiet;
  ApplyFilter("");
  OGREnvelope e;
  if (Layer().GetFeatureCount(TRUE) == 0 || Layer().GetExtent(&e, TRUE) != OGRERR_NONE) return Envelope{};
  return {e.MinX, e.MinY, e.MaxX, e.MaxY, false};
}

void OgrFeatureClass::ApplyFilter(const std::string& where) {
  QuietGdalErrors quiet;
  Layer().SetSpatialFilter(nullptr);
  if (Layer().SetAttributeFilter(where.empty() ? nullptr : where.c_str()) != OGRERR_NONE) {
    std::string message = WithGdalReason("Invalid where clause '" + where + "' on '" + name_ + "'");
    Layer().SetAttributeFilter(nullptr);
    throw PlatformError(kErrPlatform, kSource, message);
  }
  Layer().ResetReading();
}

std::int64_t OgrFeatureClass::FeatureCount(const std::string& where) {
  ApplyFilter(where);
  QuietGdalErrors quiet;
  const GIntBig count = Layer().GetFeatureCount(TRUE);
  if (!where.empty()) Layer().SetAttributeFilter(nullptr);
  ThrowIfReadFailed(where);
  return count;
}

std::vector<std::int64_t> OgrFeatureClass::Select(const std::string& where) {
  ApplyFilter(where);
  QuietGdalErrors quiet;
  std::vector<std::int64_t> oids;
  for (auto& feature : Layer()) oids.push_back(feature->GetFID());
  if (!where.empty()) Layer().SetAttributeFilter(nullptr);
  ThrowIfReadFailed(where);
  return oids;
}

void OgrFeatureClass::ThrowIfReadFailed(const std::string& where) const {
  if (CPLGetLastErrorType() != CE_Failure && CPLGetLastErrorType() != CE_Fatal) return;
  if (where.empty()) ThrowGdalError(kSource, "Cannot read '" + name_ + "'");
  ThrowGdalError(kSource, "Invalid where clause '" + where + "' on '" + name_ + "'");
}

Feature OgrFeatureClass::ToFeature(OGRFeature& source) const {
  Feature feature;
  feature.oid = source.GetFID();
  feature.values.resize(fields_.size());
  feature.values[0] = static_cast<std::int64_t>(feature.oid);
  if (const OGRGeometry* geom = source.GetGeometryRef()) {
    feature.shape = Wrap(std::unique_ptr<OGRGeometry>(geom->clone()), spatialReference_);
  }
  for (int i = 0; i < source.GetFieldCount(); ++i) {
    if (!source.IsFieldSetAndNotNull(i)) continue;
    Value& value = feature.values[i + kFirstAttribute];
    switch (source.GetFieldDefnRef(i)->GetType()) {
      case OFTInteger:
      case OFTInteger64: value = static_cast<std::int64_t>(source.GetFieldAsInteger64(i)); break;
      case OFTReal: value = source.GetFieldAsDouble(i); break;
      case OFTDate:
      case OFTDateTime: value = DateText(source, i); break;
      default: value = std::string(source.GetFieldAsString(i)); break;
    }
  }
  return feature;
}

void OgrFeatureClass::SetOgrField(OGRFeature& target, int i, const Value& value) {
  if (IsNull(value)) {
    target.SetFieldNull(i);
  } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
    CheckIntegerRange(*target.GetFieldDefnRef(i), *integer);
    target.SetField(i, static_cast<GIntBig>(*integer));
  } else if (const auto* real = std::get_if<double>(&value)) {
    target.SetField(i, *real);
  } else {
    // Text goes into a number field only when it reads as a number, as the
    // host's own conversion would have it (Type mismatch otherwise).
    const OGRFieldType type = target.GetFieldDefnRef(i)->GetType();
    if (type == OFTInteger || type == OFTInteger64) {
      const std::int64_t number = ValueToLong(value);
      CheckIntegerRange(*target.GetFieldDefnRef(i), number);
      target.SetField(i, static_cast<GIntBig>(number));
    } else if (type == OFTReal) {
      target.SetField(i, ValueToDouble(value));
    } else {
      target.SetField(i, std::get<std::string>(value).c_str());
    }
  }
}

void OgrFeatureClass::FromFeature(const Feature& source, OGRFeature& target) const {
  const int count = target.GetFieldCount();
  for (int i = 0; i < count; ++i) {
    const std::size_t slot = static_cast<std::size_t>(i + kFirstAttribute);
    if (slot >= source.values.size()) break;
    SetOgrField(target, i, source.values[slot]);
  }
  const OGRGeometry* shape = OgrOf(source.shape);
  if (shape == nullptr) {
    target.SetGeometryDirectly(nullptr);
    return;
  }
  OGRGeometry* copy = shape->clone();
  const OGRwkbGeometryType layerType = Layer().GetGeomType();
  if (layerType != wkbUnknown && layerType != wkbNone && copy->getGeometryType() != layerType) {
    copy = OGRGeometryFactory::forceTo(copy, layerType);
  }
  target.SetGeometryDirectly(copy);
}

}  // namespace internal
}  // namespace tarnwick::platform
