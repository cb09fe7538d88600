#include "host/settings_in_project.h"

#include <QDomDocument>
#include <QDomElement>
#include <map>

#include <qgsproject.h>

#include "host/qgis_map_document.h"
#include "host/qt_text.h"
#include "platform/errors.h"
#include "shell/extension.h"

namespace tarnwick::desktop {

namespace {

constexpr const char* kModule = "..\\clsExtension.cls";
const QString kScope = QStringLiteral("Tarnwick");
const QString kSettingsKey = QStringLiteral("/Settings");

// Values are kept as v01, v02, ...: the project stores keys unordered, the
// names give the order back.
QString ValueKey(int position) { return QStringLiteral("v%1").arg(position, 2, 10, QLatin1Char('0')); }

// Appends each value as a typed entry of the project.
class ProjectWriteStream : public ValueStream {
 public:
  explicit ProjectWriteStream(QgsProject& project) : project_(project) {}
  StreamValue Read() override { throw platform::PlatformError(platform::kErrPlatform, "ProjectWriteStream", "Not readable"); }
  void Write(const StreamValue& value) override {
    const QString key = kSettingsKey + "/" + ValueKey(++count_);
    std::visit(
        [&](const auto& v) {
          using T = std::decay_t<decltype(v)>;
          if constexpr (std::is_same_v<T, std::string>) {
            project_.writeEntry(kScope, key, ToQString(v));
          } else if constexpr (std::is_same_v<T, std::int32_t>) {
            project_.writeEntry(kScope, key, static_cast<int>(v));
          } else {
            project_.writeEntry(kScope, key, v);  // double or bool
          }
        },
        value);
  }

 private:
  QgsProject& project_;
  int count_ = 0;
};

// Reads the values back from the project file as written, each with the type
// the file gives it ("QString", "int", "double", "bool"); a value of another
// type, or one that does not parse, comes as its text for the extension to
// convert or refuse.
class FileReadStream : public ValueStream {
 public:
  explicit FileReadStream(const QDomElement& settings) {
    for (QDomElement value = settings.firstChildElement(); !value.isNull(); value = value.nextSiblingElement()) {
      values_[value.tagName()] = value;
    }
  }
  StreamValue Read() override {
    const auto found = values_.find(ValueKey(++count_));
    if (found == values_.end()) {
      throw platform::PlatformError(platform::kErrPlatform, "Tarnwick settings",
                                    "The project holds no value " + std::to_string(count_) + " of the settings");
    }
    const QString type = found->second.attribute(QStringLiteral("type"));
    const QString text = found->second.text();
    bool ok = false;
    if (type == QLatin1String("int")) {
      const int number = text.toInt(&ok);
      if (ok) return static_cast<std::int32_t>(number);
    } else if (type == QLatin1String("double")) {
      const double number = text.toDouble(&ok);
      if (ok) return number;
    } else if (type == QLatin1String("bool")) {
      if (text == QLatin1String("true")) return true;
      if (text == QLatin1String("false")) return false;
    }
    return ToStdString(text);
  }
  void Write(const StreamValue&) override {
    throw platform::PlatformError(platform::kErrPlatform, "FileReadStream", "Not writable");
  }

 private:
  std::map<QString, QDomElement> values_;
  int count_ = 0;
};

QDomElement SettingsElement(const QDomDocument& document) {
  return document.documentElement()
      .firstChildElement(QStringLiteral("properties"))
      .firstChildElement(kScope)
      .firstChildElement(kSettingsKey.mid(1));
}

}  // namespace

SettingsInProject::SettingsInProject(QgsProject& project, clsExtension& extension, QgisMap& map, ErrorHost errors)
    : project_(project), extension_(extension), map_(map), errors_(errors) {
  connections_.push_back(QObject::connect(&project_, &QgsProject::writeProject, [this](QDomDocument&) { Write(); }));
  connections_.push_back(
      QObject::connect(&project_, &QgsProject::readProject, [this](const QDomDocument& document) { Read(document); }));
  connections_.push_back(QObject::connect(&project_, &QgsProject::cleared, [this] {
    RunAsEntryPoint("Project_Cleared ", kModule, errors_, [this] { map_.ReadTransformations(); });
  }));
}

SettingsInProject::~SettingsInProject() {
  for (const auto& connection : connections_) QObject::disconnect(connection);
}

// QGIS asks for its plugins' entries before it writes the properties out, so
// what is written here goes into the file being saved.
void SettingsInProject::Write() {
  RunAsEntryPoint("IPersistVariant_Save ", kModule, errors_, [this] {
    project_.removeEntry(kScope, kSettingsKey);
    ProjectWriteStream stream(project_);
    extension_.Save(stream);
    map_.WriteTransformations();
  });
}

void SettingsInProject::Read(const QDomDocument& document) {
  RunAsEntryPoint("IPersistVariant_Load ", kModule, errors_, [&] {
    map_.ReadTransformations();
    const QDomElement settings = SettingsElement(document);
    if (settings.isNull()) return;
    FileReadStream stream(settings);
    extension_.Load(stream);
  });
}

}  // namespace tarnwick::desktop
