#include "views/dialog_binder.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTextEdit>

#include "host/qt_text.h"

// Qt's resources in a static library are registered by name.
static void InitPictures() { Q_INIT_RESOURCE(pictures); }

namespace tarnwick::desktop {

namespace {

constexpr const char* kModule = "DialogBinder";
constexpr int kTwipsPerPixel = 15;

int Pixels(long twips) { return static_cast<int>((twips + kTwipsPerPixel / 2) / kTwipsPerPixel); }
long Twips(int pixels) { return static_cast<long>(pixels) * kTwipsPerPixel; }

bool IsZero(const ControlBounds& b) { return b.left == 0 && b.top == 0 && b.width == 0 && b.height == 0; }

QRect PixelRect(const ControlBounds& b) { return {Pixels(b.left), Pixels(b.top), Pixels(b.width), Pixels(b.height)}; }

ControlBounds TwipBounds(const QRect& r) { return {Twips(r.x()), Twips(r.y()), Twips(r.width()), Twips(r.height())}; }

// A widget a layout places keeps the layout's geometry.
bool PlacedByLayout(const QWidget* widget) {
  const QWidget* parent = widget->parentWidget();
  return parent && parent->layout() && parent->layout()->indexOf(const_cast<QWidget*>(widget)) >= 0;
}

QStringList Entries(const Control& control) {
  QStringList entries;
  for (const auto& entry : control.entries) entries << ToQString(entry);
  return entries;
}

// A drop-down list that takes no typed text is drawn as a button, so its
// back colour is the button's too.
void SetBackColor(QWidget* widget, const Rgb& color) {
  QPalette palette = widget->palette();
  const QColor wanted(color.red, color.green, color.blue);
  const bool button = qobject_cast<QComboBox*>(widget) != nullptr;
  if (palette.color(QPalette::Base) == wanted && (!button || palette.color(QPalette::Button) == wanted)) return;
  palette.setColor(QPalette::Base, wanted);
  if (button) palette.setColor(QPalette::Button, wanted);
  widget->setPalette(palette);
}

// An image's picture, drawn at the label's size; a picture the plugin does
// not have leaves the label empty.
void ShowPicture(QLabel* label, const std::string& picture) {
  const QString name = ToQString(picture);
  if (label->property("picture").toString() == name && label->property("pictureSize").toSize() == label->size()) {
    return;
  }
  label->setProperty("picture", name);
  label->setProperty("pictureSize", label->size());
  InitPictures();
  const QString path = QStringLiteral(":/tarnwick/pictures/%1.svg").arg(name);
  label->setPixmap(QFile::exists(path) ? QIcon(path).pixmap(label->size()) : QPixmap());
}

void CopyList(const Control& control, QListWidget* list) {
  const QStringList entries = Entries(control);
  QStringList shown;
  for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
  if (shown != entries) {
    list->clear();
    list->addItems(entries);
  }
  if (control.kind == ControlKind::MultiSelectListBox) {
    list->setSelectionMode(QAbstractItemView::MultiSelection);
    for (int i = 0; i < list->count(); ++i) {
      const bool selected = static_cast<std::size_t>(i) < control.selected.size() && control.selected[static_cast<std::size_t>(i)];
      list->item(i)->setSelected(selected);
    }
  } else {
    list->setCurrentRow(control.listIndex);
  }
}

void CopyCombo(const Control& control, QComboBox* combo) {
  const QStringList entries = Entries(control);
  QStringList shown;
  for (int i = 0; i < combo->count(); ++i) shown << combo->itemText(i);
  if (shown != entries) {
    combo->clear();
    combo->addItems(entries);
  }
  combo->setCurrentIndex(control.listIndex);
}

}  // namespace

DialogBinder::DialogBinder(DialogModel& model, QWidget& form, ErrorHost errors)
    : model_(model), form_(&form), errors_(errors), previousChanged_(model.changed) {
  // Bounds the model leaves open come from the form as drawn.
  if (model_.formBounds.width == 0 || model_.formBounds.height == 0) {
    model_.formBounds.width = Twips(form.width());
    model_.formBounds.height = Twips(form.height());
  } else {
    form.resize(Pixels(model_.formBounds.width), Pixels(model_.formBounds.height));
  }
  std::vector<std::string> names;
  for (const Control& control : model_.Controls()) names.push_back(control.name);
  for (const std::string& name : names) {
    QWidget* widget = WidgetOf(name);
    if (!widget) continue;
    Control& control = model_[name];
    if (IsZero(control.bounds)) control.bounds = TwipBounds(widget->geometry());
    Connect(widget, control);
  }
  form.installEventFilter(this);
  model_.changed = [this] {
    if (previousChanged_) previousChanged_();
    Refresh();
  };
  Refresh();
}

DialogBinder::~DialogBinder() { model_.changed = previousChanged_; }

QWidget* DialogBinder::WidgetOf(const std::string& control) const {
  return form_ ? form_->findChild<QWidget*>(ToQString(control)) : nullptr;
}

std::string DialogBinder::ControlOf(const QObject* widget) const {
  const std::string name = ToStdString(widget->objectName());
  return model_.Has(name) ? name : std::string();
}

void DialogBinder::Dispatch(const char* routine, const std::function<void()>& action) {
  if (refreshing_) return;
  RunAsEntryPoint(routine, kModule, errors_, [&] {
    action();
    Refresh();
  });
}

void DialogBinder::Connect(QWidget* widget, const Control& control) {
  const std::string name = control.name;
  widget->installEventFilter(this);
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
    connect(edit, &QLineEdit::textEdited, this, [this, name, edit](const QString& text) {
      Dispatch("Text_Change ", [&] {
        model_[name].selStart = edit->cursorPosition();
        model_.SetText(name, ToStdString(text));
      });
    });
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(widget)) {
    connect(plain, &QPlainTextEdit::textChanged, this, [this, name, plain] {
      Dispatch("Text_Change ", [&] { model_.SetText(name, ToStdString(plain->toPlainText())); });
    });
  } else if (auto* rich = qobject_cast<QTextEdit*>(widget); rich && control.kind == ControlKind::TextBox) {
    connect(rich, &QTextEdit::textChanged, this, [this, name, rich] {
      Dispatch("Text_Change ", [&] { model_.SetText(name, ToStdString(rich->toPlainText())); });
    });
  } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
    connect(combo, qOverload<int>(&QComboBox::activated), this,
            [this, name](int index) { Dispatch("List_Click ", [&] { model_.SetListIndex(name, index); }); });
  } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
    list->viewport()->installEventFilter(this);
    connect(list, &QListWidget::itemSelectionChanged, this, [this, name, list] {
      Dispatch("List_Click ", [&] {
        const Control& state = model_[name];
        if (state.kind != ControlKind::MultiSelectListBox) {
          model_.SetListIndex(name, list->currentRow());
          return;
        }
        for (int i = 0; i < list->count(); ++i) {
          const bool was = static_cast<std::size_t>(i) < state.selected.size() && state.selected[static_cast<std::size_t>(i)];
          if (list->item(i)->isSelected() != was) model_.SetSelected(name, i, !was);
        }
      });
    });
    connect(list, &QListWidget::itemDoubleClicked, this, [this, name](QListWidgetItem*) {
      Dispatch("List_DblClick ", [&] { model_.Fire(name, ControlEvent::DblClick); });
    });
  } else if (auto* check = qobject_cast<QCheckBox*>(widget)) {
    connect(check, &QCheckBox::clicked, this,
            [this, name](bool on) { Dispatch("Check_Click ", [&] { model_.SetValue(name, on ? 1 : 0); }); });
  } else if (auto* option = qobject_cast<QRadioButton*>(widget)) {
    option->setAutoExclusive(false);  // the model keeps its option groups
    connect(option, &QRadioButton::clicked, this,
            [this, name](bool) { Dispatch("Option_Click ", [&] { model_.SetValue(name, 1); }); });
  } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    connect(button, &QAbstractButton::clicked, this,
            [this, name] { Dispatch("Button_Click ", [&] { model_.Fire(name, ControlEvent::Click); }); });
  }
}

bool DialogBinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == form_) {
    if (event->type() == QEvent::Resize && !refreshing_) {
      model_.formBounds.width = Twips(form_->width());
      model_.formBounds.height = Twips(form_->height());
      Dispatch("Form_Resize ", [this] {
        if (resized) resized();
      });
    } else if (event->type() == QEvent::Close && !model_.unloaded && !closing_) {
      // The title bar's close button: the model's Cancel (or OK) decides.
      for (const char* button : {"cmdCancel", "cmdOK"}) {
        if (model_.Has(button)) {
          Dispatch("Form_QueryUnload ", [this, button] { model_.Fire(button, ControlEvent::Click); });
          break;
        }
      }
    }
    return false;
  }
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget && qobject_cast<QListWidget*>(widget->parentWidget()) && event->type() == QEvent::MouseButtonDblClick) {
    return false;  // a list's viewport: itemDoubleClicked reports it
  }
  const std::string name = widget ? ControlOf(widget) : std::string();
  if (name.empty()) return false;
  switch (event->type()) {
    case QEvent::FocusIn:
      model_.focus = name;
      appliedFocus_ = name;
      break;
    case QEvent::MouseButtonRelease:
      if (qobject_cast<QLabel*>(widget) && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        Dispatch("Label_Click ", [&] { model_.Fire(name, ControlEvent::Click); });
      }
      break;
    case QEvent::MouseButtonDblClick:
      if (!qobject_cast<QListWidget*>(widget)) {
        Dispatch("DblClick ", [&] { model_.Fire(name, ControlEvent::DblClick); });
      }
      break;
    case QEvent::KeyPress: {
      auto* key = static_cast<QKeyEvent*>(event);
      auto* edit = qobject_cast<QLineEdit*>(widget);
      if (!edit || key->text().isEmpty() || key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) break;
      const int typed = key->text().at(0).unicode();
      int allowed = typed;
      RunAsEntryPoint("KeyPress ", kModule, errors_, [&] { allowed = model_.KeyPress(name, typed); });
      if (allowed == typed) break;
      if (allowed != 0) edit->insert(QString(QChar(allowed)));
      return true;
    }
    default: break;
  }
  return false;
}

void DialogBinder::CopyControl(const Control& control, QWidget* widget) {
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
    if (edit->text() != ToQString(control.text)) {
      edit->setText(ToQString(control.text));
      edit->setCursorPosition(control.selStart);
    }
    edit->setReadOnly(control.locked);
    SetBackColor(edit, control.backColor);
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(widget)) {
    if (plain->toPlainText() != ToQString(control.text)) plain->setPlainText(ToQString(control.text));
    plain->setReadOnly(control.locked);
    SetBackColor(plain, control.backColor);
  } else if (auto* rich = qobject_cast<QTextEdit*>(widget)) {
    // A rich text box's view renders its text; a plain one shows it as it is.
    if (control.kind == ControlKind::TextBox && rich->toPlainText() != ToQString(control.text)) {
      rich->setPlainText(ToQString(control.text));
    }
    rich->setReadOnly(control.locked || control.kind == ControlKind::RichTextBox);
    SetBackColor(rich, control.backColor);
  } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
    CopyCombo(control, combo);
    SetBackColor(combo, control.backColor);
  } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
    CopyList(control, list);
    SetBackColor(list, control.backColor);
  } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    if (!control.caption.empty() || qobject_cast<QCheckBox*>(button) || qobject_cast<QRadioButton*>(button)) {
      button->setText(ToQString(control.caption));
    }
    if (button->isCheckable()) button->setChecked(control.value != 0);
  } else if (auto* label = qobject_cast<QLabel*>(widget)) {
    if (control.kind != ControlKind::Image) label->setText(ToQString(control.caption));
  }
  if (!IsZero(control.bounds) && !PlacedByLayout(widget)) {
    const QRect wanted = PixelRect(control.bounds);
    if (widget->geometry() != wanted) widget->setGeometry(wanted);
  }
  if (auto* image = qobject_cast<QLabel*>(widget); image && control.kind == ControlKind::Image && !control.picture.empty()) {
    ShowPicture(image, control.picture);
  }
  widget->setEnabled(control.enabled);
  widget->setToolTip(ToQString(control.toolTip));
  if (widget->isVisibleTo(form_) != control.visible) widget->setVisible(control.visible);
}

void DialogBinder::Refresh() {
  if (!form_ || refreshing_) return;
  refreshing_ = true;
  form_->setWindowTitle(ToQString(model_.caption));
  for (const Control& control : model_.Controls()) {
    QWidget* widget = WidgetOf(control.name);
    if (!widget) continue;
    const QSignalBlocker blocker(widget);
    CopyControl(control, widget);
  }
  if (model_.focus != appliedFocus_) {
    appliedFocus_ = model_.focus;
    if (QWidget* focused = WidgetOf(model_.focus)) {
      // A message box may have taken the activation: the focus shows only
      // in the active window.
      if (form_->isVisible()) form_->activateWindow();
      focused->setFocus(Qt::OtherFocusReason);
    }
  }
  // Out of sight while the model's run goes on.
  if (model_.hidden && form_->isVisible()) {
    hiddenByModel_ = true;
    form_->hide();
  } else if (!model_.hidden && hiddenByModel_) {
    hiddenByModel_ = false;
    form_->show();
  }
  refreshing_ = false;
  if (refreshed) refreshed();
  if (model_.unloaded && !closing_ && (form_->isVisible() || hiddenByModel_)) {
    closing_ = true;
    form_->close();
  }
}

}  // namespace tarnwick::desktop
