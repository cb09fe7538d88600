// The three stores: classes made, written, read, updated and reopened; the
// refusals for missing, absent, damaged-by-kind and read-only stores.
#include "platform/workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sys/stat.h>

#include "platform/errors.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::platform {
namespace {

class WorkspaceStores : public ::testing::TestWithParam<testkit::StoreCase> {
 protected:
  std::shared_ptr<FeatureClass> CreatePlots() {
    auto plots = testkit::MakeClass(
        dir / GetParam().path,
        testkit::ClassSpec("Plots", GeometryType::Point, SpatialReference::FromEpsg(26910),
                           {Field{"STAND_ID", "", FieldType::String, 20}, Field{"PLOT_NO", "", FieldType::Integer},
                            Field{"AREA_HA", "", FieldType::Double, 0, 12, 4},
                            Field{"CLASS", "", FieldType::SmallInteger}}));
    workspace = plots->GetWorkspace();
    return plots;
  }

  testkit::TempDir dir;
  std::shared_ptr<Workspace> workspace;
};

TEST_P(WorkspaceStores, CreateInsertReadUpdateCopyAddFieldsAndDelete) {
  const testkit::StoreCase& store = GetParam();
  auto plots = CreatePlots();
  EXPECT_EQ(workspace->Kind(), store.kind);
  EXPECT_EQ(Workspace::KindOfPath(workspace->PathName()), store.kind);

  // Field list: OID at 0, Shape at 1, then the attributes in order.
  std::vector<std::pair<std::string, FieldType>> fields;
  for (const auto& field : plots->Fields()) fields.emplace_back(field.name, field.type);
  EXPECT_EQ(fields, (std::vector<std::pair<std::string, FieldType>>{
                        {store.kind == WorkspaceKind::ShapefileFolder ? "FID" : "OBJECTID", FieldType::OID}, {"Shape", FieldType::Geometry},
                        {"STAND_ID", FieldType::String}, {"PLOT_NO", FieldType::Integer},
                        {"AREA_HA", FieldType::Double}, {"CLASS", FieldType::SmallInteger}}));
  EXPECT_EQ(plots->Fields()[2].length, 20);
  EXPECT_EQ(plots->FindField("plot_no"), 3);
  EXPECT_EQ(plots->FindField("absent"), -1);
  EXPECT_TRUE(plots->ShapeType() == GeometryType::Point && !plots->HasZ() && !plots->HasM());
  EXPECT_EQ(plots->GetSpatialReference().FactoryCode(), 26910);

  {
    auto cursor = plots->Insert();
    Feature buffer = cursor->CreateFeatureBuffer();
    ASSERT_EQ(buffer.values.size(), 6u);
    for (int i = 1; i <= 5; ++i) {
      buffer.shape = Geometry::MakePoint(500000 + i * 10, 4000000 + i, SpatialReference::FromEpsg(26910));
      buffer.values[2] = std::string(i % 2 ? "A1" : "B2");
      buffer.values[3] = std::int64_t{i};
      buffer.values[4] = i * 0.25;
      buffer.values[5] = i == 3 ? Value{} : Value{std::int64_t{7}};
      cursor->InsertFeature(buffer);
    }
    cursor->Flush();
    if (store.kind != WorkspaceKind::FileGeodatabase) {
      // Flushed rows are seen by another opening (a geodatabase's only once the cursor ends).
      EXPECT_EQ(OpenFeatureLayer(plots->FullPath()).featureClass->FeatureCount(), 5);
    }
    // Text into number fields: numbers are converted, anything else refused.
    buffer.values[3] = std::string("x7");
    EXPECT_THROW(cursor->InsertFeature(buffer), PlatformError);
    buffer.values[3] = std::int64_t{1} << 40;  // beyond a long integer
    EXPECT_THROW(cursor->InsertFeature(buffer), PlatformError);
    buffer.values[3] = std::int64_t{1};
    if (store.kind != WorkspaceKind::ShapefileFolder) {
      buffer.values[5] = std::int64_t{40000};  // beyond a small integer
      EXPECT_THROW(cursor->InsertFeature(buffer), PlatformError);
    }
  }

  EXPECT_EQ(plots->FeatureCount(), 5);
  EXPECT_EQ(plots->FeatureCount("STAND_ID = 'A1'"), 3);
  const auto selected = plots->Select("PLOT_NO >= 4");
  ASSERT_EQ(selected.size(), 2u);

  EXPECT_EQ(testkit::Column(*plots, "PLOT_NO"), (std::vector<Value>{1, 2, 3, 4, 5}));
  for (const auto& feature : testkit::ReadAll(*plots)) {
    const auto n = std::get<std::int64_t>(feature.values[3]);
    EXPECT_EQ(std::get<std::int64_t>(feature.values[0]), feature.oid);
    EXPECT_DOUBLE_EQ(std::get<double>(feature.values[4]), n * 0.25);
    EXPECT_EQ(feature.shape.PointXY(), (XY{500000.0 + n * 10, 4000000.0 + n}));
    EXPECT_EQ(feature.shape.SpatialRef().FactoryCode(), 26910);
    EXPECT_EQ(IsNull(feature.values[5]), n == 3);
  }

  // Read by OID in the order given.
  auto byOid = plots->SearchOids({selected[1], selected[0]});
  EXPECT_EQ(std::get<std::int64_t>(byOid->NextFeature()->values[3]), 5);
  EXPECT_EQ(std::get<std::int64_t>(byOid->NextFeature()->values[3]), 4);
  EXPECT_FALSE(byOid->NextFeature());

  {
    auto update = plots->Update("PLOT_NO = 2");
    auto feature = update->NextFeature();
    ASSERT_TRUE(feature);
    feature->values[2] = std::string("ZZ");
    feature->values[4] = std::string("2.75");
    feature->shape = Geometry::MakePoint(1, 2, SpatialReference::FromEpsg(26910));
    update->UpdateFeature(*feature);
    EXPECT_FALSE(update->NextFeature());
    update->Flush();
  }

  // Everything is on disk: a second opening of the store reads it back.
  auto reopened = Workspace::Open(workspace->PathName())->OpenFeatureClass("plots");
  EXPECT_EQ(reopened->FeatureCount(), 5);
  EXPECT_EQ(testkit::Column(*reopened, "STAND_ID"), (std::vector<Value>{"A1", "ZZ", "A1", "B2", "A1"}));
  EXPECT_EQ(testkit::Column(*reopened, "AREA_HA"), (std::vector<Value>{0.25, 2.75, 0.75, 1.0, 1.25}));
  EXPECT_EQ(testkit::ReadAll(*reopened)[1].shape.PointXY(), (XY{1, 2}));
  EXPECT_DOUBLE_EQ(reopened->Extent().xMin, 1);
  EXPECT_DOUBLE_EQ(reopened->Extent().xMax, 500050);

  // The plot tool reads stands and writes plots into the same store through
  // separately opened workspaces, committing as it goes.
  auto copies = Workspace::OpenOrCreate(workspace->PathName())
                    ->CreateFeatureClass(testkit::ClassSpec("Copies", GeometryType::Point, {}));
  auto insert = copies->Insert();
  auto read = reopened->Search();
  for (int count = 1; auto feature = read->NextFeature(); ++count) {
    auto buffer = insert->CreateFeatureBuffer();
    buffer.shape = feature->shape;
    insert->InsertFeature(buffer);
    if (count % 2 == 0) insert->Flush();
  }
  insert->Flush();
  EXPECT_EQ(copies->FeatureCount(), 5);

  // Fields added to a class that holds rows, and a row written into them.
  plots->AddField(Field{"NOTE", "", FieldType::String, 40});
  plots->AddField(Field{"WEIGHT", "", FieldType::Single});
  plots->AddField(Field{"VISITED", "", FieldType::Date});
  ASSERT_EQ(plots->Fields().size(), 9u);
  EXPECT_EQ(plots->Fields()[6].length, 40);
  {
    auto cursor = plots->Insert();
    Feature buffer = cursor->CreateFeatureBuffer();
    ASSERT_EQ(buffer.values.size(), 9u);
    buffer.values[6] = std::string("late field");
    buffer.values[7] = 1.5;
    buffer.values[8] = std::string("2024-03-05T10:20:30");
    cursor->InsertFeature(buffer);
    cursor->Flush();
  }
  const auto features = testkit::ReadAll(*plots);
  ASSERT_EQ(features.size(), 6u);
  EXPECT_EQ(testkit::Column(*plots, "STAND_ID"), (std::vector<Value>{"A1", "ZZ", "A1", "B2", "A1", Value{}}));
  EXPECT_EQ(std::get<std::string>(features[5].values[6]), "late field");
  EXPECT_DOUBLE_EQ(std::get<double>(features[5].values[7]), 1.5);
  // Shapefiles keep the day only.
  EXPECT_EQ(std::get<std::string>(features[5].values[8]),
            store.kind == WorkspaceKind::ShapefileFolder ? "2024-03-05T00:00:00" : "2024-03-05T10:20:30");
  EXPECT_TRUE(features[5].shape.IsNull());

  EXPECT_TRUE(workspace->NameExists("PLOTS"));
  EXPECT_FALSE(workspace->NameExists("Stands"));
  auto names = Workspace::Open(workspace->PathName())->FeatureClassNames();
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"Copies", "Plots"}));
  EXPECT_EQ(SplitClassPath(plots->FullPath()).workspace, workspace->PathName());
  const FeatureLayer layer = OpenFeatureLayer(plots->FullPath());
  EXPECT_EQ(layer.name, "Plots");
  EXPECT_EQ(layer.featureClass->FeatureCount(), 6);
  workspace->DeleteFeatureClass("Plots");
  EXPECT_FALSE(workspace->NameExists("Plots"));
}

TEST_P(WorkspaceStores, PolygonsWithZAndCustomNames) {
  workspace = Workspace::OpenOrCreate(dir / GetParam().path);
  auto newClass = testkit::ClassSpec("Stands", GeometryType::Polygon, SpatialReference::FromEpsg(2227));
  newClass.oidFieldName = "STAND_OID";
  newClass.shapeFieldName = "GEOM";
  newClass.hasZ = true;
  auto stands = workspace->CreateFeatureClass(newClass);
  EXPECT_TRUE(stands->HasZ());
  EXPECT_EQ(stands->ShapeType(), GeometryType::Polygon);
  if (GetParam().kind != WorkspaceKind::ShapefileFolder) {
    EXPECT_EQ(stands->OIDFieldName(), "STAND_OID");
    EXPECT_EQ(stands->ShapeFieldName(), "GEOM");
  }
  {
    auto cursor = stands->Insert();
    Feature buffer = cursor->CreateFeatureBuffer();
    auto shape = Geometry::FromWkt("POLYGON ((0 0, 0 10, 10 10, 10 0, 0 0), (2 2, 4 2, 4 4, 2 4, 2 2))", newClass.spatialReference);
    shape.SetZAware(true);
    buffer.shape = shape;
    cursor->InsertFeature(buffer);
    cursor->Flush();
  }
  const auto features = testkit::ReadAll(*stands);
  ASSERT_EQ(features.size(), 1u);
  EXPECT_NEAR(features[0].shape.Area(), 96.0, 1e-3);  // a geodatabase snaps to its XY resolution
  EXPECT_TRUE(features[0].shape.HasZ());
  EXPECT_EQ(features[0].shape.SpatialRef().FactoryCode(), 2227);
}

INSTANTIATE_TEST_SUITE_P(AllStores, WorkspaceStores, ::testing::ValuesIn(testkit::kStores),
                         [](const auto& info) { return info.param.name; });

// Expects f to raise a platform error whose message holds every part.
void ExpectRefused(const std::function<void()>& f, const std::vector<std::string>& parts) {
  try {
    f();
    ADD_FAILURE() << "no error raised; expected " << parts.front();
  } catch (const PlatformError& e) {
    for (const auto& part : parts) EXPECT_NE(std::string(e.what()).find(part), std::string::npos) << e.what();
  }
}

TEST(WorkspaceErrors, MissingPathsAbsentLayersAndPersonalGeodatabases) {
  testkit::TempDir dir;
  ExpectRefused([&] { Workspace::Open(dir / "nowhere.gpkg"); }, {dir / "nowhere.gpkg", "does not exist"});
  ExpectRefused([&] { OpenFeatureLayer(dir / "gone/plots.shp"); }, {"does not exist"});
  for (const std::string& mdb : {dir / "old.mdb", dir / "old.mdb/Plots"}) {
    ExpectRefused([&] { Workspace::OpenOrCreate(mdb); }, {"personal geodatabase", "cannot be written on this platform"});
  }
  ExpectRefused([&] { OpenFeatureLayer(dir / "old.mdb/Plots"); }, {"personal geodatabase"});

  testkit::MakeClass(dir / "inv.gpkg", testkit::ClassSpec("Stands", GeometryType::Polygon, {}));
  const auto roads = testkit::ClassSpec("Roads", GeometryType::Polyline, {});
  testkit::MakeClass(dir / "inv.gpkg", roads);
  auto workspace = Workspace::Open(dir / "inv.gpkg");
  EXPECT_EQ(OpenFeatureLayer(dir / "inv.gpkg|layername=Stands").name, "Stands");
  EXPECT_EQ(OpenFeatureLayer(dir / "inv.gpkg/Roads").featureClass->ShapeType(), GeometryType::Polyline);
  ExpectRefused([&] { OpenFeatureLayer(dir / "inv.gpkg|layername=Plots"); }, {"no feature class named 'Plots'"});
  ExpectRefused([&] { OpenFeatureLayer(dir / "inv.gpkg"); }, {"holds 2 feature classes"});
  ExpectRefused([&] { workspace->OpenFeatureClass("Plots"); }, {"'Plots' not found"});
  ExpectRefused([&] { workspace->CreateFeatureClass(roads); }, {"already exists"});
  ExpectRefused([&] { workspace->OpenFeatureClass("Stands")->FeatureCount("NO_SUCH_FIELD = 1"); },
                {"Invalid where clause"});
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
  ExpectRefused([&] { plots->Insert(); }, {"read-only", folder});
  ExpectRefused([&] { plots->AddField(Field{"M", "", FieldType::Integer}); }, {"read-only", folder});
  ExpectRefused([&] { workspace->CreateFeatureClass(testkit::ClassSpec("more", GeometryType::Point, {})); },
                {"read-only", folder});
  ::chmod(folder.c_str(), 0755);

  const std::string path = dir / "inv.gpkg";
  testkit::MakeClass(path, testkit::ClassSpec("Stands", GeometryType::Polygon, {}));
  ::chmod(path.c_str(), 0444);
  auto stands = OpenFeatureLayer(path + "|layername=Stands").featureClass;
  EXPECT_EQ(stands->FeatureCount(), 0);
  ExpectRefused([&] { stands->Update(); }, {"Cannot update 'Stands': workspace '" + path + "' is read-only"});
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
