#include "presentation/dialog_model.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "testkit/fake_application.h"

namespace tarnwick {
namespace {

// A two-control dialog whose handlers log what ran.
class SampleDialog : public DialogModel {
 public:
  explicit SampleDialog(platform::host::Application& app) : DialogModel("..\\frmSample.frm") {
    SetErrorHost(&app, nullptr);
    Add({.name = "txtValue", .kind = ControlKind::TextBox});
    Add({.name = "optA", .kind = ControlKind::OptionButton, .value = 1, .group = "g"});
    Add({.name = "optB", .kind = ControlKind::OptionButton, .group = "g"});
    Add({.name = "cbxList", .kind = ControlKind::ComboBox, .entries = {"a", "b"}});
    On("txtValue", ControlEvent::Change, [this] { log += "change;"; });
    On("optB", ControlEvent::Click, [this] { log += "optB;"; });
    On("cbxList", ControlEvent::Click, [this] {
      log += "list;";
      throw std::runtime_error("broken handler");
    });
  }
  std::string log;
};

TEST(DialogModel, SettersFireHandlersAsTheControlsWould) {
  testkit::FakeApplication app;
  SampleDialog dialog(app);
  int repaints = 0;
  dialog.changed = [&] { ++repaints; };

  dialog.SetText("txtValue", "12");
  dialog.SetText("txtValue", "12");  // no change, no event
  dialog.SetValue("optB", 1);
  EXPECT_EQ(dialog["optA"].value, 0);  // one option of a group at a time
  EXPECT_EQ(dialog.log, "change;optB;");

  // A failing handler ends its error at the entry point, named after it.
  dialog.SetListIndex("cbxList", 1);
  EXPECT_EQ(dialog["cbxList"].SelectedEntry(), "b");
  ASSERT_EQ(app.windows.size(), 1u);
  EXPECT_NE(app.windows[0].find("cbxList_Click  ..\\frmSample.frm"), std::string::npos);
  EXPECT_EQ(repaints, 3);
  EXPECT_THROW(dialog["nothing"], std::out_of_range);
}

}  // namespace
}  // namespace tarnwick
