#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/errors.h"
#include "platform/workspace.h"
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
  auto workspace = Workspace::OpenOrCreate(dir / "inv.gpkg");
  Workspace::NewFeatureClass newClass;
  newClass.name = "Stands";
  newClass.geometryType = GeometryType::Polygon;
  workspace->CreateFeatureClass(newClass);
  newClass.name = "Roads";
  newClass.geometryType = GeometryType::Polyline;
  workspace->CreateFeatureClass(newClass);

  EXPECT_EQ(OpenFeatureLayer(dir / "inv.gpkg|layername=Stands").name, "Stands");
  EXPECT_EQ(OpenFeatureLayer(dir / "inv.gpkg/Roads").featureClass->ShapeType(), GeometryType::Polyline);
  auto message = MessageOf([&] { OpenFeatureLayer(dir / "inv.gpkg|layername=Plots"); });
  EXPECT_NE(message.find("no feature class named 'Plots'"), std::string::npos) << message;
  message = MessageOf([&] { OpenFeatureLayer(dir / "inv.gpkg"); });
  EXPECT_NE(message.find("holds 2 feature classes"), std::string::npos) << message;
  message = MessageOf([&] { workspace->OpenFeatureClass("Plots"); });
  EXPECT_NE(message.find("'Plots' not found"), std::string::npos) << message;
  message = MessageOf([&] { workspace->CreateFeatureClass(newClass); });
  EXPECT_NE(message.find("already exists"), std::string::npos) << message;
  message = MessageOf([&] { workspace->OpenFeatureClass("Stands")->FeatureCount("NO_SUCH_FIELD = 1"); });
  EXPECT_NE(message.find("Invalid where clause"), std::string::npos) << message;
}

TEST(WorkspaceErrors, ReadOnlyFolderReadsButRefusesWrites) {
  testkit::TempDir dir;
  const std::string folder = dir / "shapes";
  {
    auto workspace = Workspace::OpenOrCreate(folder);
    Workspace::NewFeatureClass newClass;
    newClass.name = "plots";
    newClass.fields = {Field{"N", "", FieldType::Integer}};
    auto plots = workspace->CreateFeatureClass(newClass);
    auto cursor = plots->Insert();
    auto buffer = cursor->CreateFeatureBuffer();
    buffer.shape = Geometry::MakePoint(1, 2, SpatialReference());
    cursor->InsertFeature(buffer);
  }
  ::chmod(folder.c_str(), 0555);
  for (const char* file : {"plots.shp", "plots.shx", "plots.dbf"}) ::chmod((folder + "/" + file).c_str(), 0444);

  auto workspace = Workspace::Open(folder);
  auto plots = workspace->OpenFeatureClass("plots");
  EXPECT_EQ(plots->FeatureCount(), 1);
  auto message = MessageOf([&] { plots->Insert(); });
  EXPECT_NE(message.find("read-only"), std::string::npos) << message;
  EXPECT_NE(message.find(folder), std::string::npos) << message;
  message = MessageOf([&] { plots->AddField(Field{"M", "", FieldType::Integer}); });
  EXPECT_NE(message.find("read-only"), std::string::npos) << message;
  message = MessageOf([&] { Workspace::NewFeatureClass more;
    more.name = "more";
    workspace->CreateFeatureClass(more); });
  EXPECT_NE(message.find("read-only"), std::string::npos) << message;
  ::chmod(folder.c_str(), 0755);
}

TEST(WorkspaceErrors, ReadOnlyGeoPackageReadsButRefusesWrites) {
  testkit::TempDir dir;
  const std::string path = dir / "inv.gpkg";
  {
    auto workspace = Workspace::OpenOrCreate(path);
    Workspace::NewFeatureClass newClass;
    newClass.name = "Stands";
    newClass.geometryType = GeometryType::Polygon;
    workspace->CreateFeatureClass(newClass);
  }
  ::chmod(path.c_str(), 0444);
  auto stands = OpenFeatureLayer(path + "|layername=Stands").featureClass;
  EXPECT_EQ(stands->FeatureCount(), 0);
  const auto message = MessageOf([&] { stands->Update(); });
  EXPECT_NE(message.find("Cannot update 'Stands': workspace '" + path + "' is read-only"), std::string::npos)
      << message;
}

TEST(WorkspaceErrors, SplitClassPath) {
  EXPECT_EQ(SplitClassPath("x.gpkg/Plots").workspace, "x.gpkg");
  EXPECT_EQ(SplitClassPath("x.gpkg/Plots").name, "Plots");
  EXPECT_EQ(SplitClassPath("/data/x.gdb/Plots").workspace, "/data/x.gdb");
  EXPECT_EQ(SplitClassPath("dir/plots.shp").workspace, "dir");
  EXPECT_EQ(SplitClassPath("dir/plots.shp").name, "plots");
  EXPECT_EQ(SplitClassPath("C:\\data\\plots.SHP").workspace, "C:/data");
  EXPECT_EQ(SplitClassPath("C:\\data\\plots.SHP").name, "plots");
  EXPECT_EQ(SplitClassPath("/data/x.gdb/Forest/Plots").workspace, "/data/x.gdb");
}

}  // namespace
}  // namespace tarnwick::platform
