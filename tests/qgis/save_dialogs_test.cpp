// Where a path chosen in the dataset save dialog puts the new class, and the
// file filters the tools give in their piped form.
#include <gtest/gtest.h>

#include "host/save_dialogs.h"

namespace tarnwick::desktop::testing {
namespace {

TEST(SaveDialogs, ThePathChosenNamesTheLocationAndItsCategory) {
  struct Case {
    std::string path;
    SaveKind kind;
    std::string name, location, category;
    bool classNeeded;
  };
  for (const Case& c : std::vector<Case>{
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
    const SaveTarget target = ClassifySavePath(c.path, c.kind);
    EXPECT_EQ(target.choice.name, c.name) << c.path;
    EXPECT_EQ(target.choice.location, c.location) << c.path;
    EXPECT_EQ(target.choice.category, c.category) << c.path;
    EXPECT_EQ(target.classNeeded, c.classNeeded) << c.path;
  }
  EXPECT_EQ(QtFileFilter("Trimble Waypoint Files (*.way)|*.way"), "Trimble Waypoint Files (*.way)");
  EXPECT_EQ(QtFileFilter("Text|*.txt|All files (*.*)|*.*"), "Text (*.txt);;All files (*.*)");
}

}  // namespace
}  // namespace tarnwick::desktop::testing
