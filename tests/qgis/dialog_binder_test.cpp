// The generic binder between a dialog model and a form: state goes to the
// widgets without echoing back, and the user's actions reach the handlers.
// (Lists, yellow marks and picture buttons are used by the tool views' tests.)
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QPointer>
#include <QRadioButton>
#include <QTest>
#include <cctype>

#include "views/dialog_binder.h"

namespace tarnwick::desktop::testing {
namespace {

class SampleDialog : public DialogModel {
 public:
  SampleDialog() : DialogModel("..\\frmSample.frm") {
    caption = " Sample:";
    Add({.name = "txtPlots", .kind = ControlKind::TextBox});
    Add({.name = "lblEcho", .kind = ControlKind::Label});
    Add({.name = "cbxUnits", .kind = ControlKind::ComboBox, .entries = {"Feet", "Meters"}, .listIndex = 0});
    Add({.name = "chkLock", .kind = ControlKind::CheckBox, .caption = "&Lock"});
    Add({.name = "optCount", .kind = ControlKind::OptionButton, .caption = "Count", .value = 1, .group = "g"});
    Add({.name = "optSpacing", .kind = ControlKind::OptionButton, .caption = "Spacing", .group = "g"});
    Add({.name = "cmdOK", .kind = ControlKind::CommandButton, .caption = "&OK"});
    Add({.name = "imgButton", .kind = ControlKind::Image, .visible = false});
    On("txtPlots", ControlEvent::Change, [this] {
      ++changes;
      (*this)["lblEcho"].caption = "Plots: " + (*this)["txtPlots"].text;
    });
    On("chkLock", ControlEvent::Click, [this] {
      (*this)["txtPlots"].enabled = (*this)["chkLock"].value == 0;
      (*this)["txtPlots"].backColor = (*this)["chkLock"].value ? Rgb{232, 232, 232} : kWhite;
    });
    On("cbxUnits", ControlEvent::Click, [this] { (*this)["imgButton"].visible = (*this)["cbxUnits"].listIndex == 1; });
    On("cmdOK", ControlEvent::Click, [this] { unloaded = true; });
  }
  int KeyPress(std::string_view, int key) override { return std::isdigit(key) || key == 8 ? key : 0; }
  int changes = 0;
};

template <class W>
W* AddWidget(QDialog& form, const char* name, QRect geometry = {}) {
  auto* widget = new W(&form);
  widget->setObjectName(name);
  if (!geometry.isNull()) widget->setGeometry(geometry);
  return widget;
}

TEST(DialogBinder, ShowsTheModelAndTurnsTheUsersActionsIntoItsEvents) {
  SampleDialog model;
  model["imgButton"].picture = "ToggleUp";
  QPointer<QDialog> form = new QDialog;
  form->setAttribute(Qt::WA_DeleteOnClose);
  form->resize(400, 300);
  auto* plots = AddWidget<QLineEdit>(*form, "txtPlots", {10, 10, 100, 24});
  auto* echo = AddWidget<QLabel>(*form, "lblEcho", {10, 40, 200, 20});
  auto* units = AddWidget<QComboBox>(*form, "cbxUnits", {10, 70, 100, 24});
  auto* lock = AddWidget<QCheckBox>(*form, "chkLock", {120, 10, 100, 24});
  auto* count = AddWidget<QRadioButton>(*form, "optCount", {120, 40, 100, 24});
  auto* spacing = AddWidget<QRadioButton>(*form, "optSpacing", {120, 70, 100, 24});
  auto* ok = AddWidget<QPushButton>(*form, "cmdOK", {300, 260, 80, 28});
  auto* image = AddWidget<QLabel>(*form, "imgButton", {230, 10, 32, 32});
  DialogBinder binder(model, *form, {});
  form->show();

  EXPECT_EQ(form->windowTitle(), " Sample:");
  EXPECT_EQ(units->count(), 2);
  EXPECT_EQ(units->currentIndex(), 0);
  EXPECT_EQ(lock->text(), "&Lock");
  EXPECT_TRUE(count->isChecked());
  EXPECT_FALSE(image->isVisible());
  EXPECT_EQ(model["txtPlots"].bounds.width, 1500);  // taken from the form: 100 pixels

  // Typed keys pass the model's filter; each edit fires Change once.
  QApplication::setActiveWindow(form);
  plots->setFocus();
  QTest::keyClicks(plots, "1a2");
  EXPECT_EQ(model["txtPlots"].text, "12");
  EXPECT_EQ(model.changes, 2);
  EXPECT_EQ(echo->text(), "Plots: 12");
  EXPECT_EQ(model.focus, "txtPlots");

  // A handler's state reaches the widgets without firing their signals again.
  lock->click();
  EXPECT_EQ(model["chkLock"].value, 1);
  EXPECT_FALSE(plots->isEnabled());
  EXPECT_EQ(plots->palette().color(QPalette::Base), QColor(232, 232, 232));
  EXPECT_EQ(model.changes, 2);

  spacing->click();
  EXPECT_EQ(model["optSpacing"].value, 1);
  EXPECT_EQ(model["optCount"].value, 0);
  EXPECT_FALSE(count->isChecked());

  units->setCurrentIndex(1);
  emit units->activated(1);
  EXPECT_EQ(model["cbxUnits"].listIndex, 1);
  EXPECT_TRUE(image->isVisible());
  EXPECT_EQ(image->pixmap(Qt::ReturnByValue).size(), QSize(32, 32));

  // The model's own changes (as from the anchor tool) repaint the form; a
  // missing picture leaves none.
  model["txtPlots"].text = "40";
  model["cmdOK"].caption = "&Run";
  model["lblEcho"].bounds.left = 3000;
  model["imgButton"].picture = "NoSuchPicture";
  model.NotifyChanged();
  EXPECT_EQ(plots->text(), "40");
  EXPECT_EQ(ok->text(), "&Run");
  EXPECT_EQ(echo->x(), 200);
  EXPECT_TRUE(image->pixmap(Qt::ReturnByValue).isNull());
  EXPECT_EQ(model.changes, 2);

  // Out of sight while the model's run goes on, and closed when it unloads.
  model.hidden = true;
  model.NotifyChanged();
  EXPECT_FALSE(form->isVisible());
  ok->click();
  EXPECT_TRUE(model.unloaded);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(form.isNull());
}

}  // namespace
}  // namespace tarnwick::desktop::testing
