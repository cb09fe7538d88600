#include "waypoints/waypoint_output.h"

#include <gtest/gtest.h>

#include <fstream>

#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

TEST(WaypointOutput, ExtensionDefaultNameAndFolderCheck) {
  EXPECT_EQ(WaypointOutputPath("out/plots"), "out/plots.way");
  EXPECT_EQ(WaypointOutputPath("out/plots.way"), "out/plots.way");
  EXPECT_EQ(WaypointOutputPath("out/plots.txt"), "out/plots.way");

  testkit::TempDir dir;
  const std::string first = DefaultWaypointOutputPath(dir.path().string() + "/", "Plot Layer #2");
  EXPECT_EQ(first, dir / "Plot_Layer__2_Waypoints.way");
  std::ofstream(first) << "x";
  EXPECT_EQ(DefaultWaypointOutputPath(dir.path().string(), "Plot Layer #2"), dir / "Plot_Layer__2_Waypoints_1.way");

  EXPECT_EQ(CheckWaypointOutputFolder(dir / "a.way"), "");
  const std::string missing = dir / "nowhere";
  EXPECT_EQ(CheckWaypointOutputFolder(missing + "/a.way"),
            "The specified folder '" + missing + "' does not exist!  Please specify a valid workspace.");
  EXPECT_EQ(WaypointFileExistsQuestion("/x/a.way"),
            "The file '/x/a.way' already exists.  Do you wish to overwrite the existing file?");
}

}  // namespace
}  // namespace tarnwick
