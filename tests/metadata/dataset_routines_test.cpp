// The routines on datasets in a shapefile folder, a GeoPackage and a file
// geodatabase: what they store and what a later run reads back.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "platform/host/memory_map_document.h"
#include "dataset_fixture.h"
#include "metadata/metadata_functions.h"
#include "platform/host/map_document.h"
#include "platform/metadata_store.h"
#include "support/host_operations.h"
#include "testkit/fake_application.h"

namespace tarnwick::metadata {
namespace {

using test::ExpectProperties;

class MetadataOnStores : public ::testing::TestWithParam<testkit::StoreCase> {
 protected:
  std::string WorkspacePath() const { return dir / GetParam().path; }
  std::shared_ptr<platform::FeatureClass> Create() { return test::CreatePlots(WorkspacePath()); }
  std::shared_ptr<platform::FeatureClass> Reopen() { return test::Reopen(WorkspacePath()); }

  testkit::TempDir dir;
  testkit::FakeApplication app;
};

TEST_P(MetadataOnStores, EditsAreStoredAndReadBackByALaterRun) {
  {
    auto plots = Create();
    EXPECT_EQ(SynchronizeMetadata(*plots), "Succeeded");
    EXPECT_EQ(SetMetadataAbstract(*plots, "Plots over stands from 'Stands'."), "Succeeded");
    EXPECT_EQ(AddMetadataContact(*plots, {.individualName = "Ann Lee", .roleIndex = 7}, false, true), "Succeeded");
    GeoprocessingEvent event{"NOTE:  params", "Plot Layout tool", {2022, 2, 3, 4, 5, 6}, "GeneratePlotLayout", true};
    EXPECT_EQ(AddGeoprocessingEvent(*plots, event), "Succeeded");
    const AttributeFieldMetadata standField{.fieldName = "StandID",
                                            .definition = "ID Value of stand that contains this plot point.",
                                            .units = "Stand ID Values",
                                            .clearFirst = true};
    EXPECT_EQ(SetAttributeFieldMetadata(*plots, standField, app), "Succeeded");
    EXPECT_EQ(SynchronizeMetadata(*plots), "Succeeded");
    // Stored at once: a second opening sees it while the first is still open.
    auto other = Reopen();
    EXPECT_EQ(ReturnMetadataPropertySet(*other).GetProperty("mdContact[0]/rpIndName"), "Ann Lee");
  }
  auto plots = Reopen();
  const MetadataPropertySet set = ReturnMetadataPropertySet(*plots);
  ExpectProperties(set, {{"idinfo/descript/abstract", "Plots over stands from 'Stands'."},
                         {"dataIdInfo/idAbs", "Plots over stands from 'Stands'."},
                         {"mdContact[0]/rpIndName", "Ann Lee"}, {"mdContact[0]/role/RoleCd/@value", "007"},
                         {"Esri/DataProperties/lineage/Process[0]/@Name", "GeneratePlotLayout"}});
  // The last synchronisation kept what was written about the field.
  ASSERT_EQ(AttributeFieldIndex(set, "StandID"), 2);
  ExpectProperties(set,
                   {{"attrdef", "ID Value of stand that contains this plot point."},
                    {"attrdomv/rdom/attrunit", "Stand ID Values"}, {"attrtype", "String"}},
                   "eainfo/detailed/attr[2]/");
}

TEST_P(MetadataOnStores, SynchroniseListsFieldsExtentReferenceAndCountAndTheSettersFillTheDocument) {
  auto plots = Create();
  ASSERT_EQ(SynchronizeMetadata(*plots), "Succeeded");
  MetadataPropertySet set = ReturnMetadataPropertySet(*plots);
  const auto& fields = plots->Fields();
  ASSERT_EQ(fields.size(), 4u);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(set.GetProperty("eainfo/detailed/attr[" + std::to_string(i) + "]/attrlabl"), fields[i].name);
  }
  ExpectProperties(set, {{"eainfo/detailed/attr[4]", ""}, {"eainfo/detailed/attr[0]/attrtype", "OID"},
                         {"eainfo/detailed/attr[0]/attrdef", "Internal feature number."},
                         {"eainfo/detailed/attr[2]/attrtype", "String"}, {"eainfo/detailed/attr[2]/attwidth", "20"},
                         {"eainfo/detailed/attr[3]/attrtype", "Integer"}, {"eainfo/detailed/enttyp/enttypc", "3"},
                         {"spdoinfo/ptvctinf/sdtsterm/ptvctcnt", "3"}, {"idinfo/spdom/lboundng/leftbc", "500000"},
                         {"idinfo/spdom/lboundng/rightbc", "502000"}, {"idinfo/spdom/lboundng/bottombc", "5000000"},
                         {"idinfo/spdom/lboundng/topbc", "5002000"},
                         {"refSysInfo/RefSystem/refSysID/identCode/@code", "26910"}});
  // Zone 10N's central meridian is 123 W; the plots lie just east of it near 45.16 N
  // (corners worked out with PROJ's cs2cs to NAD83 degrees).
  const auto bound = [&](const char* side) { return std::stod(set.GetProperty("idinfo/spdom/bounding/" + std::string(side))); };
  EXPECT_NEAR(bound("westbc"), -123.0, 1e-6);
  EXPECT_NEAR(bound("eastbc"), -122.97455, 1e-4);
  EXPECT_NEAR(bound("southbc"), 45.15348, 1e-4);
  EXPECT_NEAR(bound("northbc"), 45.17148, 1e-4);
  EXPECT_EQ(set.GetProperty("dataIdInfo/dataExt/geoEle/GeoBndBox/westBL"),
            set.GetProperty("idinfo/spdom/bounding/westbc"));
  EXPECT_EQ(set.GetProperty("spref/horizsys/cordsysn/projcsn"), plots->GetSpatialReference().Name());

  // A field added later appears at the end; what was written about others stays.
  set.SetPropertyX("eainfo/detailed/attr[3]/attrdef", "Plot number.");
  bool error = false;
  SaveMetadataPropertySet(*plots, set, error);
  ASSERT_FALSE(error);
  plots->AddField(platform::Field{"Age", "", platform::FieldType::Double});
  ASSERT_EQ(SynchronizeMetadata(*plots), "Succeeded");
  ExpectProperties(ReturnMetadataPropertySet(*plots), {{"attr[3]/attrdef", "Plot number."},
                                                       {"attr[4]/attrlabl", "Age"}, {"attr[4]/attrtype", "Double"}},
                   "eainfo/detailed/");

  // Field lookup, dates, status, maintenance, version and contacts.
  EXPECT_EQ(ReturnAttributeFieldXPathIndex(*plots, "plotid", error), 3);
  EXPECT_FALSE(error);

  const AttributeFieldMetadata missing{.fieldName = "NoSuchField", .definition = "x", .enumerated = EnumeratedDomain{{}, true}};
  EXPECT_EQ(SetAttributeFieldMetadata(*plots, missing, app), "No Field Found");
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].text, "Array has incorrect dimensions.  Skipping this item...");

  EXPECT_EQ(SetCitationDates(*plots, {2023, 4, 5, 6, 7, 8}, DateTime{}, DateTime{}), "Succeeded");
  EXPECT_EQ(SetResourceStatus(*plots, 1), "Succeeded");
  EXPECT_EQ(SetResourceMaintenance(*plots, 9), "Succeeded");
  EXPECT_EQ(SetFormatVersion(*plots, "v1", true, nullptr, app), "Succeeded");
  EXPECT_EQ(app.boxes.back().text, "Map Document required to generate version!");
  set = ReturnMetadataPropertySet(*plots);
  ExpectProperties(set, {{"dataIdInfo/idCitation/date/createDate", "2023-04-05T06:07:08"},
                         {"dataIdInfo/idStatus/ProgCd/@value", "001"},
                         {"dataIdInfo/resMaint/maintFreq/MaintFreqCd/@value", "009"},
                         {"distInfo/distFormat/formatVer", "v1"}});
  test::ExpectAbsent(set, {"pubDate", "reviseDate"}, "dataIdInfo/idCitation/date/");

  platform::host::MemoryMapDocument document("/maps/forest.qgz", "forest");
  EXPECT_EQ(SetFormatVersion(*plots, "", true, &document, app), "Succeeded");
  set = ReturnMetadataPropertySet(*plots);
  EXPECT_EQ(set.GetProperty("distInfo/distFormat/formatVer"), "Created in ArcGIS Version 10.2");
  EXPECT_EQ(LastElementIndex(set, "distInfo/distFormat/formatVer"), 0);

  // A contact already present leaves the stored document unchanged.
  const ContactRecord contact{.organisation = "Tarnwick, LLC", .roleIndex = 9};
  EXPECT_EQ(AddResourceContact(*plots, contact, true, true), "Succeeded");
  const std::string before = ReturnMetadataXMLStringFromDataset(*plots, error);
  EXPECT_FALSE(error);
  EXPECT_EQ(AddResourceContact(*plots, contact, true, true), "Resource Contact Already Present");
  EXPECT_EQ(ReturnMetadataXMLStringFromDataset(*plots, error), before);
  set = ReturnMetadataPropertySet(*plots);
  EXPECT_EQ(set.GetProperty("dataIdInfo/idPoC[0]/rpIndName"), ReturnUserName());
  EXPECT_EQ(set.GetProperty("dataIdInfo/idPoC[1]"), "");
}

INSTANTIATE_TEST_SUITE_P(Stores, MetadataOnStores, ::testing::ValuesIn(testkit::kStores),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace tarnwick::metadata
