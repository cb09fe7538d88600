#pragma once
// A dialog without a widget toolkit: the state of its controls by name
// (caption, entries, position, text, visibility, enabled state, back colour,
// focus) and its event handlers by control and event. A view (the Qt forms
// of the desktop) shows the state and turns the user's actions into the
// setters and Fire below; tests drive the same calls without a screen.
//
// Setting a value runs the control's handler at once, as the classic Windows
// form controls the dialogs were designed on do: a new text fires Change, a
// list position or a check box value fires Click. The dialogs' re-entry
// guards exist because of this.
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/map_document.h"

namespace tarnwick::platform::host {
class Application;
}

namespace tarnwick {

using platform::host::Rgb;
inline constexpr Rgb kWhite{255, 255, 255};
// A control that a check at OK found wanting.
inline constexpr Rgb kYellow{255, 255, 0};

enum class ControlKind {
  Label,
  TextBox,
  ComboBox,  // a drop-down list that takes no typed text
  ListBox,
  MultiSelectListBox,
  OptionButton,
  CheckBox,
  CommandButton,
  Image,
  RichTextBox,
};

// Position and size in twips within the form (15 twips to a pixel).
struct ControlBounds {
  long left = 0;
  long top = 0;
  long width = 0;
  long height = 0;
};

struct Control {
  std::string name;
  ControlKind kind = ControlKind::Label;
  std::string caption;  // labels, buttons, check boxes, option buttons
  std::string text;     // text boxes and rich text boxes
  std::vector<std::string> entries;  // lists and combo boxes
  int listIndex = -1;                // position in entries; -1 none
  std::vector<bool> selected;        // multi-select lists: one flag per entry
  int value = 0;                     // check box and option button: 0 off, 1 on
  std::string group;                 // option buttons of one group exclude each other
  bool visible = true;
  bool enabled = true;
  bool locked = false;  // a text box the user cannot edit
  Rgb backColor = kWhite;
  std::string toolTip;
  std::string picture;  // images: the name of the picture shown ("RadioOn", "ToggleUp", ...)
  ControlBounds bounds;
  int selStart = 0;  // caret position in a text box

  // The entry at listIndex, or "" with none.
  std::string SelectedEntry() const;
};

enum class ControlEvent { Click, Change, DblClick };

class DialogModel {
 public:
  // module: the form's source name on the error road ("..\frmPlotLayout.frm").
  explicit DialogModel(std::string module);
  virtual ~DialogModel() = default;
  DialogModel(const DialogModel&) = delete;
  DialogModel& operator=(const DialogModel&) = delete;

  // Controls in the order they were added. operator[] throws
  // std::out_of_range naming an unknown control.
  const std::vector<Control>& Controls() const { return controls_; }
  Control& operator[](std::string_view name);
  const Control& operator[](std::string_view name) const;
  bool Has(std::string_view name) const;

  std::string caption;         // the window's caption
  std::string focus;           // the control that has the focus
  ControlBounds formBounds;    // the form's own size, in twips
  bool unloaded = false;       // the form has closed itself (OK, Cancel)
  bool hidden = false;         // the form is out of sight while its run goes on

  // The user's edits, as a view reports them. Each runs the control's
  // handler, if it has one, as an entry point of the error road.
  void SetText(std::string_view control, std::string text);  // Change, when the text differs
  void SetListIndex(std::string_view control, int index);    // Click
  void SetValue(std::string_view control, int value);        // Click, when the value differs
  void SetSelected(std::string_view control, int entry, bool selected);  // Click
  void Fire(std::string_view control, ControlEvent event);   // a click or double-click as such

  // A key typed into a text box: the key to let through, 0 to drop it.
  virtual int KeyPress(std::string_view control, int key) { return key; }

  // Called after every handler and whenever the state changes from outside
  // an event (the anchor tool writing coordinates), so a view can repaint.
  std::function<void()> changed;
  void NotifyChanged() const;

 protected:
  Control& Add(Control control);
  void On(std::string_view control, ControlEvent event, std::function<void()> handler);
  // The host whose message window and log an error in a handler reaches.
  void SetErrorHost(platform::host::Application* application, const platform::host::MapDocument* document);
  // Runs body as the entry point named routine: an error ends its climb
  // here (message window and log) and the handler returns.
  void AsEntryPoint(std::string_view routine, const std::function<void()>& body);

 private:
  void RunHandler(std::string_view control, ControlEvent event);

  std::string module_;
  std::vector<Control> controls_;
  std::map<std::string, std::function<void()>, std::less<>> handlers_;
  platform::host::Application* application_ = nullptr;
  const platform::host::MapDocument* document_ = nullptr;
};

}  // namespace tarnwick
