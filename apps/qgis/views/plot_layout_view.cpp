#include "views/plot_layout_view.h"

#include <QGuiApplication>
#include <QScreen>

#include "host/qt_text.h"
#include "ui_frmPlotLayout.h"
#include "views/dialog_binder.h"

namespace tarnwick::desktop {

PlotLayoutView::PlotLayoutView(const DialogContext& context)
    : QDialog(context.parent, Qt::Tool), context_(context), ui_(std::make_unique<Ui::frmPlotLayout>()),
      model_(*context.transformations) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  ui_->imgBack->lower();
}

PlotLayoutView::~PlotLayoutView() = default;

void PlotLayoutView::ArcApplication(HostArray& host) {
  model_.ArcApplication(host);
  binder_ = std::make_unique<DialogBinder>(model_, *this, context_.errors);
  // The anchor tool's button follows the dialog's toggle.
  binder_->refreshed = context_.refreshCommands;
  binder_->Refresh();
}

void PlotLayoutView::SetCaption(const std::string& caption) {
  model_.caption = caption;
  setWindowTitle(ToQString(caption));
}

void PlotLayoutView::SetVisible(bool visible) {
  if (!visible) {
    hide();
    return;
  }
  const QWidget* anchor = parentWidget() ? parentWidget() : this;
  const QScreen* screen = anchor->screen() ? anchor->screen() : QGuiApplication::primaryScreen();
  const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
  // The form keeps the model's size; the frame is centred as the model says,
  // but never above the screen's top.
  const frmPlotLayout::FramePlacement frame = model_.Frame(area.width(), area.height());
  move(area.left() + frame.left, area.top() + std::max(frame.top, 0));
  show();
  raise();
  activateWindow();
}

ModelessToolDialog& MakePlotLayoutView(const DialogContext& context) {
  return *new PlotLayoutView(context);  // deletes itself when its window closes
}

}  // namespace tarnwick::desktop
