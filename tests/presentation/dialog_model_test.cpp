// The dialog model: setters that fire handlers as controls would, and the
// anchoring rules that move and stretch controls when a form is resized.
#include "presentation/dialog_model.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <tuple>
#include <vector>

#include "errors/error_road.h"
#include "presentation/anchoring.h"
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

class OneControlForm : public DialogModel {
 public:
  OneControlForm() : DialogModel("frmTest") {
    Add({.name = "ctl"});
    Add({.name = "other"});
  }
};

// Each rule on both axes of a control in a form resized from `before` to
// `after`; a form of no size cannot give the scaling rules their ratios.
TEST(Anchoring, RulesMoveAndStretchInBothDirections) {
  for (const auto& [rule, before, position, size, after, expectedPosition, expectedSize] :
       std::vector<std::tuple<long, long, long, long, long, long, long>>{
           {3, 3000, 500, 1000, 3500, 500, 1500},    // far margin kept: 1,000 wide becomes 1,500
           {5, 3000, 2900, 100, 3500, 3400, 100},    // follows the far edge: 2,900 becomes 3,400
           {0, 3000, 300, 600, 6000, 600, 1200},     // scales
           {1, 3000, 300, 600, 6000, 300, 1200},     // fixed start, size scales
           {2, 3000, 300, 600, 6000, 300, 600},      // fixed
           {4, 3000, 1000, 1000, 4000, 1500, 1000},  // centre scales
           {6, 3000, 1000, 1000, 6000, 3000, 2000},  // far margin kept, size scales
           {9, 3000, 300, 600, 6000, 300, 600},      // no such rule: nothing moves
       }) {
    OneControlForm form;
    form.formBounds = {0, 0, before, before};
    form["ctl"].bounds = {position, position, size, size};
    AnchorObjectList list(form);
    list.Item("ctl").SetAnchors(rule, rule);
    form.formBounds = {0, 0, after, after};
    list.DoAnchors();
    const ControlBounds& b = form["ctl"].bounds;
    EXPECT_EQ(std::tie(b.left, b.width, b.top, b.height),
              std::tie(expectedPosition, expectedSize, expectedPosition, expectedSize))
        << "rule " << rule;
  }

  OneControlForm empty;
  AnchorObjectList list(empty);
  list.Item("ctl");
  empty.formBounds = {};
  EXPECT_THROW(list.SetAnchors(), RoutineError);
}

}  // namespace
}  // namespace tarnwick
