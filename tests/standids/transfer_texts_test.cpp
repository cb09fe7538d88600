#include "standids/transfer_texts.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(TransferTexts, NoAttributesAndNoTransformationReadNone) {
  TransferTextItems items;
  items.standLayer = "Stands";
  items.standIdField = "SID";
  items.pointLayer = "Plots";
  items.pointStandIdField = "SID";
  items.standSpatialReference = "A";
  items.pointSpatialReference = "B";
  const std::string report = BuildTransferReport(items, "ELAPSED");
  EXPECT_NE(report.find("Additional Stand Attributes:\\cf0\\b0 \r\n\\par \\tab <-None->\r\n\\par \\cf1\\b Stand Coordinate"),
            std::string::npos);
  EXPECT_NE(report.find("\\par \\cf1\\b Geographic Transformation:\\b0  \\cf0  <-None->\r\n"
                        "\\par \\cf1\\b Transformation Direction: \\cf0\\b0  <-None->\\fs20 \r\n"),
            std::string::npos);
  EXPECT_NE(report.find("\\par \\i ELAPSED\\i0\\fs20 \r\n\\par \\pard\\f1\\fs17 \r\n\\par }\r\n \r\n"), std::string::npos);
  EXPECT_EQ(TransferSummaryLogLine(items),
            "[NOTE: This is not Python or VB Code!][Import Stand IDs to Point Feature Class: Stand_Layer = 'Stands', "
            "Stand_ID_Field = 'SID', Additional Stand Fields to Import = <-None->, Point_Layer = 'Plots', "
            "Point_Stand_ID_Field = 'SID', Stand_Layer_Spatial_Reference = 'A', Point_Layer_Spatial_Reference = 'B', "
            "Geographic_Transformation = <-None->, Transformation_Direction = <-None->]");
  EXPECT_EQ(TransferProcessDescription(items, "/d/s", "/d/p"),
            "Imported Stand ID values from Stand Polygon Layer 'Stands' to Plot Point Layer 'Plots'. Stands is located "
            "at '/d/s'. Plots is located at '/d/p'. ");
  items.additionalFields = {"Age", "Site"};
  EXPECT_EQ(AdditionalFieldListText(items.additionalFields), "<Age, Site>");
  EXPECT_NE(BuildTransferReport(items, "").find("\\par \\tab 1] Age\r\n\\par \\tab 2] Site\r\n"), std::string::npos);
}

TEST(TransferTexts, AddedFieldLogLineCarriesLengthOrScaleAndPrecision) {
  platform::Field text{"Site", "Site Class", platform::FieldType::String, 12};
  EXPECT_EQ(AddedFieldLogLine(kAddAttributeFieldOpening, "plots", text),
            "[NOTE: This is not Python or VB Code!][Add Additional Stand Attribute Field to plots:  Field Name = "
            "'Site', Field_Alias = 'Site Class' & Field_Type = 'esriFieldTypeString', Field_Length = '12']");
  platform::Field real{"Area", "", platform::FieldType::Double, 0, 12, 6};
  EXPECT_EQ(AddedFieldLogLine(kAddStandIdFieldOpening, "plots", real),
            "[NOTE: This is not Python or VB Code!][Add Stand ID Field to plots:  Field Name = 'Area', Field_Alias = "
            "'Area' & Field_Type = 'esriFieldTypeDouble', Field_Scale = '6', Field_Precision = '12']");
}

}  // namespace
}  // namespace tarnwick
