#pragma once
// An option button whose caption wraps onto the lines its height gives it
// (a QRadioButton draws its text on one line), and which a click anywhere
// on it chooses. Forms use it through Qt Designer's promotion.
#include <QRadioButton>

namespace tarnwick::desktop {

class WrappingRadioButton : public QRadioButton {
  Q_OBJECT
 public:
  using QRadioButton::QRadioButton;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

}  // namespace tarnwick::desktop
