// Where a path chosen in the dataset save dialog puts the new class, and the
// file filters the tools give in their piped form.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "host/save_dialogs.h"

namespace tarnwick::desktop::testing {
namespace {

TEST(SaveDialogs, ThePathChosenNamesTheLocationAndItsCategory) {
  for (const auto& [path, kind, name, location, category, classNeeded] :
       std::vector<std::tuple<std::string, SaveKind, std::string, std::string, std::string, bool>>{
           {"/data/out/Plots", SaveKind::Shapefile, "Plots.shp", "/data/out", "Folder", false},
           {"/data/out/plots.shp", SaveKind::GeoPackage, "plots.shp", "/data/out", "Folder", false},
           {"/data/inv.gdb/Plots.shp", SaveKind::Shapefile, "Plots", "/data/inv.gdb", "File Geodatabase", false},
           {"/data/inv.gdb/Cruise/Plots", SaveKind::FileGeodatabase, "Plots", "/data/inv.gdb/Cruise",
            "File Geodatabase Feature Dataset", false},
           {"/data/inv.gdb", SaveKind::Shapefile, "", "/data/inv.gdb", "File Geodatabase", true},
           {"/data/forest.gpkg", SaveKind::Shapefile, "", "/data/forest.gpkg", "Personal Geodatabase", true},
           {"/data/forest", SaveKind::GeoPackage, "", "/data/forest.gpkg", "Personal Geodatabase", true},
           {"C:\\data\\new", SaveKind::FileGeodatabase, "", "C:/data/new.gdb", "File Geodatabase", true},
       }) {
    const SaveTarget target = ClassifySavePath(path, kind);
    EXPECT_EQ(std::tie(target.choice.name, target.choice.location, target.choice.category, target.classNeeded),
              std::tie(name, location, category, classNeeded))
        << path;
  }
  EXPECT_EQ(QtFileFilter("Trimble Waypoint Files (*.way)|*.way"), "Trimble Waypoint Files (*.way)");
  EXPECT_EQ(QtFileFilter("Text|*.txt|All files (*.*)|*.*"), "Text (*.txt);;All files (*.*)");
}

}  // namespace
}  // namespace tarnwick::desktop::testing
