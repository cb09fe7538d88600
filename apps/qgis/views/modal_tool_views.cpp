#include "views/modal_tool_views.h"

#include <qgsapplication.h>

#include <QDialog>
#include <QTextEdit>
#include <map>
#include <stdexcept>

#include "shell/model_tool_dialog.h"
#include "standids/transfer_stand_ids_dialog.h"
#include "transforms/transform_chooser_dialog.h"
#include "transforms/transformation_menu.h"
#include "ui_TransformationPairDialog.h"
#include "ui_frmLayerID.h"
#include "ui_frmTransferStandIDs.h"
#include "ui_frmTransform.h"
#include "views/dialog_binder.h"
#include "views/report_rendering.h"
#include "views/screen_twips.h"
#include "waypoints/waypoint_converter_dialog.h"

namespace tarnwick::desktop {

namespace {

int Pixels(long twips) { return static_cast<int>(twips / kTwipsPerPixel); }

// A rich text box shows its RTF rendered, drawn again only when it changes.
class RichTextBoxes {
 public:
  RichTextBoxes(const DialogModel& model, const DialogBinder& binder) : model_(model), binder_(binder) {}
  void Render() {
    for (const Control& control : model_.Controls()) {
      auto* box = qobject_cast<QTextEdit*>(binder_.WidgetOf(control.name));
      if (control.kind != ControlKind::RichTextBox || !box || rendered_[control.name] == control.text) continue;
      rendered_[control.name] = control.text;
      RenderReport(ReadReport(control.text), *box->document());
      box->moveCursor(QTextCursor::Start);
    }
  }

 private:
  const DialogModel& model_;
  const DialogBinder& binder_;
  std::map<std::string, std::string> rendered_;
};

// Places the form as the model says, then runs it until the model unloads.
void RunModal(QDialog& window, ToolDialogModel& model, const DialogContext& context) {
  model.Form_Load(ScreenTwips(context.parent ? context.parent : &window), kBottomMarginTwips);
  DialogBinder binder(model, window, context.errors);
  RichTextBoxes richText(model, binder);
  binder.resized = [&model] { model.Form_Resize(); };
  binder.refreshed = [&richText] { richText.Render(); };
  binder.Refresh();
  window.setWindowFlag(Qt::WindowStaysOnTopHint, model.topmost);
  window.move(Pixels(model.formBounds.left), Pixels(model.formBounds.top));
  // Smaller than drawn, the anchored controls would run into each other.
  window.setMinimumSize(window.size());
  if (!model.unloaded) window.exec();
}

template <class Form, class Model>
void ShowInForm(Model& model, const DialogContext& context, void (*dress)(Form&) = nullptr) {
  QDialog window(context.parent);
  Form form;
  form.setupUi(&window);
  if (dress) dress(form);
  RunModal(window, model, context);
}

// The browse button's icon, and a fixed pitch for the progress bar's text
// wherever Courier New is missing.
void DressWaypointForm(Ui::frmLayerID& form) {
  form.cmdGetWorkspace->setIcon(QgsApplication::getThemeIcon(QStringLiteral("/mActionFileOpen.svg")));
  QFont progress = form.txtProgress->font();
  progress.setStyleHint(QFont::TypeWriter);
  form.txtProgress->setFont(progress);
}

TransformationDefaults& Defaults(const DialogContext& context) {
  if (!context.transformations) throw std::logic_error("The dialog was opened without the session's transformations");
  return *context.transformations;
}

}  // namespace

ShowModalDialog ModalToolViews(const DialogContext& context) {
  return [context](DialogModel& model) {
    if (auto* stands = dynamic_cast<frmTransferStandIDs*>(&model)) {
      ShowInForm<Ui::frmTransferStandIDs>(*stands, context);
    } else if (auto* waypoints = dynamic_cast<frmLayerID*>(&model)) {
      ShowInForm<Ui::frmLayerID>(*waypoints, context, DressWaypointForm);
    } else if (auto* chooser = dynamic_cast<frmTransform*>(&model)) {
      ShowInForm<Ui::frmTransform>(*chooser, context);
    } else if (auto* pair = dynamic_cast<TransformationPairDialog*>(&model)) {
      ShowInForm<Ui::TransformationPairDialog>(*pair, context);
    } else {
      throw std::logic_error("No form shows this dialog");
    }
  };
}

std::unique_ptr<ToolDialog> MakeTransferStandIDsView(const DialogContext& context) {
  return std::make_unique<ModelToolDialog>(
      [context](HostArray& host) { return std::make_unique<frmTransferStandIDs>(host, Defaults(context)); },
      ModalToolViews(context));
}

std::unique_ptr<ToolDialog> MakeWaypointConverterView(const DialogContext& context) {
  return std::make_unique<ModelToolDialog>(
      [context](HostArray& host) { return std::make_unique<frmLayerID>(host, Defaults(context)); },
      ModalToolViews(context));
}

void RunGeographicTransformationEntry(HostArray host, const DialogContext& context) {
  RunAsEntryPoint("GeographicTransformation_Click ", "TransformationMenu", context.errors,
                  [&] { RunGeographicTransformationMenu(host, Defaults(context), ModalToolViews(context)); });
}

}  // namespace tarnwick::desktop
