#include "views/wrapping_radio_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace tarnwick::desktop {

void WrappingRadioButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QString caption = option.text;
  option.text.clear();
  painter.drawControl(QStyle::CE_RadioButton, option);
  const QRect textArea = style()->subElementRect(QStyle::SE_RadioButtonContents, &option, this);
  painter.drawItemText(textArea, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, palette(), isEnabled(), caption,
                       QPalette::WindowText);
}

}  // namespace tarnwick::desktop
