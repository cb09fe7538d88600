// The keyed XML document (addressing, repeated elements, attributes,
// deletion, parsing) and the edits the routines make on it in memory.
#include <gtest/gtest.h>

#include <stdexcept>

#include "dataset_fixture.h"
#include "metadata/attribute_field.h"
#include "metadata/contacts.h"
#include "metadata/element_index.h"
#include "metadata/geoprocessing_event.h"
#include "metadata/identification.h"
#include "metadata/property_set.h"

namespace tarnwick::metadata {
namespace {

using test::ExpectAbsent;
using test::ExpectProperties;

ContactRecord Forester() {
  return {.individualName = "Ann Lee", .organisation = "Tarnwick, LLC", .telephone = "555-0100", .city = "Corvallis",
          .email = "ann@example.com", .roleIndex = 7, .addressTypeIndex = 2};
}

TEST(Contacts, FirstContactAtZeroWithItsTextsRoleAndAddressType) {
  MetadataPropertySet set;
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Metadata, Forester(), true), "");
  ExpectProperties(set,
                   {{"rpIndName", "Ann Lee"}, {"rpOrgName", "Tarnwick, LLC"},
                    {"rpCntInfo/cntPhone/voiceNum", "555-0100"}, {"rpCntInfo/cntAddress/city", "Corvallis"},
                    {"rpCntInfo/cntAddress/eMailAdd", "ann@example.com"}, {"role/RoleCd/@value", "007"},
                    {"rpCntInfo/cntAddress/@addressType", "physical"}},
                   "mdContact[0]/");
  // Blank texts are left out.
  ExpectAbsent(set, {"rpPosName", "rpCntInfo/cntAddress/postCode"}, "mdContact[0]/");
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

  // A blank name is written; address type 4 leaves the contact information
  // out, while 0 writes "skip".
  ContactRecord blank{.roleIndex = 11, .addressTypeIndex = 4};
  AddContactToDocument(set, ContactKind::Metadata, blank, false);
  EXPECT_EQ(set.GetXml("mdContact[0]/rpIndName"), "<rpIndName />\n");
  ExpectAbsent(set, {"rpOrgName", "rpCntInfo"}, "mdContact[0]/");
  EXPECT_EQ(set.GetProperty("mdContact[0]/role/RoleCd/@value"), "011");
  blank.addressTypeIndex = 0;
  AddContactToDocument(set, ContactKind::Metadata, blank, true);  // differs in address type
  EXPECT_EQ(set.GetProperty("mdContact[1]/rpCntInfo/cntAddress/@addressType"), "skip");
  // The blank contact counts as present, missing elements reading as empty.
  EXPECT_EQ(AddContactToDocument(set, ContactKind::Metadata, blank, true), "Metadata Contact Already Present");
}

TEST(Lineage, StepsAndGeoprocessingEventsKeepEveryPart) {
  MetadataPropertySet set;
  LineageProcessStep step{.description = "Generated plots.", .date = {2021, 6, 30, 14, 5, 0},
                          .contact = {.individualName = "ann", .roleIndex = 9, .addressTypeIndex = 4}};
  AddLineageStepToDocument(set, step);
  step.description = "Second run.";
  AddLineageStepToDocument(set, step);
  ExpectProperties(set,
                   {{"[0]/stepDesc", "Generated plots."}, {"[0]/stepDateTm", "2021-06-30T14:05:00"},
                    {"[0]/stepProc/rpIndName", "ann"}, {"[0]/stepProc/displayName", "ann"},
                    {"[0]/stepProc/role/RoleCd/@value", "009"}, {"[1]/stepDesc", "Second run."}},
                   "dqInfo/dataLineage/prcStep");
  ExpectAbsent(set, {"dqInfo/dataLineage/prcStep[0]/stepProc/rpCntInfo"});

  GeoprocessingEvent event{"NOTE:  params", "Plot Layout tool [/opt/Tarnwick.dll", {2020, 12, 31, 23, 59, 58},
                           "GeneratePlotLayout", true};
  AddGeoprocessingEventToDocument(set, event);
  event.exportFlag = false;
  event.eventText = "second";
  AddGeoprocessingEventToDocument(set, event);
  ExpectProperties(set,
                   {{"[0]", "NOTE:  params"}, {"[0]/@ToolSource", "Plot Layout tool [/opt/Tarnwick.dll"},
                    {"[0]/@Date", "20201231"}, {"[0]/@Time", "235958"}, {"[0]/@Name", "GeneratePlotLayout"},
                    {"[0]/@export", "True"}, {"[1]", "second"}},
                   "Esri/DataProperties/lineage/Process");
  EXPECT_NE(set.GetXml("Esri/DataProperties/lineage/Process[1]").find("export=\"\""), std::string::npos);
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
  ExpectProperties(set, {{"dataIdInfo/themeKeys/keyword[0]", "Stand"},
                         {"dataIdInfo/themeKeys/keyword[1]", "Plot Layout"},
                         {"dataIdInfo/StratKeys/keyword[0]", "Tarnwick, LLC"},
                         {"dataIdInfo/searchKeys/keyword[0]", "kept search"},
                         {"idinfo/keywords/place/placekey[0]", "kept place"}});
  EXPECT_EQ(LastElementIndex(set, "dataIdInfo/themeKeys/keyword"), 1);
}

// attr[0] FID and attr[1] " StandID " with an old definition and domain.
MetadataPropertySet TwoAttributes() {
  MetadataPropertySet set;
  set.SetPropertyX("eainfo/detailed/attr[0]/attrlabl", "FID");
  set.SetPropertyX("eainfo/detailed/attr[1]/attrlabl", " StandID ");
  set.SetPropertyX("eainfo/detailed/attr[1]/attrdef", "old definition");
  set.SetPropertyX("eainfo/detailed/attr[1]/attrdomv/udom", "old udom");
  return set;
}

TEST(AttributeFieldInDocument, FoundTrimmedAnyCaseWrittenWithoutBlanksAndClearedOnlyWhenAsked) {
  const std::string attr = "eainfo/detailed/attr[1]/";
  MetadataPropertySet set = TwoAttributes();
  EXPECT_EQ(AttributeFieldIndex(set, "standid"), 1);
  EXPECT_EQ(AttributeFieldIndex(set, "FID "), 0);
  EXPECT_EQ(AttributeFieldIndex(set, "PlotID"), -1);

  // The range minimum is blank once trimmed; the all-blank enumerated column uses no index.
  SetAttributeFieldInDocument(
      set, 1,
      {.definition = "ID Value of stand", .definitionSource = "Stands", .rangeMinimum = "  ", .units = "Stand ID Values",
       .enumerated = EnumeratedDomain{{{"1", "One", "Me"}, {"", " ", ""}, {"2", "", "You"}}, false}, .clearFirst = true});
  ExpectProperties(set,
                   {{"attrdef", "ID Value of stand"}, {"attrdefs", "Stands"},
                    {"attrdomv/rdom/attrunit", "Stand ID Values"}, {"attrdomv/edom[0]/edomv", "1"},
                    {"attrdomv/edom[1]/edomv", "2"}, {"attrdomv/edom[1]/edomvds", "You"}},
                   attr);
  ExpectAbsent(set, {"attrdomv/rdom/rdommin", "attrdomv/udom" /* cleared first */, "attrdomv/edom[1]/edomvd"}, attr);
  EXPECT_EQ(LastElementIndex(set, attr + "attrdomv/edom"), 1);

  // Without clearing the old parts stay; an enumeration of the wrong shape is left out.
  MetadataPropertySet kept = TwoAttributes();
  SetAttributeFieldInDocument(kept, 1, {.definition = "new definition", .enumerated = EnumeratedDomain{{{"1", "One", "Me"}}, true}});
  ExpectProperties(kept, {{"attrdef", "new definition"}, {"attrdomv/udom", "old udom"}}, attr);
  ExpectAbsent(kept, {"attrdomv/edom"}, attr);
}

TEST(MetadataPropertySet, KeysAddressRepeatedElementsFromZero) {
  MetadataPropertySet set;
  EXPECT_TRUE(set.IsNew());
  set.SetPropertyX("mdContact[1]/rpIndName", "Second");  // index 1 brings index 0 with it
  set.SetPropertyX("mdContact[0]/rpIndName", "First");
  set.SetPropertyX("mdContact/rpOrgName", "Org");  // unindexed writes go to the first
  test::ExpectProperties(set, {{"mdContact[0]/rpIndName", "First"}, {"mdContact[1]/rpIndName", "Second"},
                               {"mdContact[0]/rpOrgName", "Org"}, {"mdContact[2]/rpIndName", ""}, {"missing/element", ""}});
  EXPECT_EQ(LastElementIndex(set, "mdContact"), 1);
  EXPECT_EQ(LastElementIndex(set, "dataIdInfo/idPoC"), -1);

  // Rewriting an element replaces its text instead of adding to it.
  set.SetPropertyX("mdContact[0]/rpIndName", "Changed");
  EXPECT_EQ(set.GetXml("mdContact[0]/rpIndName"), "<rpIndName>Changed</rpIndName>\n");

  // An element with only children or attributes still counts as present.
  MetadataPropertySet bare;
  bare.SetPropertyX("mdContact[0]/role/RoleCd", "");
  bare.SetAttribute("mdContact[0]/role/RoleCd", "value", "007");
  EXPECT_NE(bare.GetProperty("mdContact[0]"), "");
  test::ExpectProperties(bare, {{"mdContact[0]/role/RoleCd/@value", "007"}, {"mdContact[0]/role/RoleCd", ""}});
  EXPECT_EQ(LastElementIndex(bare, "mdContact"), 0);

  // Deleting an indexed key removes that element only; an unindexed one every match.
  for (int i = 0; i < 3; ++i) set.SetPropertyX("dataIdInfo/themeKeys/keyword[" + std::to_string(i) + "]", "k" + std::to_string(i));
  set.DeleteProperty("dataIdInfo/themeKeys/keyword[1]");
  EXPECT_EQ(set.GetProperty("dataIdInfo/themeKeys/keyword[1]"), "k2");
  set.DeleteProperty("dataIdInfo/themeKeys/keyword");
  EXPECT_EQ(LastElementIndex(set, "dataIdInfo/themeKeys/keyword"), -1);
  set.DeleteProperty("never/there");  // harmless
}

TEST(MetadataPropertySet, TextIsEscapedAndReadBackWhileDamagedTextAndMalformedKeysAreRefused) {
  MetadataPropertySet set;
  set.InitExisting({2024, 3, 5, 7, 8, 9});
  set.SetPropertyX("dataIdInfo/idAbs", "Stands < 5 ha & \"odd\" names");
  const auto reread = MetadataPropertySet::FromXml(set.GetXml());
  EXPECT_FALSE(reread.IsNew());
  EXPECT_EQ(reread.GetProperty("dataIdInfo/idAbs"), "Stands < 5 ha & \"odd\" names");
  EXPECT_EQ(reread.GetProperty("Esri/CreaDate"), "20240305");
  EXPECT_EQ(reread.GetProperty("Esri/CreaTime"), "07080900");

  EXPECT_THROW(MetadataPropertySet::FromXml("<metadata><a>1</metadata>"), std::invalid_argument);
  EXPECT_THROW(MetadataPropertySet::FromXml(""), std::invalid_argument);
  EXPECT_THROW(set.SetPropertyX("a[x]/b", "1"), std::invalid_argument);
  EXPECT_THROW(set.SetPropertyX("a//b", "1"), std::invalid_argument);
  EXPECT_THROW(set.GetProperty("a/@v/b"), std::invalid_argument);
}

}  // namespace
}  // namespace tarnwick::metadata
