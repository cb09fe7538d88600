// Field types of this system against OGR field types and subtypes.
#include <algorithm>

#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform::internal {

Field FieldFromOgr(const OGRFieldDefn& defn, WorkspaceKind kind) {
  Field field;
  field.name = defn.GetNameRef();
  const char* alias = defn.GetAlternativeNameRef();
  field.alias = (alias && *alias) ? alias : field.name;
  field.nullable = defn.IsNullable() != FALSE;
  const bool shapefile = kind == WorkspaceKind::ShapefileFolder;
  switch (defn.GetType()) {
    case OFTInteger:
      // Shapefiles have no small-integer type; a width of up to 5 digits stands for it.
      field.type = defn.GetSubType() == OFSTInt16 || (shapefile && defn.GetWidth() > 0 && defn.GetWidth() <= 5)
                       ? FieldType::SmallInteger
                       : FieldType::Integer;
      field.precision = defn.GetWidth();
      break;
    case OFTInteger64:
      field.type = FieldType::Integer;
      field.precision = defn.GetWidth();
      break;
    case OFTReal:
      field.type = defn.GetSubType() == OFSTFloat32 ? FieldType::Single : FieldType::Double;
      field.precision = defn.GetWidth();
      field.scale = defn.GetPrecision();
      break;
    case OFTDate:
    case OFTDateTime:
    case OFTTime:
      field.type = FieldType::Date;
      break;
    case OFTBinary:
      field.type = FieldType::Blob;
      break;
    default:
      field.type = defn.GetSubType() == OFSTUUID ? FieldType::GUID : FieldType::String;
      field.length = defn.GetWidth();
      break;
  }
  return field;
}

std::unique_ptr<OGRFieldDefn> OgrFromField(const Field& field, WorkspaceKind kind) {
  const bool shapefile = kind == WorkspaceKind::ShapefileFolder;
  auto owned = std::make_unique<OGRFieldDefn>(field.name.c_str(), OFTString);
  OGRFieldDefn& defn = *owned;
  switch (field.type) {
    case FieldType::SmallInteger:
      defn.SetType(OFTInteger);
      if (shapefile) {
        defn.SetWidth(field.precision > 0 ? std::min(field.precision, 5) : 5);
      } else {
        defn.SetSubType(OFSTInt16);
      }
      break;
    case FieldType::Integer:
      defn.SetType(OFTInteger);
      if (shapefile) defn.SetWidth(field.precision > 5 ? field.precision : 9);
      break;
    case FieldType::Single:
      defn.SetType(OFTReal);
      if (!shapefile) defn.SetSubType(OFSTFloat32);
      defn.SetWidth(field.precision);
      defn.SetPrecision(field.scale);
      break;
    case FieldType::Double:
      defn.SetType(OFTReal);
      defn.SetWidth(field.precision);
      defn.SetPrecision(field.scale);
      break;
    case FieldType::Date:
      defn.SetType(shapefile ? OFTDate : OFTDateTime);
      break;
    case FieldType::Blob:
      defn.SetType(shapefile ? OFTString : OFTBinary);
      break;
    default:
      defn.SetType(OFTString);
      defn.SetWidth(field.length > 0 ? field.length : (shapefile ? 254 : 0));
      break;
  }
  if (!shapefile) {
    defn.SetNullable(field.nullable ? TRUE : FALSE);
    if (!field.alias.empty() && field.alias != field.name) defn.SetAlternativeName(field.alias.c_str());
  }
  return owned;
}

}  // namespace tarnwick::platform::internal
