// Starts one QgsApplication for all widget tests, offscreen and with a
// profile of its own, so no user's QGIS settings are read or written.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <qgsapplication.h>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QTemporaryDir profile;
  QgsApplication app(argc, argv, true, profile.path());
  QgsApplication::initQgis();
  const int result = RUN_ALL_TESTS();
  QgsApplication::exitQgis();
  return result;
}
