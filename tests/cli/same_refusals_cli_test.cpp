// A bad input is refused in the same words by the command line (exit 2) and
// by the tool's dialog at OK: the dialog's title above its text.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "cli/tarnwick_program.h"
#include "platform/host/memory_map_document.h"
#include "presentation/dialog_checks.h"
#include "shell/extension.h"
#include "standids/transfer_stand_ids_dialog.h"
#include "testkit/fake_desktop.h"
#include "testkit/layers.h"
#include "transforms/transform_search.h"
#include "waypoints/waypoint_converter_dialog.h"

namespace tarnwick {
namespace {

using platform::Field;
using platform::FieldType;
using platform::Value;

// One-field points (or polygons) in the store; no spatial reference when epsg is 0.
std::shared_ptr<platform::FeatureClass> MakeClass(const std::string& store, const std::string& name, int epsg,
                                                  const Field& field, const std::vector<testkit::Row>& rows) {
  const auto type = rows.front().wkt.starts_with("POLYGON") ? platform::GeometryType::Polygon
                                                             : platform::GeometryType::Point;
  const auto sr = epsg != 0 ? platform::SpatialReference::FromEpsg(epsg) : platform::SpatialReference();
  return testkit::MakeClass(store, testkit::ClassSpec(name, type, sr, {field}), rows);
}

struct Desk {
  testkit::TempDir dir;
  platform::host::MemoryMapDocument document{dir / "forest.qgz", "forest"};
  testkit::FakeDesktop app;
  clsExtension extension;
  TransformationDefaults defaults;

  void Add(const std::string& name, std::shared_ptr<platform::FeatureClass> featureClass) {
    document.FocusMap().layers.push_back({name, std::move(featureClass), {}, true});
  }
};

struct Case {
  const char* name;
  std::function<void(Desk&)> make;         // the data, and its layers in the map
  std::function<std::string(Desk&)> args;  // the same choices on the command line
  std::function<void(Desk&)> pressOk;      // the dialog opened with its defaults, OK pressed
};

TEST(SameRefusals, CommandLineAndDialogGiveOneText) {
  const Field plotId{"PlotID", "", FieldType::Integer};
  const auto stands = [](Desk& desk) {
    desk.Add("Stands", MakeClass(desk.dir / "inv.gpkg", "Stands", 26910, Field{"StandID", "", FieldType::String, 8},
                                 {{testkit::Square(0, 0, 100), {Value{std::string("A")}}}}));
  };
  const auto importDialog = [](Desk& desk) {
    frmTransferStandIDs form({desk.app, desk.document, desk.extension}, desk.defaults);
    form.Fire("cmdOK", ControlEvent::Click);
  };
  const auto waypointDialog = [](Desk& desk) {
    frmLayerID form({desk.app, desk.document, desk.extension}, desk.defaults);
    form.Fire("cmdOK", ControlEvent::Click);
  };
  const std::vector<Case> cases = {
      {"import into a read-only point shapefile",
       [&](Desk& desk) {
         stands(desk);
         desk.Add("plots", MakeClass(desk.dir / "shp", "plots", 26910, plotId, {{"POINT(50 50)", {Value{1L}}}}));
         std::filesystem::permissions(desk.dir / "shp/plots.dbf", std::filesystem::perms::owner_read);
       },
       [](Desk& desk) {
         return "import-stand-ids --stands \"" + (desk.dir / "inv.gpkg") + "|layername=Stands\" --stand-id StandID " +
                "--points " + (desk.dir / "shp/plots.shp") + " --clone";
       },
       importDialog},
      {"waypoints with a repeated Plot ID",
       [&](Desk& desk) {
         desk.Add("Plots", MakeClass(desk.dir / "plots.gpkg", "Plots", 26910, plotId,
                                     {{"POINT(1 1)", {Value{7L}}}, {"POINT(2 2)", {Value{7L}}}}));
       },
       [](Desk& desk) {
         return "waypoints --points \"" + (desk.dir / "plots.gpkg") + "|layername=Plots\" --plot-id PlotID --out " +
                (desk.dir / "out.way");
       },
       waypointDialog},
      {"waypoints from points without a spatial reference",
       [&](Desk& desk) {
         desk.Add("loose", MakeClass(desk.dir / "shp", "loose", 0, plotId, {{"POINT(1 1)", {Value{1L}}}}));
       },
       [](Desk& desk) {
         return "waypoints --points " + (desk.dir / "shp/loose.shp") + " --plot-id PlotID --out " +
                (desk.dir / "out.way");
       },
       waypointDialog},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Desk desk;
    c.make(desk);
    c.pressOk(desk);
    // The dialog showed one refusal: a message box, or the report window for a list.
    ASSERT_EQ(desk.app.boxes.size() + desk.app.reports.size(), 1u);
    const CheckMessage shown = desk.app.boxes.empty()
                                   ? CheckMessage{desk.app.reports[0].text, desk.app.reports[0].caption}
                                   : CheckMessage{desk.app.boxes[0].text, desk.app.boxes[0].title};
    const auto run = Tarnwick(desk.dir, c.args(desk));
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("tarnwick: " + CheckMessageText(shown) + "\n"), std::string::npos)
        << "dialog:\n" << CheckMessageText(shown) << "\ncommand line:\n" << run.err;
  }
}

}  // namespace
}  // namespace tarnwick
