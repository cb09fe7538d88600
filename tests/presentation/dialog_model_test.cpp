// The dialog model: setters that fire handlers as controls would, and the
// anchoring rules that move and stretch controls when a form is resized.
#include "presentation/dialog_model.h"

#include <gtest/gtest.h>

#include <stdexcept>

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

struct RuleCase {
  long rule;
  long containerBefore, position, size;
  long containerAfter, expectedPosition, expectedSize;
};

TEST(Anchoring, RulesMoveAndStretchInBothDirections) {
  const RuleCase cases[] = {
      {3, 3000, 500, 1000, 3500, 500, 1500},   // far margin kept: 1,000 wide becomes 1,500
      {5, 3000, 2900, 100, 3500, 3400, 100},   // follows the far edge: 2,900 becomes 3,400
      {0, 3000, 300, 600, 6000, 600, 1200},    // scales
      {1, 3000, 300, 600, 6000, 300, 1200},    // fixed start, size scales
      {2, 3000, 300, 600, 6000, 300, 600},     // fixed
      {4, 3000, 1000, 1000, 4000, 1500, 1000}, // centre scales
      {6, 3000, 1000, 1000, 6000, 3000, 2000}, // far margin kept, size scales
      {9, 3000, 300, 600, 6000, 300, 600},     // no such rule: nothing moves
  };
  for (const RuleCase& c : cases) {
    SCOPED_TRACE("rule " + std::to_string(c.rule));
    OneControlForm form;
    form.formBounds = {0, 0, c.containerBefore, c.containerBefore};
    form["ctl"].bounds = {c.position, c.position, c.size, c.size};
    AnchorObjectList list(form);
    list.Item("ctl").SetAnchors(c.rule, c.rule);
    form.formBounds = {0, 0, c.containerAfter, c.containerAfter};
    list.DoAnchors();
    const ControlBounds& b = form["ctl"].bounds;
    EXPECT_EQ(b.left, c.expectedPosition);
    EXPECT_EQ(b.width, c.expectedSize);
    EXPECT_EQ(b.top, c.expectedPosition);
    EXPECT_EQ(b.height, c.expectedSize);
  }
}

TEST(Anchoring, AFormOfNoSizeCannotGiveTheScalingRulesTheirRatios) {
  OneControlForm form;
  AnchorObjectList list(form);
  list.Item("ctl");
  form.formBounds = {};
  EXPECT_THROW(list.SetAnchors(), RoutineError);
}

}  // namespace
}  // namespace tarnwick
