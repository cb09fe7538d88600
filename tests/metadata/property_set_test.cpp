// The keyed XML document: addressing, repeated elements, attributes,
// deletion, listing and parsing.
#include <gtest/gtest.h>

#include <stdexcept>

#include "dataset_fixture.h"
#include "metadata/element_index.h"
#include "metadata/property_set.h"

namespace tarnwick::metadata {
namespace {

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
}

TEST(MetadataPropertySet, DeleteRemovesEveryMatchOfAnUnindexedKeyAndOnlyTheNamedIndexOtherwise) {
  MetadataPropertySet set;
  for (int i = 0; i < 3; ++i) set.SetPropertyX("dataIdInfo/themeKeys/keyword[" + std::to_string(i) + "]", "k" + std::to_string(i));
  set.DeleteProperty("dataIdInfo/themeKeys/keyword[1]");
  EXPECT_EQ(set.GetProperty("dataIdInfo/themeKeys/keyword[1]"), "k2");
  set.DeleteProperty("dataIdInfo/themeKeys/keyword");
  EXPECT_EQ(LastElementIndex(set, "dataIdInfo/themeKeys/keyword"), -1);
  set.DeleteProperty("never/there");  // harmless
}

TEST(MetadataPropertySet, ListsLeavesAndAttributesInDocumentOrder) {
  auto set = MetadataPropertySet::FromXml(
      "<metadata><a>1</a><b><c>2</c><c>3</c></b><d v=\"x\"/>"
      "<Thumbnail><Data EsriPropertyType=\"PictureX\">AAAA</Data></Thumbnail></metadata>");
  EXPECT_FALSE(set.IsNew());
  std::vector<std::string> names;
  std::vector<PropertyValue> values;
  set.GetAllProperties(names, values);
  const std::vector<std::string> expected = {"a", "b/c[0]", "b/c[1]", "d", "d/@v", "Thumbnail/Data"};
  EXPECT_EQ(names, expected);
  EXPECT_EQ(values[2].text, "3");
  EXPECT_EQ(values[4].text, "x");
  EXPECT_TRUE(values[5].isObject);
  EXPECT_EQ(set.Count(), 6);
  // Every listed name reads back through GetProperty.
  EXPECT_EQ(set.GetProperty(names[1]), "2");
}

TEST(MetadataPropertySet, TextIsEscapedAndSurvivesARoundTrip) {
  MetadataPropertySet set;
  set.InitExisting({2024, 3, 5, 7, 8, 9});
  set.SetPropertyX("dataIdInfo/idAbs", "Stands < 5 ha & \"odd\" names");
  const auto reread = MetadataPropertySet::FromXml(set.GetXml());
  EXPECT_EQ(reread.GetProperty("dataIdInfo/idAbs"), "Stands < 5 ha & \"odd\" names");
  EXPECT_EQ(reread.GetProperty("Esri/CreaDate"), "20240305");
  EXPECT_EQ(reread.GetProperty("Esri/CreaTime"), "07080900");
}

TEST(MetadataPropertySet, RejectsDamagedTextAndMalformedKeys) {
  EXPECT_THROW(MetadataPropertySet::FromXml("<metadata><a>1</metadata>"), std::invalid_argument);
  EXPECT_THROW(MetadataPropertySet::FromXml(""), std::invalid_argument);
  MetadataPropertySet set;
  EXPECT_THROW(set.SetPropertyX("a[x]/b", "1"), std::invalid_argument);
  EXPECT_THROW(set.SetPropertyX("a//b", "1"), std::invalid_argument);
  EXPECT_THROW(set.GetProperty("a/@v/b"), std::invalid_argument);
}

}  // namespace
}  // namespace tarnwick::metadata
