// The transformation chooser, the menu entry that stores its choice, and the
// one search both stand on.
#include <gtest/gtest.h>

#include "fixtures.h"
#include "platform/host/memory_map_document.h"
#include "shell/extension.h"
#include "testkit/fake_desktop.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_candidates.h"
#include "transforms/transform_checks.h"
#include "transforms/transform_chooser_dialog.h"
#include "transforms/transformation_menu.h"

namespace tarnwick {
namespace {

using testing::Epsg;

struct Session {
  testkit::TempDir dir;
  platform::host::MemoryMapDocument document{dir / "forest.qgz", "forest"};
  testkit::FakeDesktop app;
  clsExtension extension;
  HostArray Host() { return {app, document, extension}; }
};

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
void ExpectHolds(const std::string& text, const std::vector<std::string>& parts) {
  for (const auto& part : parts) EXPECT_TRUE(Contains(text, part)) << part << " in\n" << text;
}

TEST(frmTransform, ExplainsListsRanksAndSetsTheExtensionOrOnlySkipsWithoutCandidates) {
  Session s;
  auto stands = testing::SquareLayer(s.dir, "Stands", Epsg(26710), 630000, 4270000, 1000);
  auto plots = testing::SquareLayer(s.dir, "Plots", Epsg(26910), 630000, 4270000, 1000);
  frmTransform form(s.Host(), {plots, stands});
  EXPECT_EQ(form.caption, " Geographic Transformation:");
  const std::string& text = form["txtMessage"].text;
  ExpectHolds(text, {R"(\b Plots\b0  is in \cf1 GCS_North_American_1983 \cf0 [\i Projection = NAD_1983_UTM_Zone_10N\i0 ])",
                     R"(\b Stands\b0  is in \cf1 GCS_North_American_1927 \cf0 [\i Projection = )",
                     R"(between \b GCS_North_American_1983\b0  and \b GCS_North_American_1927\b0, sorted)"});
  EXPECT_FALSE(Contains(text, "zzz"));

  // Ranked at the plots' data, numbered, none selected.
  const auto& list = form["lbxTransformations"];
  ASSERT_EQ(list.entries.size(), form.RankedTransformations().size());
  EXPECT_EQ(list.entries[0], "1]   NAD_1927_To_NAD_1983_PR_VI");
  EXPECT_EQ(list.entries[1].substr(0, 5), "2]   ");
  EXPECT_EQ(list.listIndex, -1);
  EXPECT_EQ(form["optApply"].value, 1);
  EXPECT_FALSE(form["cmdOK"].enabled);

  form.SetListIndex("lbxTransformations", 0);
  EXPECT_TRUE(form["cmdOK"].enabled);
  form.Fire("lbxTransformations", ControlEvent::DblClick);
  ASSERT_EQ(s.app.reports.size(), 1u);
  EXPECT_EQ(s.app.reports[0].caption, "Geotransformation Details");
  ExpectHolds(s.app.reports[0].text,
              {R"(Name:\b0   NAD_1927_To_NAD_1983_PR_VI)", R"(\b0 GCS_North_American_1927)",
               R"(Accuracy:\b0   0.05 \i (units unknown))", R"(Latitude Range:\b0   17.620\lang1033\'b0\lang9  to 18.780)"});

  form.SetValue("optSkip", 1);
  EXPECT_FALSE(form["lbxTransformations"].enabled);
  EXPECT_TRUE(form["cmdOK"].enabled);
  form.SetValue("optApply", 1);
  form.Fire("cmdOK", ControlEvent::Click);
  EXPECT_TRUE(form.unloaded);
  ASSERT_TRUE(s.extension.SpecifiedGeoTransform);
  EXPECT_EQ(s.extension.SpecifiedGeoTransform->code, 108003);
  EXPECT_TRUE(s.extension.SelectedGeoTransformation && !s.extension.ChoseToSkipGeoTransformation);

  // Placed a little lower than the tools; the buttons follow the corner, the text stretches.
  form.Form_Load({28800, 16200}, 0);
  EXPECT_TRUE(form.formBounds.left == 10800 && form.formBounds.top == 3954);
  form.formBounds.width += 1000;
  form.formBounds.height += 1000;
  form.Form_Resize();
  EXPECT_TRUE(form["cmdOK"].bounds.left == 6820 && form["cmdOK"].bounds.top == 6940);
  EXPECT_EQ(form["txtMessage"].bounds.height, 3760);

  frmTransform cancelled(s.Host(), {plots, stands});
  cancelled.Fire("cmdCancel", ControlEvent::Click);
  EXPECT_FALSE(s.extension.SpecifiedGeoTransform || s.extension.SelectedGeoTransformation);

  // Without candidates only skipping is possible.
  frmTransform none(s.Host(), {Epsg(4272), Epsg(4267)});
  EXPECT_EQ(none["lbxTransformations"].entries, (std::vector<std::string>{kNoKnownTransformations}));
  EXPECT_EQ(none["optApply"].value, 0);
  ExpectHolds(none["txtMessage"].text,
              {R"(\b GCS_New_Zealand_1949\b0  is in)", R"(\b Your Output Waypoint File\b0  is in)"});
  none.SetListIndex("lbxTransformations", 0);
  EXPECT_FALSE(none["cmdOK"].enabled);
  none.Fire("lbxTransformations", ControlEvent::DblClick);
  ASSERT_EQ(s.app.reports.size(), 2u);
  EXPECT_TRUE(Contains(s.app.reports[1].text, "No information available..."));
  none.SetValue("optSkip", 1);
  EXPECT_TRUE(none["cmdOK"].enabled);
  none.Fire("cmdOK", ControlEvent::Click);
  EXPECT_TRUE(s.extension.ChoseToSkipGeoTransformation && !s.extension.SpecifiedGeoTransform);
}

// The menu entry over a NAD 1927 layer and the map's WGS 1984: the choice
// replaces what the map held between the two systems, so that the tools'
// sequence finds it first.
TEST(RunGeographicTransformationMenu, StoresTheChoiceWhereTheToolsFindItFirst) {
  Session s;
  auto stands = testing::SquareLayer(s.dir, "Stands", Epsg(26710), 630000, 4270000, 1000);
  platform::host::MemoryMap& map = s.document.FocusMap();
  map.layers = {stands};
  map.spatialReference = Epsg(4326);
  TransformationDefaults defaults;
  bool error = false;
  std::string message;
  AddTransformToDocIfItDoesNotExist({"NAD_1927_To_WGS_1984_3", 1172, "EPSG", 4267, 4326}, error, message, map,
                                    defaults);

  std::vector<std::string> shown;
  const auto showModal = [&](DialogModel& dialog) {
    shown.push_back(dialog.caption);
    if (dialog.Has("cbxLayer2")) {
      EXPECT_EQ(dialog["cbxLayer2"].SelectedEntry(), kMapCoordinateSystemEntry);
      dialog.Fire("cmdOK", ControlEvent::Click);
      return;
    }
    const auto& entries = dialog["lbxTransformations"].entries;
    for (size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].ends_with("]   NAD_1927_To_WGS_1984_4")) {
        dialog.SetListIndex("lbxTransformations", static_cast<int>(i));
      }
    }
    dialog.Fire("cmdOK", ControlEvent::Click);
  };
  const auto outcome = RunGeographicTransformationMenu(s.Host(), defaults, showModal);
  EXPECT_EQ(shown.size(), 2u);
  ASSERT_EQ(outcome.kind, TransformationMenuOutcome::Kind::Stored) << (s.app.boxes.empty() ? "" : s.app.boxes[0].text);
  EXPECT_EQ(outcome.stored->code, 1173);
  EXPECT_TRUE(s.document.IsDirty());
  EXPECT_EQ(map.Transformations().size(), 2u);  // one transformation, both ways

  const auto choice = SelectGeoTransformation(s.app, map, defaults, stands, Epsg(4326));
  EXPECT_EQ(choice.origin, TransformationChoice::Origin::Memory);
  ASSERT_TRUE(choice.transformation);
  EXPECT_EQ(choice.transformation->code, 1173);
}

TEST(FindTransformCandidates, RanksAtThePlaceOrTheDataAndKeepsThePlatformsOrder) {
  Session s;
  // No place and no layer: the platform's order, with catalogue rows, and no error.
  const auto bare = FindTransformCandidates(s.app, Epsg(4267), Epsg(4269));
  ASSERT_GT(bare.unranked.size(), 3u);
  EXPECT_FALSE(bare.ranked.measured);
  ASSERT_EQ(bare.ranked.entries.size(), bare.unranked.size());
  EXPECT_EQ(bare.ranked.entries[0].transformation.code, bare.unranked[0].code);
  EXPECT_NE(bare.ranked.entries[0].row, nullptr);
  EXPECT_TRUE(s.app.windows.empty());

  // At a place: ranked there, the platform's order kept beside.
  const auto mojave = platform::Geometry::MakePoint(-115.5, 35, Epsg(4267));
  const auto placed = FindTransformCandidates(s.app, Epsg(4267), Epsg(4269), &mojave);
  EXPECT_TRUE(placed.ranked.measured && placed.unranked[0].code == bare.unranked[0].code);
  EXPECT_EQ(placed.ranked.entries[0].transformation.code, 1241);

  // Ranking at the data of a layer is the transforms command's test (Alaska).
  const auto same = FindTransformCandidates(s.app, Epsg(4269), Epsg(26910));
  EXPECT_TRUE(same.sameGcs && same.unranked.empty());
  EXPECT_EQ(same.message, "<-- No Known Transformations for these two GCSs -->");
}

TEST(ResolveNamedTransformation, ChecksTheNameTheSystemsAndTheDirection) {
  const auto reverse = ResolveNamedTransformation("NAD_1927_To_NAD_1983_Alaska:reverse", Epsg(4269), Epsg(4267));
  ASSERT_EQ(Refusal(reverse), nullptr);
  const auto& named = std::get<NamedTransformation>(reverse);
  EXPECT_TRUE(named.transformation->code == 1243 && named.direction == platform::TransformDirection::Reverse);
  const auto same = ResolveNamedTransformation("1243", Epsg(4269), Epsg(26910));
  ASSERT_EQ(Refusal(same), nullptr);
  EXPECT_FALSE(std::get<NamedTransformation>(same).needed);

  const std::vector<std::pair<std::string, std::string>> refused = {
      {"1243:reverse",
       "NAD_1927_To_NAD_1983_Alaska (EPSG:1243) joins these systems only in the FORWARD direction, "
       "not REVERSE."},
      {"No_Such_Thing", "No geographic transformation is named 'No_Such_Thing'."},
      {"Tokyo_To_WGS_1984_1",
       "There appear to be problems with the geographic transformation you selected:\n"
       "  --> Transformation = 'Tokyo_To_WGS_1984_1'\n\n"
       "  1] This transformation does not appear to be designed for your layer "
       "'GCS_North_American_1927'\n    --> Coordinate System = GCS_North_American_1927\n"
       "  2] This transformation does not appear to be designed for your layer "
       "'GCS_North_American_1983' coordinate system!\n"
       "    --> Coordinate System = GCS_North_American_1983\n"},
  };
  for (const auto& [text, message] : refused) {
    const auto resolved = ResolveNamedTransformation(text, Epsg(4267), Epsg(4269));
    ASSERT_NE(Refusal(resolved), nullptr) << text;
    EXPECT_EQ(Refusal(resolved)->text, message);
  }
}

}  // namespace
}  // namespace tarnwick
