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

struct Desk {
  testkit::TempDir dir;
  platform::host::MemoryMapDocument document{dir / "forest.qgz", "forest"};
  testkit::FakeDesktop app;
  clsExtension extension;
  TransformationDefaults defaults;

  // A one-field class of points (or polygons) in the store, as a layer of
  // the same name in the map; no spatial reference when epsg is 0.
  void Add(const std::string& store, const std::string& name, int epsg, const Field& field,
           const std::vector<testkit::Row>& rows) {
    const auto type = rows.front().wkt.starts_with("POLYGON") ? platform::GeometryType::Polygon
                                                               : platform::GeometryType::Point;
    const auto sr = epsg != 0 ? platform::SpatialReference::FromEpsg(epsg) : platform::SpatialReference();
    auto featureClass = testkit::MakeClass(dir / store, testkit::ClassSpec(name, type, sr, {field}), rows);
    document.FocusMap().layers.push_back({name, std::move(featureClass), {}, true});
  }
};

// The tool's dialog opened on the map with its defaults, and OK pressed.
template <class Dialog>
void PressOk(Desk& desk) {
  Dialog form({desk.app, desk.document, desk.extension}, desk.defaults);
  form.Fire("cmdOK", ControlEvent::Click);
}

struct Case {
  const char* name;
  std::function<void(Desk&)> make;  // the data, and its layers in the map
  std::string args;                 // the same choices on the command line, with the data's folder as DIR
  void (*pressOk)(Desk&);
};

TEST(SameRefusals, CommandLineAndDialogGiveOneText) {
  const Field plotId{"PlotID", "", FieldType::Integer};
  const std::vector<Case> cases = {
      {"import into a read-only point shapefile",
       [&](Desk& desk) {
         desk.Add("inv.gpkg", "Stands", 26910, Field{"StandID", "", FieldType::String, 8},
                  {{testkit::Square(0, 0, 100), {Value{"A"}}}});
         desk.Add("shp", "plots", 26910, plotId, {{"POINT(50 50)", {Value{1L}}}});
         std::filesystem::permissions(desk.dir / "shp/plots.dbf", std::filesystem::perms::owner_read);
       },
       "import-stand-ids --stands \"DIR/inv.gpkg|layername=Stands\" --stand-id StandID --points DIR/shp/plots.shp "
       "--clone",
       PressOk<frmTransferStandIDs>},
      {"waypoints with a repeated Plot ID",
       [&](Desk& desk) {
         desk.Add("plots.gpkg", "Plots", 26910, plotId, {{"POINT(1 1)", {Value{7L}}}, {"POINT(2 2)", {Value{7L}}}});
       },
       "waypoints --points \"DIR/plots.gpkg|layername=Plots\" --plot-id PlotID --out DIR/out.way", PressOk<frmLayerID>},
      {"waypoints from points without a spatial reference",
       [&](Desk& desk) { desk.Add("shp", "loose", 0, plotId, {{"POINT(1 1)", {Value{1L}}}}); },
       "waypoints --points DIR/shp/loose.shp --plot-id PlotID --out DIR/out.way", PressOk<frmLayerID>},
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
    std::string args = c.args;
    for (auto at = args.find("DIR"); at != std::string::npos; at = args.find("DIR")) {
      args.replace(at, 3, desk.dir.path().string());
    }
    const auto run = Tarnwick(desk.dir, args);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("tarnwick: " + CheckMessageText(shown) + "\n"), std::string::npos)
        << "dialog:\n" << CheckMessageText(shown) << "\ncommand line:\n" << run.err;
  }
}

}  // namespace
}  // namespace tarnwick
