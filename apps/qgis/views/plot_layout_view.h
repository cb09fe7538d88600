#pragma once
// The Plot Layout dialog beside the map: frmPlotLayout shown in its Designer
// form (forms/frmPlotLayout.ui) as a tool window, so that the user may click
// the anchor point on the canvas while it is open. The model runs the tool
// from its OK, hides the window meanwhile and closes it at the end; the
// window then deletes itself.
#include <QDialog>
#include <memory>

#include "plot/plot_layout_dialog.h"
#include "session/dialog_registry.h"

namespace Ui {
class frmPlotLayout;
}

namespace tarnwick::desktop {

class DialogBinder;

class PlotLayoutView : public QDialog, public ModelessToolDialog, public ModelessFrame {
  Q_OBJECT
 public:
  explicit PlotLayoutView(const DialogContext& context);
  ~PlotLayoutView() override;

  void ArcApplication(HostArray& host) override;
  ModelessFrame& Frame() override { return *this; }
  void SetCaption(const std::string& caption) override;
  // Shown where the model places its frame on this screen.
  void SetVisible(bool visible) override;

  frmPlotLayout& Model() { return model_; }

 private:
  DialogContext context_;
  std::unique_ptr<Ui::frmPlotLayout> ui_;
  frmPlotLayout model_;
  std::unique_ptr<DialogBinder> binder_;
};

// The maker registered for "Tarnwick.clsPlotLayout".
ModelessToolDialog& MakePlotLayoutView(const DialogContext& context);

}  // namespace tarnwick::desktop
