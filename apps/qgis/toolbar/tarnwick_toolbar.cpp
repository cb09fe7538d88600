#include "toolbar/tarnwick_toolbar.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QToolBar>

#include <qgsmapcanvas.h>

#include "host/qgis_application.h"
#include "host/qt_text.h"
#include "session/dialog_registry.h"
#include "shell/extension.h"
#include "shell/sel_point_tool.h"
#include "standids/stand_ids_command_driver.h"
#include "toolbar/anchor_map_tool.h"
#include "views/modal_tool_views.h"
#include "waypoints/waypoint_command_driver.h"

// Qt's resources in a static library are registered by name.
static void InitCommandIcons() { Q_INIT_RESOURCE(icons); }

namespace tarnwick::desktop {

QString CommandIconPath(int bitmap) {
  InitCommandIcons();
  return QStringLiteral(":/tarnwick/icons/%1.svg").arg(bitmap);
}

QIcon CommandIcon(int bitmap) { return QIcon(CommandIconPath(bitmap)); }

TarnwickToolbar::TarnwickToolbar(HostArray host, QgisApplication& application, QgsMapCanvas* canvas,
                                 const DialogRegistry& dialogs, ErrorHost errors,
                                 TransformationDefaults& transformations, QWidget* parent)
    : application_(application), errors_(errors), extension_(host.extension) {
  DialogContext context{parent, errors, [this] { Refresh(); }, &transformations};
  commands_.push_back(std::make_unique<cmdTNWKWPConverter>(
      dialogs.ModalFactory(kWaypointConverterCommand.progId, context), RunCreateWaypointFile));
  commands_.push_back(std::make_unique<clsPlotLayout>(dialogs.ModelessFactory(kPlotLayoutCommand.progId, context)));
  commands_.push_back(std::make_unique<clsTransferStandIDs>(
      dialogs.ModalFactory(kTransferStandIDsCommand.progId, context), RunImportStandIDValues));
  auto anchor = std::make_unique<clsSelPointTool>();
  if (canvas) {
    anchorTool_ = new AnchorMapTool(canvas, *anchor);
    application_.MapTools().Register(std::string(kSelPointToolCommand.progId), anchorTool_);
  }
  commands_.push_back(std::move(anchor));
  for (auto& command : commands_) command->OnCreate(host.application, host.document, &host.extension);

  toolbar_ = new QToolBar(ToQString(clsTarnwickToolbar::Caption), parent);
  toolbar_->setObjectName(ToQString(clsTarnwickToolbar::Name));
  menu_ = new QMenu(toolbar_->windowTitle(), parent);
  menu_->setObjectName(QStringLiteral("Tarnwick_Menu"));
  for (long pos = 0; pos < clsTarnwickToolbar::ItemCount; ++pos) {
    ItemDef item;
    clsTarnwickToolbar::GetItemInfo(pos, item);
    const CommandInfo* info = FindCommand(item.ID);
    if (!info) continue;
    auto* action = new QAction(CommandIcon(info->Bitmap), ToQString(info->Caption), toolbar_);
    action->setObjectName(ToQString(info->Name));
    action->setToolTip(ToQString(info->Tooltip));
    action->setStatusTip(ToQString(info->Message));
    action->setData(ToQString(info->progId));
    action->setCheckable(info->enabled == EnabledRule::WhileSelToolEnabled);
    connect(action, &QAction::triggered, this, [this, info] { Trigger(*info); });
    if (item.Group) {
      toolbar_->addSeparator();
      menu_->addSeparator();
    }
    toolbar_->addAction(action);
    menu_->addAction(action);
    actions_.emplace_back(info, action);
  }
  // The transformation chooser within reach: the choice is kept in the
  // project, where the tools look first.
  menu_->addSeparator();
  QAction* transformation = menu_->addAction(tr("Geographic Transformation..."));
  transformation->setObjectName(QStringLiteral("TNWK_Geographic_Transformation"));
  transformation->setStatusTip(tr("Choose the geographic transformation the tools apply between two layers..."));
  connect(transformation, &QAction::triggered, this,
          [host, context] { RunGeographicTransformationEntry(host, context); });
  if (canvas) connect(canvas, &QgsMapCanvas::mapToolSet, this, [this] { Refresh(kSelPointToolCommand.progId); });
  application_.commandRefresher = [this](const std::string& progId) { Refresh(progId); };
  Refresh();
}

TarnwickToolbar::~TarnwickToolbar() {
  application_.commandRefresher = nullptr;
  delete anchorTool_.data();  // leaves the canvas first if it is its tool
  delete menu_.data();
  delete toolbar_.data();
}

QAction* TarnwickToolbar::Action(std::string_view progId) const {
  for (const auto& [info, action] : actions_) {
    if (info->progId == progId) return action;
  }
  return nullptr;
}

void TarnwickToolbar::Refresh(std::string_view progId) {
  const bool all = FindCommand(progId) == nullptr;
  for (const auto& [info, action] : actions_) {
    if (!action || (!all && info->progId != progId)) continue;
    action->setEnabled(CommandEnabled(*info, &extension_));
    if (action->isCheckable()) action->setChecked(application_.CurrentTool() == info->progId);
  }
}

void TarnwickToolbar::Trigger(const CommandInfo& info) {
  RunAsEntryPoint("ICommand_OnClick ", info.module, errors_, [&] {
    // A map tool's button makes it the canvas's tool before its click.
    if (info.enabled == EnabledRule::WhileSelToolEnabled) application_.SetCurrentTool(std::string(info.progId));
    for (auto& command : commands_) {
      if (&command->Info() == &info) command->OnClick();
    }
  });
  Refresh();
}

}  // namespace tarnwick::desktop
