#include "host/save_dialogs.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "host/qt_text.h"
#include "platform/workspace.h"

namespace tarnwick::desktop {

namespace {

using platform::host::DatasetSaveChoice;

bool EndsWith(const QString& text, const char* tail) { return text.endsWith(QLatin1String(tail), Qt::CaseInsensitive); }

// Paths from the tools may use either separator.
QString Slashed(QString path) { return path.replace(QLatin1Char('\\'), QLatin1Char('/')); }

QString WithoutShp(QString name) { return EndsWith(name, ".shp") ? name.chopped(4) : name; }

// Existing class names of a store, or none when it cannot be read (a new one).
QStringList ClassNames(const QString& store) {
  if (!QFileInfo::exists(store)) return {};
  try {
    QStringList names;
    for (const auto& name : platform::Workspace::Open(ToStdString(store))->FeatureClassNames()) names << ToQString(name);
    return names;
  } catch (...) {
    return {};
  }
}

// Asks for the new class's name (and, in a file geodatabase, an optional
// feature dataset), listing the classes the store already holds.
std::optional<DatasetSaveChoice> ChooseClass(QWidget* parent, const std::string& title, SaveTarget target,
                                             const QString& suggestedName) {
  const QString store = ToQString(target.choice.location);
  const bool geodatabase = target.choice.category == "File Geodatabase";
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("ClassChooser"));
  dialog.setWindowTitle(ToQString(title));
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(new QLabel(QObject::tr("New feature class in %1").arg(QDir::toNativeSeparators(store))));
  auto* existing = new QListWidget();
  existing->addItems(ClassNames(store));
  existing->setToolTip(QObject::tr("Classes already in the store; a click takes the name."));
  layout->addWidget(existing);
  auto* form = new QFormLayout();
  auto* name = new QLineEdit(WithoutShp(suggestedName));
  name->setObjectName(QStringLiteral("className"));
  form->addRow(QObject::tr("Name:"), name);
  QComboBox* dataset = nullptr;
  if (geodatabase) {
    dataset = new QComboBox();
    dataset->setEditable(true);
    dataset->setToolTip(QObject::tr("Leave empty to write the class at the top of the geodatabase."));
    form->addRow(QObject::tr("Feature dataset (optional):"), dataset);
  }
  layout->addLayout(form);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  layout->addWidget(buttons);
  QObject::connect(existing, &QListWidget::itemClicked, name, [name](QListWidgetItem* item) { name->setText(item->text()); });
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  QObject::connect(name, &QLineEdit::textChanged, buttons, [name, buttons] {
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!name->text().trimmed().isEmpty());
  });
  buttons->button(QDialogButtonBox::Ok)->setEnabled(!name->text().trimmed().isEmpty());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  target.choice.name = ToStdString(WithoutShp(name->text().trimmed()));
  if (dataset && !dataset->currentText().trimmed().isEmpty()) {
    target.choice.location += "/" + ToStdString(dataset->currentText().trimmed());
    target.choice.category = "File Geodatabase Feature Dataset";
  }
  return target.choice;
}

}  // namespace

SaveTarget ClassifySavePath(const std::string& rawPath, SaveKind kind) {
  const QString path = QDir::cleanPath(Slashed(ToQString(rawPath)));
  const QFileInfo info(path);
  const QString parent = info.path();
  const QString leaf = info.fileName();
  if (EndsWith(parent, ".gdb")) {
    return {{ToStdString(WithoutShp(leaf)), ToStdString(parent), "File Geodatabase"}, false};
  }
  if (EndsWith(QFileInfo(parent).path(), ".gdb")) {
    return {{ToStdString(WithoutShp(leaf)), ToStdString(parent), "File Geodatabase Feature Dataset"}, false};
  }
  if (EndsWith(path, ".gdb")) return {{"", ToStdString(path), "File Geodatabase"}, true};
  if (EndsWith(path, ".gpkg")) return {{"", ToStdString(path), "Personal Geodatabase"}, true};
  // A name typed with its ending says what it is, whatever the filter.
  if (EndsWith(leaf, ".shp")) kind = SaveKind::Shapefile;
  switch (kind) {
    case SaveKind::GeoPackage: return {{"", ToStdString(path + ".gpkg"), "Personal Geodatabase"}, true};
    case SaveKind::FileGeodatabase: return {{"", ToStdString(path + ".gdb"), "File Geodatabase"}, true};
    case SaveKind::Shapefile: break;
  }
  const QString name = EndsWith(leaf, ".shp") ? leaf : leaf + ".shp";
  return {{ToStdString(name), ToStdString(parent), "Folder"}, false};
}

std::string QtFileFilter(const std::string& pipedFilter) {
  const QStringList parts = ToQString(pipedFilter).split(QLatin1Char('|'));
  QStringList filters;
  for (int i = 0; i < parts.size(); i += 2) {
    QString description = parts[i].trimmed();
    const QString pattern = i + 1 < parts.size() ? parts[i + 1].trimmed() : QString();
    if (!description.contains(QLatin1Char('(')) && !pattern.isEmpty()) description += " (" + pattern + ")";
    if (!description.isEmpty()) filters << description;
  }
  return ToStdString(filters.join(QStringLiteral(";;")));
}

std::optional<DatasetSaveChoice> BrowseForNewDataset(QWidget* parent, const std::string& title,
                                                     const std::string& suggestedName) {
  const QString suggested = Slashed(ToQString(suggestedName));
  const QStringList filters{QObject::tr("Shapefile (*.shp)"), QObject::tr("GeoPackage (*.gpkg)"),
                            QObject::tr("File geodatabase (*.gdb)")};
  QFileDialog dialog(parent, ToQString(title));
  dialog.setObjectName(QStringLiteral("DatasetSaveDialog"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOptions(QFileDialog::DontConfirmOverwrite | QFileDialog::DontUseNativeDialog);
  dialog.setNameFilters(filters);
  if (suggested.contains(QLatin1Char('/'))) dialog.setDirectory(QFileInfo(suggested).path());
  dialog.selectFile(QFileInfo(suggested).fileName());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const auto kind = static_cast<SaveKind>(std::max(0, filters.indexOf(dialog.selectedNameFilter())));
  SaveTarget target = ClassifySavePath(ToStdString(dialog.selectedFiles().first()), kind);
  if (!target.classNeeded) return target.choice;
  return ChooseClass(parent, title, std::move(target), QFileInfo(suggested).fileName());
}

std::optional<std::string> BrowseForSaveFile(QWidget* parent, const platform::host::FileSaveRequest& request) {
  QString start = ToQString(request.initialDirectory);
  if (!request.fileName.empty()) start = start.isEmpty() ? ToQString(request.fileName) : start + "/" + ToQString(request.fileName);
  const QString chosen = QFileDialog::getSaveFileName(parent, ToQString(request.title), start,
                                                      ToQString(QtFileFilter(request.filter)), nullptr,
                                                      QFileDialog::DontConfirmOverwrite);
  if (chosen.isEmpty()) return std::nullopt;
  return ToStdString(chosen);
}

}  // namespace tarnwick::desktop
