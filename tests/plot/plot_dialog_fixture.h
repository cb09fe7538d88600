#pragma once
// A Plot Layout dialog opened on an in-memory map of GeoPackage layers, with
// a desktop host that keeps the current tool and records the save dialogs'
// questions.
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <optional>
#include <variant>

#include "platform/host/memory_map_document.h"
#include "plot/plot_layout_dialog.h"
#include "plot_fixtures.h"
#include "shell/extension.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick::plotfix {

class DesktopApplication : public testkit::FakeApplication {
 public:
  std::string CurrentTool() const override { return tool; }
  void SetCurrentTool(const std::string& progId) override { tool = progId; }
  std::optional<platform::host::DatasetSaveChoice> BrowseForNewDataset(const std::string&,
                                                                       const std::string& suggested) override {
    suggestions.push_back(suggested);
    if (choices.empty()) return std::nullopt;
    auto choice = choices.front();
    choices.pop_front();
    return choice;
  }

  std::string tool;
  std::vector<std::string> suggestions;
  std::deque<platform::host::DatasetSaveChoice> choices;
};

// Class "name" of points with one integer field "PlotNum", in store.
inline platform::FeatureLayer MakePoints(const std::string& store, const platform::SpatialReference& sr,
                                         const std::vector<platform::XY>& points, const std::string& name) {
  std::vector<testkit::Row> rows;
  for (const auto& xy : points) rows.push_back({testkit::PointWkt(xy.x, xy.y), {Value{std::int64_t(rows.size() + 1)}}});
  auto featureClass = testkit::MakeClass(
      store, testkit::ClassSpec(name, platform::GeometryType::Point, sr, {Field{"PlotNum", "", FieldType::Integer}}), rows);
  return platform::FeatureLayer{name, featureClass, {}, true};
}

// One change to a control: a number chooses a list entry (or sets a check
// box), a text is typed into a box.
struct Edit {
  std::string control;
  std::variant<int, std::string> value;
};

// Makes the changes in the order given, as a user would.
inline void Fill(frmPlotLayout& d, const std::vector<Edit>& edits) {
  for (const auto& [control, value] : edits) {
    if (const auto* text = std::get_if<std::string>(&value)) {
      d.SetText(control, *text);
    } else if (control.starts_with("chk")) {
      d.SetValue(control, std::get<int>(value));
    } else {
      d.SetListIndex(control, std::get<int>(value));
    }
  }
}

class PlotDialogTest : public ::testing::Test {
 protected:
  PlotDialogTest() : document((dir.path() / "forest.qgs").string(), "forest") {}
  // No handler may have ended on the error road.
  void TearDown() override {
    for (const auto& window : app.windows) ADD_FAILURE() << window;
  }

  // Opens a new dialog on the map as it stands.
  frmPlotLayout& Open() {
    dialog = std::make_unique<frmPlotLayout>(defaults);
    dialog->ArcApplication({app, document, extension});
    return *dialog;
  }
  platform::host::MemoryMap& map() { return document.FocusMap(); }
  void OK() { dialog->Fire("cmdOK", ControlEvent::Click); }

  testkit::TempDir dir;
  DesktopApplication app;
  platform::host::MemoryMapDocument document;
  clsExtension extension;
  TransformationDefaults defaults;
  std::unique_ptr<frmPlotLayout> dialog;
  const platform::SpatialReference utm = platform::SpatialReference::FromEpsg(26910);
};

}  // namespace tarnwick::plotfix
