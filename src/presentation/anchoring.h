#pragma once
// Controls that follow their form's size. A form registers each control
// once with a horizontal and a vertical rule; on every resize the list moves
// and stretches the controls' bounds, and the view applies them.
//
// Rules (the same for both directions; C is the form's width or height, P
// the control's left or top, S its width or height when SetAnchors runs):
//   0  position and size scale with the form
//   1  fixed start, size scales
//   2  fixed
//   3  fixed start, far margin kept: the control stretches
//   4  centre scales, size fixed
//   5  moves with the far edge, size fixed
//   6  far margin kept, size scales
// Any other rule is stored and does nothing.
#include <limits>
#include <string>
#include <string_view>
#include <deque>

#include "presentation/dialog_model.h"

namespace tarnwick {

struct Anchor {
  long type = 0;  // the rule; kept in Left for the horizontal, Top for the vertical
  long minimum = -std::numeric_limits<std::int32_t>::max();  // kept, not applied
  long maximum = std::numeric_limits<std::int32_t>::max();   // kept, not applied
  float value = 0;
};

class AnchorObject {
 public:
  AnchorObject(DialogModel& form, std::string control) : Control(std::move(control)), form_(&form) {}

  std::string Control;  // the control's name in the form
  Anchor Left, Top, Right, Bottom, Width, Height;

  // Sets the two rules and stores the figures from the control's bounds and
  // the form's size. A form of no width or height throws (division by
  // zero) for the rules that divide by it.
  void SetAnchors(long horizontal, long vertical);
  // Applies both rules to the control's bounds for the form's present
  // size. A step that gives no usable figure is left out and the next goes
  // on.
  void DoAnchors();

 private:
  DialogModel* form_;
};

class AnchorObjectList {
 public:
  explicit AnchorObjectList(DialogModel& form) : Form(&form) {}

  DialogModel* Form;
  long Count() const { return static_cast<long>(objects_.size()); }
  // The control's object, made and appended when there is none yet.
  AnchorObject& Item(std::string_view control);
  // 1-based position of the control, 0 when it has none.
  long IndexOf(std::string_view control) const;
  void Remove(std::string_view control);
  // Rules 0 and 0 for every object.
  void SetAnchors();
  // Every object's rules, in order of registration.
  void DoAnchors();

 private:
  std::deque<AnchorObject> objects_;  // references stay valid as objects are added
};

}  // namespace tarnwick
