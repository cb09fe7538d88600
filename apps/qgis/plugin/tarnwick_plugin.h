#pragma once
// The QGIS plugin: QGIS loads libtarnwickplugin.so, calls classFactory, and
// initGui starts the desktop session; unload ends it.
#include <QObject>
#include <memory>

#include <qgisplugin.h>

class QgisInterface;

namespace tarnwick::desktop {

class DesktopSession;

class TarnwickPlugin : public QObject, public QgisPlugin {
  Q_OBJECT
 public:
  explicit TarnwickPlugin(QgisInterface* iface);
  ~TarnwickPlugin() override;
  void initGui() override;
  void unload() override;

 private:
  void StartSession();

  QgisInterface* iface_;
  std::unique_ptr<DesktopSession> session_;
};

}  // namespace tarnwick::desktop
