// The transforms subcommand run as a program, and the --transform option's
// resolution as a library call.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/host/memory_map_document.h"
#include "cli/tarnwick_program.h"
#include "platform/workspace.h"
#include "testkit/layers.h"
#include "transform_option.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;

// "alaska.gpkg" with class Stands: one square near Anchorage in NAD 1927.
void MakeAlaskaStands(const testkit::TempDir& dir) {
  testkit::MakeClass(dir / "alaska.gpkg",
                     testkit::ClassSpec("Stands", platform::GeometryType::Polygon,
                                        platform::SpatialReference::FromEpsg(4267)),
                     {{testkit::Square(-150, 61, 0.5), {}}});
}

// The first table row: "   1  NAME ...".
std::string FirstRow(const std::string& out) {
  const auto at = out.find("\n   1  ");
  return at == std::string::npos ? "" : out.substr(at + 1, out.find('\n', at + 1) - at - 1);
}

TEST(TransformsCommand, RanksAtTheGivenPlaceOrAtTheDataAndSaysWhenNoneIsNeededOrKnown) {
  testkit::TempDir dir;
  auto mojave = Tarnwick(dir, "transforms EPSG:4267 EPSG:26910 --at -115.5,35");
  ASSERT_EQ(mojave.exitCode, 0) << mojave.err;
  EXPECT_THAT(mojave.out, HasSubstr("To:   NAD_1983_UTM_Zone_10N on GCS_North_American_1983 (4269)"));
  EXPECT_THAT(mojave.out, HasSubstr("Ranked at longitude -115.500000, latitude 35.000000"));
  // Name, code, accuracy, distance and area of the best candidate.
  for (const char* column :
       {"NAD_1927_To_NAD_1983_NADCON", "EPSG:1241", "0.15", "1636.9", "245.535", "USA - CONUS including EEZ"}) {
    EXPECT_THAT(FirstRow(mojave.out), HasSubstr(column)) << mojave.out;
  }

  MakeAlaskaStands(dir);
  auto alaska = Tarnwick(dir, "transforms alaska.gpkg/Stands EPSG:4269");
  ASSERT_EQ(alaska.exitCode, 0) << alaska.err;
  EXPECT_THAT(FirstRow(alaska.out), HasSubstr("NAD_1927_To_NAD_1983_Alaska")) << alaska.out;

  // The same system, two systems no predefined transformation joins, and bad input.
  auto same = Tarnwick(dir, "transforms EPSG:4269 EPSG:26910");
  EXPECT_EQ(same.exitCode, 0);
  EXPECT_THAT(same.out, HasSubstr("no transformation is needed"));
  auto none = Tarnwick(dir, "transforms EPSG:4272 EPSG:4267");
  EXPECT_EQ(none.exitCode, 0) << none.err;
  EXPECT_THAT(none.out, HasSubstr("<-- No Known Transformations for these two GCSs -->"));

  auto bad = Tarnwick(dir, "transforms nonsense EPSG:4269");
  EXPECT_EQ(bad.exitCode, 2);
  EXPECT_THAT(bad.err, HasSubstr("'nonsense' is neither an existing layer nor a coordinate system"));
}

struct OptionRun {
  platform::host::TerminalApplication application{stderr};
  platform::host::MemoryMapDocument document{"", "Untitled"};
  cli::CommandContext context{application, document};
  cli::TransformOption option;

  cli::ResolvedTransform Resolve(const std::string& value, const char* from, const char* to) {
    CLI::App app;
    option.AddTo(app);
    app.parse(std::vector<std::string>{value, "--transform"});  // CLI11 takes the arguments last first
    return option.Choose(context, platform::SpatialReference::FromUserInput(from),
                          platform::SpatialReference::FromUserInput(to));
  }
};

TEST(TransformOption, AutoFollowsTheToolsSequenceAndNamesAreResolved) {
  OptionRun run;
  // auto: the first candidate in the platform's order, stored in the map.
  auto chosen = run.Resolve("auto", "EPSG:26710", "EPSG:4269");
  ASSERT_TRUE(chosen.transformation);
  EXPECT_EQ(chosen.transformation->code, 1241);
  EXPECT_EQ(chosen.direction, platform::TransformDirection::Forward);
  EXPECT_TRUE(chosen.needed);
  EXPECT_EQ(run.document.FocusMap().Transformations().size(), 2u);
  // The other way round it comes from the map, reversed.
  auto back = run.Resolve("auto", "EPSG:4269", "EPSG:4267");
  ASSERT_TRUE(back.transformation);
  EXPECT_EQ(back.direction, platform::TransformDirection::Reverse);
  EXPECT_FALSE(run.Resolve("auto", "EPSG:4269", "EPSG:26910").needed);
  EXPECT_FALSE(run.Resolve("none", "EPSG:4267", "EPSG:4269").transformation);

  auto named = run.Resolve("NAD_1927_To_NAD_1983_Alaska:reverse", "EPSG:4269", "EPSG:4267");
  EXPECT_EQ(named.transformation->code, 1243);
  EXPECT_EQ(named.direction, platform::TransformDirection::Reverse);
  // The names are checked by the library's resolution, refused as a usage error.
  EXPECT_THROW(run.Resolve("No_Such_Thing", "EPSG:4267", "EPSG:4269"), cli::UsageError);
}

}  // namespace
}  // namespace tarnwick
