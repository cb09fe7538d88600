#include "presentation/anchoring.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "errors/error_road.h"

namespace tarnwick {
namespace {

constexpr long kErrDivisionByZero = 11;

// One direction of a control: its start and size, the container's extent,
// and the three anchors that serve it.
struct Axis {
  long& position;
  long& size;
  long container;
  Anchor& start;  // Left or Top; holds the rule
  Anchor& far;    // Right or Bottom
  Anchor& extent; // Width or Height
};

float Per(float value, float container) {
  if (container == 0) RaiseError(kErrDivisionByZero, "AnchorObject", "Division by zero");
  return value / container;
}

void Store(Axis axis) {
  const float c = static_cast<float>(axis.container);
  const float p = static_cast<float>(axis.position);
  const float s = static_cast<float>(axis.size);
  switch (axis.start.type) {
    case 0:
      axis.start.value = Per(p, c);
      axis.extent.value = Per(s, c);
      break;
    case 1:
      axis.start.value = p;
      axis.extent.value = Per(s, c);
      break;
    case 2:
      axis.start.value = p;
      axis.extent.value = s;
      break;
    case 3:
      axis.start.value = p;
      axis.extent.value = c - s;
      break;
    case 4:
      axis.start.value = Per(p + s / 2, c);
      axis.far.value = s / 2;
      axis.extent.value = s;
      break;
    case 5:
      axis.start.value = c - p;
      axis.extent.value = s;
      break;
    case 6:
      axis.start.value = Per(s, c);
      axis.far.value = (c - s) - p;
      axis.extent.value = Per(s, c);
      break;
    default:
      break;
  }
}

// A figure as whole twips; none when it is not a number a bound can hold.
std::optional<long> Twips(float figure) {
  if (!std::isfinite(figure) || std::fabs(figure) > 2.0e9f) return std::nullopt;
  return std::lround(figure);
}

void SetIfUsable(long& bound, float figure) {
  if (const auto twips = Twips(figure)) bound = *twips;
}

void Apply(Axis axis) {
  const float c = static_cast<float>(axis.container);
  switch (axis.start.type) {
    case 0:
      SetIfUsable(axis.position, axis.start.value * c);
      SetIfUsable(axis.size, axis.extent.value * c);
      break;
    case 1:
      SetIfUsable(axis.size, axis.extent.value * c);
      break;
    case 3:
      SetIfUsable(axis.size, c - axis.extent.value);
      break;
    case 4:
      SetIfUsable(axis.position, axis.start.value * c - axis.far.value);
      break;
    case 5:
      SetIfUsable(axis.position, c - axis.start.value);
      break;
    case 6:
      SetIfUsable(axis.position, (c - axis.far.value) - axis.start.value * c);
      SetIfUsable(axis.size, axis.extent.value * c);
      break;
    default:
      break;  // 2 keeps the control where it is; others do nothing
  }
}

}  // namespace

void AnchorObject::SetAnchors(long horizontal, long vertical) {
  ControlBounds& bounds = (*form_)[Control].bounds;
  Left.type = horizontal;
  Top.type = vertical;
  Store({bounds.left, bounds.width, form_->formBounds.width, Left, Right, Width});
  Store({bounds.top, bounds.height, form_->formBounds.height, Top, Bottom, Height});
}

void AnchorObject::DoAnchors() {
  if (!form_->Has(Control)) return;
  ControlBounds& bounds = (*form_)[Control].bounds;
  Apply({bounds.left, bounds.width, form_->formBounds.width, Left, Right, Width});
  Apply({bounds.top, bounds.height, form_->formBounds.height, Top, Bottom, Height});
}

AnchorObject& AnchorObjectList::Item(std::string_view control) {
  for (auto& object : objects_) {
    if (object.Control == control) return object;
  }
  return objects_.emplace_back(*Form, std::string(control));
}

long AnchorObjectList::IndexOf(std::string_view control) const {
  const auto found = std::find_if(objects_.begin(), objects_.end(),
                                  [&](const AnchorObject& object) { return object.Control == control; });
  return found == objects_.end() ? 0 : static_cast<long>(found - objects_.begin()) + 1;
}

void AnchorObjectList::Remove(std::string_view control) {
  std::erase_if(objects_, [&](const AnchorObject& object) { return object.Control == control; });
}

void AnchorObjectList::SetAnchors() {
  for (auto& object : objects_) object.SetAnchors(0, 0);
}

void AnchorObjectList::DoAnchors() {
  for (auto& object : objects_) object.DoAnchors();
}

}  // namespace tarnwick
