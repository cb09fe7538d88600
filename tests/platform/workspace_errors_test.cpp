#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "platform/errors.h"
#include "platform/workspace.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::platform {
namespace {

std::string MessageOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const PlatformError& e) {
    return e.what();
  }
  return "(no error)";
}

TEST(WorkspaceErrors, MissingPathsAndPersonalGeodatabases) {
  testkit::TempDir dir;
  const std::string missing = dir / "nowhere.gpkg";
  auto message = MessageOf([&] { Workspace::Open(missing); });
  EXPECT_NE(message.find(missing), std::string::npos) << message;
  EXPECT_NE(message.find("does not exist"), std::string::npos) << message;

  for (const std::string& mdb : {dir / "old.mdb", dir / "old.mdb/Plots"}) {
    message = MessageOf([&] { Workspace::OpenOrCreate(mdb); });
    EXPECT_NE(message.find("personal geodatabase"), std::string::npos) << message;
    EXPECT_NE(message.find("cannot be written on this platform"), std::string::npos) << message;
  }
  message = MessageOf([&] { OpenFeatureLayer(dir / "old.mdb/Plots"); });
  EXPECT_NE(message.find("personal geodatabase"), std::string::npos) << message;

  message = MessageOf([&] { OpenFeatureLayer(dir / "gone/plots.shp"); });
  EXPECT_NE(message.find("does not exist"), std::string::npos) << message;
}

TEST(WorkspaceErrors, LayerSpecNamingAnAbsentLayer) {
  testkit::TempDir dir;
  testkit::MakeClass(dir / "inv.gpkg", testkit::ClassSpec("Stands", GeometryType::Polygon, {}));
  const auto roads = testkit::ClassSpec("Roads", GeometryType::Polyline, {});
  testkit::MakeClass(dir / "inv.gpkg", roads);
  auto workspace = Workspace::Open(dir / "inv.gpkg");

  EXPECT_EQ(OpenFeatureLayer(dir / "inv.gpkg|layername=Stands").name, "Stands");
  EXPECT_EQ(OpenFeatureLayer(dir / "inv.gpkg/Roads").featureClass->ShapeType(), GeometryType::Polyline);
  auto message = MessageOf([&] { OpenFeatureLayer(dir / "inv.gpkg|layername=Plots"); });
  EXPECT_NE(message.find("no feature class named 'Plots'"), std::string::npos) << message;
  message = MessageOf([&] { OpenFeatureLayer(dir / "inv.gpkg"); });
  EXPECT_NE(message.find("holds 2 feature classes"), std::string::npos) << message;
  message = MessageOf([&] { workspace->OpenFeatureClass("Plots"); });
  EXPECT_NE(message.find("'Plots' not found"), std::string::npos) << message;
  message = MessageOf([&] { workspace->CreateFeatureClass(roads); });
  EXPECT_NE(message.find("already exists"), std::string::npos) << message;
  message = MessageOf([&] { workspace->OpenFeatureClass("Stands")->FeatureCount("NO_SUCH_FIELD = 1"); });
  EXPECT_NE(message.find("Invalid where clause"), std::string::npos) << message;
}

TEST(WorkspaceErrors, ReadOnlyStoresReadButRefuseWrites) {
  testkit::TempDir dir;
  const std::string folder = dir / "shapes";
  testkit::MakeClass(folder, testkit::ClassSpec("plots", GeometryType::Point, {}, {Field{"N", "", FieldType::Integer}}),
                     {{"POINT (1 2)"}});
  ::chmod(folder.c_str(), 0555);
  for (const char* file : {"plots.shp", "plots.shx", "plots.dbf"}) ::chmod((folder + "/" + file).c_str(), 0444);
  auto workspace = Workspace::Open(folder);
  auto plots = workspace->OpenFeatureClass("plots");
  EXPECT_EQ(plots->FeatureCount(), 1);
  for (const auto& write : std::vector<std::function<void()>>{
           [&] { plots->Insert(); }, [&] { plots->AddField(Field{"M", "", FieldType::Integer}); },
           [&] { workspace->CreateFeatureClass(testkit::ClassSpec("more", GeometryType::Point, {})); }}) {
    const auto message = MessageOf(write);
    EXPECT_NE(message.find("read-only"), std::string::npos) << message;
    EXPECT_NE(message.find(folder), std::string::npos) << message;
  }
  ::chmod(folder.c_str(), 0755);

  const std::string path = dir / "inv.gpkg";
  testkit::MakeClass(path, testkit::ClassSpec("Stands", GeometryType::Polygon, {}));
  ::chmod(path.c_str(), 0444);
  auto stands = OpenFeatureLayer(path + "|layername=Stands").featureClass;
  EXPECT_EQ(stands->FeatureCount(), 0);
  const auto message = MessageOf([&] { stands->Update(); });
  EXPECT_NE(message.find("Cannot update 'Stands': workspace '" + path + "' is read-only"), std::string::npos)
      << message;
}

TEST(WorkspaceErrors, SplitClassPath) {
  const std::pair<const char*, ClassPath> cases[] = {
      {"x.gpkg/Plots", {"x.gpkg", "Plots"}},          {"/data/x.gdb/Plots", {"/data/x.gdb", "Plots"}},
      {"dir/plots.shp", {"dir", "plots"}},            {"C:\\data\\plots.SHP", {"C:/data", "plots"}},
      {"/data/x.gdb/Forest/Plots", {"/data/x.gdb", "Plots"}},
  };
  for (const auto& [path, expected] : cases) {
    EXPECT_EQ(SplitClassPath(path).workspace, expected.workspace) << path;
    EXPECT_EQ(SplitClassPath(path).name, expected.name) << path;
  }
}

}  // namespace
}  // namespace tarnwick::platform
