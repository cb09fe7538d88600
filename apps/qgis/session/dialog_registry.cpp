#include "session/dialog_registry.h"

#include <QMessageBox>
#include <QWidget>

#include "host/qt_text.h"
#include "shell/command_table.h"
#include "shell/extension.h"

namespace tarnwick::desktop {

namespace {

void TellNotInstalled(QWidget* parent, std::string_view progId) {
  const CommandInfo* command = FindCommand(progId);
  const QString tool = command ? ToQString(command->Tooltip) : ToQString(progId);
  QMessageBox::information(parent, QStringLiteral("Tarnwick Tools"),
                           QObject::tr("The dialog of the %1 is not part of this build yet.").arg(tool));
}

// Stands in for a modal dialog without a view: the command ends as on Cancel.
class MissingDialog : public ToolDialog {
 public:
  MissingDialog(QWidget* parent, std::string progId) : parent_(parent), progId_(std::move(progId)) {}
  void ArcApplication(HostArray& host) override { host.extension.ShouldContinue = false; }
  void ShowModal() override { TellNotInstalled(parent_, progId_); }

 private:
  QWidget* parent_;
  std::string progId_;
};

}  // namespace

// Stands in for a dialog beside the map without a view: showing it says so.
class MissingModelessDialog : public ModelessToolDialog, public ModelessFrame {
 public:
  MissingModelessDialog(QWidget* parent, std::string progId) : parent_(parent), progId_(std::move(progId)) {}
  void ArcApplication(HostArray&) override {}
  ModelessFrame& Frame() override { return *this; }
  void SetCaption(const std::string&) override {}
  void SetVisible(bool visible) override {
    if (visible) TellNotInstalled(parent_, progId_);
  }

 private:
  QWidget* parent_;
  std::string progId_;
};

DialogRegistry::DialogRegistry() = default;
// A view still open goes before the session's extension and host do.
DialogRegistry::~DialogRegistry() {
  for (const QPointer<QWidget>& view : modelessViews_) delete view.data();
}

ToolDialogFactory DialogRegistry::ModalFactory(std::string_view progId, DialogContext context) const {
  return [this, id = std::string(progId), context]() -> std::unique_ptr<ToolDialog> {
    const auto maker = modal_.find(id);
    if (maker == modal_.end()) return std::make_unique<MissingDialog>(context.parent, id);
    return maker->second(context);
  };
}

ModelessToolDialogFactory DialogRegistry::ModelessFactory(std::string_view progId, DialogContext context) const {
  return [this, id = std::string(progId), context]() -> ModelessToolDialog& {
    const auto maker = modeless_.find(id);
    if (maker != modeless_.end()) {
      ModelessToolDialog& view = maker->second(context);
      std::erase_if(modelessViews_, [](const QPointer<QWidget>& open) { return open.isNull(); });
      if (auto* window = dynamic_cast<QWidget*>(&view)) modelessViews_.emplace_back(window);
      return view;
    }
    missing_ = std::make_unique<MissingModelessDialog>(context.parent, id);
    return *missing_;
  };
}

}  // namespace tarnwick::desktop
