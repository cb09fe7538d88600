// The toolbar's commands and what a click runs, and the extension's settings
// as the project stores them.
#include "shell/commands.h"

#include <gtest/gtest.h>

#include <deque>
#include <stdexcept>
#include <tuple>

#include "platform/host/memory_map_document.h"
#include "shell/extension.h"
#include "testkit/fake_application.h"
#include "testkit/temp_dir.h"

namespace tarnwick {
namespace {

using platform::host::ReportWindow;

TEST(CommandTable, ToolbarItemsTextsAndEnabledRules) {
  std::vector<std::pair<std::string, bool>> items;  // each item's ID, and whether a separator comes before it
  for (long pos = 0; pos < clsTarnwickToolbar::ItemCount; ++pos) {
    ItemDef item;
    clsTarnwickToolbar::GetItemInfo(pos, item);
    items.emplace_back(item.ID, item.Group);
  }
  EXPECT_EQ(items, (std::vector<std::pair<std::string, bool>>{{"Tarnwick.cmdTNWKWPConverter", false},
                                                              {"Tarnwick.clsPlotLayout", false},
                                                              {"Tarnwick.clsTransferStandIDs", false},
                                                              {"Tarnwick.clsSelPointTool", true}}));
  EXPECT_EQ(clsTarnwickToolbar::Caption, "Tarnwick Tools");

  const CommandInfo* tool = FindCommand("Tarnwick.clsSelPointTool");
  ASSERT_NE(tool, nullptr);
  EXPECT_EQ(tool->Message,
            "Click on screen to specify an anchor point. Plot array will be forced to go through this point.");
  EXPECT_EQ(FindCommand("Tarnwick.clsExtension"), nullptr);

  clsExtension extension;
  EXPECT_FALSE(CommandEnabled(*tool, nullptr) || CommandEnabled(*tool, &extension));
  extension.SelToolEnabled = true;
  EXPECT_TRUE(CommandEnabled(*tool, &extension) && CommandEnabled(kPlotLayoutCommand, nullptr));
}

// A modal dialog whose OK leaves a parameter set behind, or that is cancelled.
class FakeDialog : public ToolDialog {
 public:
  explicit FakeDialog(bool ok) : ok_(ok) {}
  void ArcApplication(HostArray& host) override {
    host_ = &host;
    host.extension.ShouldContinue = false;
  }
  void ShowModal() override {
    if (!ok_) return;
    host_->extension.frmLayerIDReturn = std::string("parameters");
    host_->extension.ShouldContinue = true;
  }

 private:
  bool ok_;
  HostArray* host_ = nullptr;
};

struct Desktop {
  testkit::TempDir dir;
  testkit::FakeApplication app;
  platform::host::MemoryMapDocument document{dir / "forest.mxd", "forest"};
  clsExtension extension;
  std::vector<std::string> driverRuns;

  cmdTNWKWPConverter Converter(bool ok, std::string report) {
    cmdTNWKWPConverter command([ok] { return std::make_unique<FakeDialog>(ok); },
                               [this, report](HostArray&, const std::any& parameters) {
                                 driverRuns.push_back(std::any_cast<std::string>(parameters));
                                 if (report == "throw") throw std::runtime_error("driver broke");
                                 return report;
                               });
    command.OnCreate(app, document, &extension);
    return command;
  }
};

TEST(ModalCommand, CancelRunsNothingAnEmptyReportShowsFunctionFailedAndFailuresEndAtTheClick) {
  Desktop desktop;
  desktop.Converter(false, "{\\rtf1 done}").OnClick();
  EXPECT_TRUE(desktop.driverRuns.empty() && desktop.app.reports.empty() && !desktop.document.IsDirty());

  desktop.Converter(true, "").OnClick();
  EXPECT_EQ(desktop.driverRuns, std::vector<std::string>{"parameters"});
  ASSERT_EQ(desktop.app.reports.size(), 1u);
  EXPECT_EQ(desktop.app.reports[0].text, "Function Failed...");
  EXPECT_EQ(desktop.app.reports[0].window, ReportWindow::Modal);
  EXPECT_TRUE(!desktop.extension.frmLayerIDReturn.has_value() && desktop.document.IsDirty());

  desktop.Converter(true, "{\\rtf1 done}").OnClick();
  EXPECT_EQ(desktop.app.reports.at(1).text, "{\\rtf1 done}");

  // A failing driver ends at the click on the error road, without a report.
  Desktop failing;
  failing.Converter(true, "throw").OnClick();
  EXPECT_TRUE(failing.app.reports.empty() && !failing.document.IsDirty());
  ASSERT_EQ(failing.app.windows.size(), 1u);
  EXPECT_NE(failing.app.windows[0].find("ICommand_OnClick  ..\\cmdTNWKWPConverter.cls"), std::string::npos);
  EXPECT_NE(failing.app.windows[0].find("driver broke"), std::string::npos);

  // Without an extension the click fails on the error road, not in the host.
  clsTransferStandIDs orphan([] { return std::make_unique<FakeDialog>(true); },
                             [](HostArray&, const std::any&) { return std::string(); });
  orphan.OnCreate(failing.app, failing.document, nullptr);
  orphan.OnClick();
  ASSERT_EQ(failing.app.windows.size(), 2u);
  EXPECT_NE(failing.app.windows[1].find("..\\clsTransferStandIDs.cls"), std::string::npos);
}

class FakeModelessDialog : public ModelessToolDialog, public ModelessFrame {
 public:
  void ArcApplication(HostArray& host) override { dirtyWhenOpened = host.document.IsDirty(); }
  ModelessFrame& Frame() override { return *this; }
  void SetCaption(const std::string& text) override { caption = text; }
  void SetVisible(bool shown) override { visible = shown; }

  bool dirtyWhenOpened = true;
  std::string caption;
  bool visible = false;
};

TEST(PlotLayoutCommand, OpensTheDialogBesideTheMapAndMarksTheDocument) {
  Desktop desktop;
  std::vector<std::unique_ptr<FakeModelessDialog>> opened;
  clsPlotLayout command([&]() -> ModelessToolDialog& { return *opened.emplace_back(std::make_unique<FakeModelessDialog>()); });
  command.OnCreate(desktop.app, desktop.document, &desktop.extension);
  command.OnClick();
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0]->caption, " Plot Layout Parameters:");
  EXPECT_TRUE(!opened[0]->dirtyWhenOpened && opened[0]->visible && desktop.document.IsDirty());
  EXPECT_EQ(command.Caption(), "TNWK &Plot Layout Tool");
}

class MemoryStream : public ValueStream {
 public:
  StreamValue Read() override {
    if (values.empty()) throw std::runtime_error("End of stream");
    StreamValue value = values.front();
    values.pop_front();
    return value;
  }
  void Write(const StreamValue& value) override { values.push_back(value); }
  std::deque<StreamValue> values;
};

// Each setting's round trip, the feature dataset left out of it and a value
// of the wrong type are checked through a project file by the QGIS settings
// test; here the stream's order, the repair on loading and a short stream.
TEST(Extension, LoadRepairsTheSpacingsAShortStreamKeepsWhatWasReadAndStartupFallsBack) {
  clsExtension saved;
  saved.UserSpacingOption = 7;
  saved.XSpacing = -20;
  saved.YSpacing = 0;
  saved.OrientationHistory = "Bearing";
  MemoryStream stream;
  saved.Save(stream);
  ASSERT_EQ(stream.values.size(), 24u);
  EXPECT_EQ(std::get<std::int32_t>(stream.values[14]), 7);  // UserSpacingOption keeps its place
  MemoryStream shortStream = stream;
  clsExtension loaded;
  loaded.Load(stream);
  // The X spacing negative turned positive, the Y spacing zero turned into one.
  EXPECT_EQ(std::make_tuple(loaded.UserSpacingOption, loaded.XSpacing, loaded.YSpacing), std::make_tuple(7, 20.0, 1.0));

  // A stream that ends after value 23: read up to the end; the old value of
  // what was not there kept, nothing repaired, and one error shown.
  shortStream.values.pop_back();
  testkit::FakeApplication app;
  clsExtension partly;
  partly.OrientationFromField = true;
  partly.SetErrorHost(&app, nullptr);
  partly.Load(shortStream);
  EXPECT_EQ(std::make_tuple(partly.OrientationHistory, partly.OrientationFromField, partly.XSpacing),
            std::make_tuple(std::string("Bearing"), true, -20.0));
  EXPECT_EQ(app.windows.size(), 1u);

  // Started without a store type, an extension falls back to a shapefile folder.
  clsExtension fresh;
  fresh.Startup();
  EXPECT_EQ(fresh.XSpacing, 0);  // the dialog shows 1; the extension keeps 0
  clsExtension typeless;
  typeless.DirectoryPath = "/data";
  typeless.IsFeatureDataset = true;
  typeless.Startup();
  for (const clsExtension* e : {&fresh, &typeless}) {
    EXPECT_EQ(std::make_tuple(e->DirectoryType, e->DirectoryPath, e->IsFeatureDataset),
              std::make_tuple(std::string("Shapefile"), std::string(), false));
  }
}

}  // namespace
}  // namespace tarnwick
