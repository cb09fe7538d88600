#include "standids/transfer_texts.h"

#include <string>

#include "support/lookups.h"

namespace tarnwick {

namespace {
const std::string kNotCode = "[NOTE: This is not Python or VB Code!]";
const std::string kEnd = "\r\n";

std::string DirectionText(platform::TransformDirection direction) {
  return direction == platform::TransformDirection::Forward ? "FORWARD" : "REVERSE";
}
}  // namespace

std::string AddedFieldLogLine(const std::string& opening, const std::string& pointDatasetName,
                              const platform::Field& field) {
  std::string extra;
  if (field.type == platform::FieldType::String) {
    extra = ", Field_Length = '" + std::to_string(field.length) + "'";
  } else if (field.type == platform::FieldType::Double) {
    extra = ", Field_Scale = '" + std::to_string(field.scale) + "', Field_Precision = '" +
            std::to_string(field.precision) + "'";
  }
  const std::string alias = field.alias.empty() ? field.name : field.alias;
  return kNotCode + opening + pointDatasetName + ":  Field Name = '" + field.name + "', Field_Alias = '" + alias +
         "' & Field_Type = '" + ReturnEsriFieldTypeNameFromNumber(static_cast<int>(field.type)) + "'" + extra + "]";
}

std::string AdditionalFieldListText(const std::vector<std::string>& names) {
  if (names.empty()) return "<-None->";
  std::string text = "<";
  for (size_t i = 0; i < names.size(); ++i) text += (i ? ", " : "") + names[i];
  return text + ">";
}

std::string TransferSummaryLogLine(const TransferTextItems& items) {
  std::string line = kNotCode + "[Import Stand IDs to Point Feature Class: Stand_Layer = '" + items.standLayer +
                     "', Stand_ID_Field = '" + items.standIdField + "', Additional Stand Fields to Import = " +
                     AdditionalFieldListText(items.additionalFields) + ", Point_Layer = '" + items.pointLayer +
                     "', Point_Stand_ID_Field = '" + items.pointStandIdField +
                     "', Stand_Layer_Spatial_Reference = '" + items.standSpatialReference +
                     "', Point_Layer_Spatial_Reference = '" + items.pointSpatialReference + "', ";
  if (items.transformation) {
    line += "Geographic_Transformation = '" + items.transformation->name + "', Transformation_Direction = '" +
            DirectionText(items.direction) + "']";
  } else {
    line += "Geographic_Transformation = <-None->, Transformation_Direction = <-None->]";
  }
  return line;
}

std::string TransferProcessDescription(const TransferTextItems& items, const std::string& standLocation,
                                       const std::string& pointLocation) {
  std::string text = "Imported Stand ID values";
  if (!items.additionalFields.empty()) text += " and additional stand attributes";
  text += " from Stand Polygon Layer '" + items.standLayer + "' to Plot Point Layer '" + items.pointLayer + "'. ";
  text += items.standLayer + " is located at '" + standLocation + "'. ";
  text += items.pointLayer + " is located at '" + pointLocation + "'. ";
  return text;
}

std::string BuildTransferReport(const TransferTextItems& items, const std::string& elapsed) {
  std::string r;
  auto line = [&r](const std::string& text) { r += text + kEnd; };
  line(R"({\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fswiss\fcharset0 Arial;}{\f1\fnil\fcharset0 MS Sans Serif;}})");
  line(R"({\colortbl ;\red0\green0\blue255;})");
  line(R"(\viewkind4\uc1\pard\qc\tx360\b\f0\fs20 Import Complete\b0 )");
  line(R"(\par \pard\tx360\ul\b\fs16 Parameters)");
  line(R"(\par \cf1\ulnone Stand Feature Layer: \b0  \cf0 )" + items.standLayer);
  line(R"(\par \cf1\b Stand ID Field: \b0  \cf0 )" + items.standIdField);
  line(R"(\par \cf1\b Additional Stand Attributes:\cf0\b0 )");
  if (items.additionalFields.empty()) {
    line(R"(\par \tab <-None->)");
  } else {
    // The list reads "1] Age": a closing bracket only.
    for (size_t i = 0; i < items.additionalFields.size(); ++i) {
      line(R"(\par \tab )" + std::to_string(i + 1) + "] " + items.additionalFields[i]);
    }
  }
  line(R"(\par \cf1\b Stand Coordinate System:\b0  \cf0  )" + items.standSpatialReference);
  line(R"(\par )");
  line(R"(\par \cf1\b Point Feature Layer:\b0   \cf0 )" + items.pointLayer);
  line(R"(\par \cf1\b Point ID FIeld: \b0  \cf0 )" + items.pointStandIdField);
  line(R"(\par \cf1\b Point Coordinate System:\cf0  \b0  )" + items.pointSpatialReference);
  line(R"(\par )");
  if (items.transformation) {
    line(R"(\par \cf1\b Geographic Transformation:\b0  \cf0  )" + items.transformation->name);
    line(R"(\par \cf1\b Transformation Direction: \cf0\b0  )" + DirectionText(items.direction) + R"(\fs20 )");
  } else {
    line(R"(\par \cf1\b Geographic Transformation:\b0  \cf0  <-None->)");
    line(R"(\par \cf1\b Transformation Direction: \cf0\b0  <-None->\fs20 )");
  }
  if (!items.repairedStands.empty()) {
    line(R"(\par \ul\b Notes:\ulnone\b0 )");
    for (const auto& stand : items.repairedStands) {
      line(R"(\par \tab Stand )" + stand +
           ": its polygon is not valid; points were tested against a repaired copy (the layer is unchanged).");
    }
    line(R"(\par )");
  }
  line(R"(\par \pard\qc\tx360\fs16 ----------------------------------)");
  line(R"(\par \i )" + elapsed + R"(\i0\fs20 )");
  line(R"(\par \pard\f1\fs17 )");
  line(R"(\par })");
  line(" ");
  return r;
}

}  // namespace tarnwick
