#include "presentation/anchoring.h"

#include <gtest/gtest.h>

#include "errors/error_road.h"

namespace tarnwick {
namespace {

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
