#pragma once
// One binder shows any dialog model in a Qt Designer form.
//
// A new dialog is a model (src/...), a .ui file and a few lines of wiring:
//   1. Draw the form in Qt Designer (apps/qgis/views/forms/NAME.ui) and give
//      each widget the objectName of its control in the model: QLabel for a
//      label or an image (a click fires Click), QLineEdit or QPlainTextEdit
//      for a text box, QComboBox, QListWidget (multi-selection for a
//      multi-select list), QRadioButton, QCheckBox, QPushButton or
//      QToolButton, QTextEdit for a rich text box (its view fills it). An
//      image's picture is drawn from views/pictures/NAME.svg (pictures.qrc).
//      Widgets without a control stay as drawn; controls without a widget
//      are not shown.
//   2. In the view: set the form up on a QDialog, make the model, then
//        DialogBinder binder(model, dialog, errors);
//      Controls whose bounds the model leaves at zero take the form's
//      geometry; bounds the model sets (in twips) move the widgets. If the
//      model follows the form's size, set binder.resized to call its resize
//      handler. For a tool dialog, set binder.refreshed to the
//      DialogContext's refreshCommands, so that the toolbar follows the
//      dialog (the anchor tool's button). Register the view's maker in
//      RegisterToolDialogViews (views/tool_dialog_views.cpp).
//   3. Show the dialog: exec() for a modal one, show() for one beside the
//      map. The binder copies the model's state to the widgets after every
//      handler (signals blocked meanwhile), turns the user's edits into the
//      model's setters and Fire, filters typed keys through KeyPress, hides
//      the window while the model is hidden, and closes it when the model
//      unloads itself. Closing the window
//      by its title bar fires cmdCancel (or cmdOK) when the model has one.
#include <QObject>
#include <QPointer>
#include <functional>
#include <string>

#include "host/entry_point.h"
#include "presentation/dialog_model.h"

class QWidget;

namespace tarnwick::desktop {

class DialogBinder : public QObject {
  Q_OBJECT
 public:
  DialogBinder(DialogModel& model, QWidget& form, ErrorHost errors);
  ~DialogBinder() override;

  // Copies the model's state to the form and its widgets.
  void Refresh();
  QWidget* WidgetOf(const std::string& control) const;

  // Called after the model's formBounds took the form's new size.
  std::function<void()> resized;
  // Called after every refresh (a view's own drawing, the toolbar's state).
  std::function<void()> refreshed;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Connect(QWidget* widget, const Control& control);
  void CopyControl(const Control& control, QWidget* widget);
  // Runs a user's action on the model as an entry point, then refreshes.
  void Dispatch(const char* routine, const std::function<void()>& action);
  std::string ControlOf(const QObject* widget) const;

  DialogModel& model_;
  QPointer<QWidget> form_;
  ErrorHost errors_;
  std::function<void()> previousChanged_;
  std::string appliedFocus_;
  bool refreshing_ = false;
  bool closing_ = false;
  bool hiddenByModel_ = false;  // hidden because the model asked it
};

}  // namespace tarnwick::desktop
