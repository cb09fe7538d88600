// The edits the routines make, on a document in memory.
#include <gtest/gtest.h>

#include "metadata/attribute_field.h"
#include "metadata/contacts.h"
#include "metadata/element_index.h"
#include "metadata/geoprocessing_event.h"
#include "metadata/identification.h"

namespace tarnwick::metadata {
namespace {

ContactRecord Forester() {
  ContactRecord c;
  c.individualName = "Ann Lee";
  c.organisation = "Tarnwick, LLC";
  c.telephone = "555-0100";
  c.city = "Corvallis";
  c.email = "ann@example.com";
  c.roleIndex = 7;
  c.addressTypeIndex = 2;
  return c;
}

TEST(Contacts, FirstContactAtZeroWithItsTextsRoleAndAddressType) {
  MetadataPropertySet set;
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Metadata, Forester(), true), "");
  EXPECT_EQ(set.GetProperty("mdContact[0]/rpIndName"), "Ann Lee");
  EXPECT_EQ(set.GetProperty("mdContact[0]/rpOrgName"), "Tarnwick, LLC");
  EXPECT_EQ(set.GetProperty("mdContact[0]/rpCntInfo/cntPhone/voiceNum"), "555-0100");
  EXPECT_EQ(set.GetProperty("mdContact[0]/rpCntInfo/cntAddress/city"), "Corvallis");
  EXPECT_EQ(set.GetProperty("mdContact[0]/rpCntInfo/cntAddress/eMailAdd"), "ann@example.com");
  EXPECT_EQ(set.GetProperty("mdContact[0]/role/RoleCd/@value"), "007");
  EXPECT_EQ(set.GetProperty("mdContact[0]/rpCntInfo/cntAddress/@addressType"), "physical");
  // Blank texts are left out.
  EXPECT_EQ(set.GetXml("mdContact[0]/rpPosName"), "");
  EXPECT_EQ(set.GetXml("mdContact[0]/rpCntInfo/cntAddress/postCode"), "");
}

TEST(Contacts, PresentContactIsNotAddedTwiceButADifferentOneIs) {
  MetadataPropertySet set;
  AddContactToDocument(set, ContactKind::Citation, Forester(), true);
  const std::string before = set.GetXml();
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Citation, Forester(), true), "Citation Contact Already Present");
  EXPECT_EQ(set.GetXml(), before);

  ContactRecord otherRole = Forester();
  otherRole.roleIndex = 9;
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Citation, otherRole, true), "");
  EXPECT_EQ(set.GetProperty("dataIdInfo/idCitation/citRespParty[1]/role/RoleCd/@value"), "009");
  ContactRecord otherAddressType = Forester();
  otherAddressType.addressTypeIndex = 4;
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Citation, otherAddressType, true), "");
  // Without the check the same contact goes in again.
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Citation, Forester(), false), "");
  EXPECT_EQ(LastElementIndex(set, "dataIdInfo/idCitation/citRespParty"), 3);
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Resource, Forester(), true), "");
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Resource, Forester(), true), "Resource Contact Already Present");
}

TEST(Contacts, BlankNameIsWrittenAndAddressTypeFourOmitsTheAttributeWhileZeroWritesSkip) {
  MetadataPropertySet set;
  ContactRecord blank;
  blank.roleIndex = 11;
  blank.addressTypeIndex = 4;
  AddContactToDocument(set, ContactKind::Metadata, blank, false);
  EXPECT_EQ(set.GetXml("mdContact[0]/rpIndName"), "<rpIndName />\n");
  EXPECT_EQ(set.GetXml("mdContact[0]/rpOrgName"), "");
  EXPECT_EQ(set.GetXml("mdContact[0]/rpCntInfo"), "");
  EXPECT_EQ(set.GetProperty("mdContact[0]/role/RoleCd/@value"), "011");

  blank.addressTypeIndex = 0;
  AddContactToDocument(set, ContactKind::Metadata, blank, true);  // differs in address type
  EXPECT_EQ(set.GetProperty("mdContact[1]/rpCntInfo/cntAddress/@addressType"), "skip");
  // The blank contact counts as present, missing elements reading as empty.
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Metadata, blank, true), "Metadata Contact Already Present");
}

TEST(LineageStep, WritesDescriptionDateProcessorAndDisplayName) {
  MetadataPropertySet set;
  LineageProcessStep step;
  step.description = "Generated plots.";
  step.date = {2021, 6, 30, 14, 5, 0};
  step.contact.individualName = "ann";
  step.contact.roleIndex = 9;
  step.contact.addressTypeIndex = 4;
  AddLineageStepToDocument(set, step);
  step.description = "Second run.";
  AddLineageStepToDocument(set, step);
  EXPECT_EQ(set.GetProperty("dqInfo/dataLineage/prcStep[0]/stepDesc"), "Generated plots.");
  EXPECT_EQ(set.GetProperty("dqInfo/dataLineage/prcStep[0]/stepDateTm"), "2021-06-30T14:05:00");
  EXPECT_EQ(set.GetProperty("dqInfo/dataLineage/prcStep[0]/stepProc/rpIndName"), "ann");
  EXPECT_EQ(set.GetProperty("dqInfo/dataLineage/prcStep[0]/stepProc/displayName"), "ann");
  EXPECT_EQ(set.GetProperty("dqInfo/dataLineage/prcStep[0]/stepProc/role/RoleCd/@value"), "009");
  EXPECT_EQ(set.GetXml("dqInfo/dataLineage/prcStep[0]/stepProc/rpCntInfo"), "");
  EXPECT_EQ(set.GetProperty("dqInfo/dataLineage/prcStep[1]/stepDesc"), "Second run.");
}

TEST(GeoprocessingHistory, EventTextWithToolSourceDateTimeNameAndExport) {
  MetadataPropertySet set;
  GeoprocessingEvent event{"NOTE:  params", "Plot Layout tool [/opt/Tarnwick.dll", {2020, 12, 31, 23, 59, 58},
                           "GeneratePlotLayout", true};
  AddGeoprocessingEventToDocument(set, event);
  event.exportFlag = false;
  event.eventText = "second";
  AddGeoprocessingEventToDocument(set, event);
  const std::string first = "Esri/DataProperties/lineage/Process[0]";
  EXPECT_EQ(set.GetProperty(first), "NOTE:  params");
  EXPECT_EQ(set.GetProperty(first + "/@ToolSource"), "Plot Layout tool [/opt/Tarnwick.dll");
  EXPECT_EQ(set.GetProperty(first + "/@Date"), "20201231");
  EXPECT_EQ(set.GetProperty(first + "/@Time"), "235958");
  EXPECT_EQ(set.GetProperty(first + "/@Name"), "GeneratePlotLayout");
  EXPECT_EQ(set.GetProperty(first + "/@export"), "True");
  EXPECT_EQ(set.GetProperty("Esri/DataProperties/lineage/Process[1]"), "second");
  EXPECT_EQ(set.GetXml("Esri/DataProperties/lineage/Process[1]").find("export=\"\"") != std::string::npos, true);
}

TEST(Keywords, GivenListsReplaceTheirKeysAndAbsentOrEmptyListsLeaveThem) {
  MetadataPropertySet set;
  set.SetPropertyX("dataIdInfo/themeKeys/keyword[0]", "old theme");
  set.SetPropertyX("dataIdInfo/themeKeys/keyword[1]", "older theme");
  set.SetPropertyX("dataIdInfo/searchKeys/keyword[0]", "kept search");
  set.SetPropertyX("idinfo/keywords/place/placekey[0]", "kept place");
  MetadataKeywords keywords;
  keywords.theme = std::vector<std::string>{"Stand", "Plot Layout"};
  keywords.search = std::vector<std::string>{};  // empty: left alone
  keywords.stratum = std::vector<std::string>{"Tarnwick, LLC"};
  SetKeywordsInDocument(set, keywords);
  EXPECT_EQ(set.GetProperty("dataIdInfo/themeKeys/keyword[0]"), "Stand");
  EXPECT_EQ(set.GetProperty("dataIdInfo/themeKeys/keyword[1]"), "Plot Layout");
  EXPECT_EQ(LastElementIndex(set, "dataIdInfo/themeKeys/keyword"), 1);
  EXPECT_EQ(set.GetProperty("dataIdInfo/StratKeys/keyword[0]"), "Tarnwick, LLC");
  EXPECT_EQ(set.GetProperty("dataIdInfo/searchKeys/keyword[0]"), "kept search");
  EXPECT_EQ(set.GetProperty("idinfo/keywords/place/placekey[0]"), "kept place");
}

class AttributeFieldInDocument : public ::testing::Test {
 protected:
  void SetUp() override {
    set.SetPropertyX("eainfo/detailed/attr[0]/attrlabl", "FID");
    set.SetPropertyX("eainfo/detailed/attr[1]/attrlabl", " StandID ");
    set.SetPropertyX("eainfo/detailed/attr[1]/attrdef", "old definition");
    set.SetPropertyX("eainfo/detailed/attr[1]/attrdomv/udom", "old udom");
  }
  MetadataPropertySet set;
};

TEST_F(AttributeFieldInDocument, FieldIsFoundTrimmedAndWithoutRegardToCase) {
  EXPECT_EQ(AttributeFieldIndex(set, "standid"), 1);
  EXPECT_EQ(AttributeFieldIndex(set, "FID "), 0);
  EXPECT_EQ(AttributeFieldIndex(set, "PlotID"), -1);
}

TEST_F(AttributeFieldInDocument, WritesNonBlankPartsAndSkipsAllBlankEnumeratedColumns) {
  AttributeFieldMetadata f;
  f.definition = "ID Value of stand";
  f.definitionSource = "Stands";
  f.units = "Stand ID Values";
  f.rangeMinimum = "  ";  // blank once trimmed
  f.enumerated = EnumeratedDomain{{{"1", "One", "Me"}, {"", " ", ""}, {"2", "", "You"}}, false};
  f.clearFirst = true;
  SetAttributeFieldInDocument(set, 1, f);
  const std::string attr = "eainfo/detailed/attr[1]";
  EXPECT_EQ(set.GetProperty(attr + "/attrdef"), "ID Value of stand");
  EXPECT_EQ(set.GetProperty(attr + "/attrdefs"), "Stands");
  EXPECT_EQ(set.GetProperty(attr + "/attrdomv/rdom/attrunit"), "Stand ID Values");
  EXPECT_EQ(set.GetXml(attr + "/attrdomv/rdom/rdommin"), "");
  EXPECT_EQ(set.GetXml(attr + "/attrdomv/udom"), "");  // cleared first
  EXPECT_EQ(set.GetProperty(attr + "/attrdomv/edom[0]/edomv"), "1");
  EXPECT_EQ(set.GetProperty(attr + "/attrdomv/edom[1]/edomv"), "2");  // the blank column used no index
  EXPECT_EQ(set.GetProperty(attr + "/attrdomv/edom[1]/edomvds"), "You");
  EXPECT_EQ(set.GetXml(attr + "/attrdomv/edom[1]/edomvd"), "");
  EXPECT_EQ(LastElementIndex(set, attr + "/attrdomv/edom"), 1);
}

TEST_F(AttributeFieldInDocument, WithoutClearingOldPartsStayAndWrongShapeLeavesEnumeratedOut) {
  AttributeFieldMetadata f;
  f.definition = "new definition";
  f.enumerated = EnumeratedDomain{{{"1", "One", "Me"}}, true};
  SetAttributeFieldInDocument(set, 1, f);
  EXPECT_EQ(set.GetProperty("eainfo/detailed/attr[1]/attrdef"), "new definition");
  EXPECT_EQ(set.GetProperty("eainfo/detailed/attr[1]/attrdomv/udom"), "old udom");
  EXPECT_EQ(set.GetXml("eainfo/detailed/attr[1]/attrdomv/edom"), "");
}

}  // namespace
}  // namespace tarnwick::metadata
