#pragma once
// The extension's settings travel inside the QGIS project: when QGIS writes a
// project the extension saves its 24 values, in order and with their types,
// under the project's "Tarnwick" properties; when QGIS reads one that holds
// them the extension loads them. A project without them leaves the settings
// as they are. The map's stored transformations go the same way.
#include <QMetaObject>
#include <vector>

#include "host/entry_point.h"

class QDomDocument;
class QgsProject;

namespace tarnwick {
class clsExtension;
}

namespace tarnwick::desktop {

class QgisMap;

class SettingsInProject {
 public:
  SettingsInProject(QgsProject& project, clsExtension& extension, QgisMap& map, ErrorHost errors);
  ~SettingsInProject();
  SettingsInProject(const SettingsInProject&) = delete;
  SettingsInProject& operator=(const SettingsInProject&) = delete;

 private:
  void Write();
  void Read(const QDomDocument& document);

  QgsProject& project_;
  clsExtension& extension_;
  QgisMap& map_;
  ErrorHost errors_;
  std::vector<QMetaObject::Connection> connections_;
};

}  // namespace tarnwick::desktop
