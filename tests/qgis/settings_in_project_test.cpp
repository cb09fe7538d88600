// The extension's settings inside a QGIS project file: saved when the project
// is written, back in a new session that reads it, untouched by a project
// that never held them, and one error for a damaged file.
#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <fstream>

#include "desktop_fixture.h"
#include "testkit/temp_dir.h"

namespace tarnwick::desktop::testing {
namespace {

class RecordingStream : public ValueStream {
 public:
  StreamValue Read() override { return values.at(next++); }
  void Write(const StreamValue& value) override { values.push_back(value); }
  std::vector<StreamValue> values;
  std::size_t next = 0;
};

std::vector<StreamValue> Saved(const clsExtension& extension) {
  RecordingStream stream;
  extension.Save(stream);
  return stream.values;
}

void SetDistinctSettings(clsExtension& e) {
  e.StandIDHistory = "STAND_ID,Stand";
  e.XSpacingHistory = "XSP";
  e.YSpacingHistory = "YSP";
  e.PlotCountHistory = "NPLOTS";
  e.SeparationUnitIndex = 2;
  e.BufferUnitIndex = 1;
  e.PlotOptionIndex = 3;
  e.SpacingRatioOptionIndex = 4;
  e.GridOrientation = 37.25;
  e.StandBufferDist = 0.1;
  e.SavePointsWhere = 1;
  e.GetStartFromPointFC = 1;
  e.ForceAnchorPoint = 1;
  e.AnchorPointOption = 1;
  e.UserSpacingOption = 7;
  e.XRatio = 2;
  e.YRatio = 3;
  e.XSpacing = 198.5;
  e.YSpacing = 1.0 / 3.0;
  e.DirectoryPath = "/data/inventory.gdb";
  e.DirectoryType = "File Geodatabase";
  e.ExistingIDHistory = "PLOT_NO";
  e.OrientationHistory = "AZIMUTH";
  e.OrientationFromField = true;
  e.IsFeatureDataset = true;
  e.FeatDatasetName = "Cruise";
}

// Also: a project that never held them leaves the settings as they are.
TEST(SettingsInProject, TravelInsideTheProjectFileToANewSession) {
  testkit::TempDir dir;
  const QString path = QString::fromStdString(dir / "forest.qgz");
  std::vector<StreamValue> written;
  {
    MiniDesktop desktop;
    DesktopSession session(desktop.Windows());
    SetDistinctSettings(session.Extension());
    session.Document().FocusMap().Transformations().push_back(
        {4267, 4269, {"NAD_1927_To_NAD_1983_NADCON", 1241, "EPSG", 4267, 4269}});
    written = Saved(session.Extension());
    ASSERT_TRUE(desktop.project->write(path));
    EXPECT_FALSE(session.Document().IsDirty());
    // A plain project to read later.
    QgsProject plain;
    ASSERT_TRUE(plain.write(QString::fromStdString(dir / "plain.qgs")));
  }
  // QGIS restarted: a new project object and a fresh extension read the file.
  MiniDesktop desktop;
  DesktopSession session(desktop.Windows());
  ASSERT_TRUE(desktop.project->read(path));
  const clsExtension& e = session.Extension();
  EXPECT_EQ(Saved(e), written);
  EXPECT_EQ(e.UserSpacingOption, 7);
  EXPECT_EQ(e.YSpacing, 1.0 / 3.0);
  EXPECT_TRUE(e.OrientationFromField);
  EXPECT_FALSE(e.IsFeatureDataset);  // not part of the saved settings
  EXPECT_EQ(e.FeatDatasetName, "");
  ASSERT_EQ(session.Document().FocusMap().Transformations().size(), 1u);
  EXPECT_EQ(session.Document().FocusMap().Transformations()[0].transformation.name, "NAD_1927_To_NAD_1983_NADCON");
  EXPECT_EQ(session.Document().Title(), "forest");

  ASSERT_TRUE(desktop.project->read(QString::fromStdString(dir / "plain.qgs")));
  EXPECT_EQ(Saved(e), written);
}

// A project file whose settings lost a value (v24), or hold text for a
// number (v05).
TEST(SettingsInProject, ADamagedProjectOpensWithOneErrorShownAndLogged) {
  for (const auto& [key, damaged] : {std::pair{"v24", ""}, std::pair{"v05", "<v05 type=\"QString\">abc</v05>"}}) {
    SCOPED_TRACE(key);
    testkit::TempDir dir;
    const std::string path = dir / "damaged.qgs";
    {
      MiniDesktop desktop;
      DesktopSession session(desktop.Windows());
      session.Extension().XSpacing = -20;
      session.Extension().YSpacing = 0;
      session.Extension().OrientationFromField = true;
      ASSERT_TRUE(desktop.project->write(QString::fromStdString(path)));
    }
    QString text = QString::fromStdString(testkit::ReadFile(path));
    const QRegularExpression value(QString("<%1 type=\"[^\"]*\">[^<]*</%1>").arg(key));
    ASSERT_EQ(text.count(value), 1);
    std::ofstream(path) << text.replace(value, damaged).toStdString();

    MiniDesktop desktop;
    DesktopSession session(desktop.Windows());
    clsExtension& e = session.Extension();
    e.OrientationFromField = false;
    e.StandIDHistory = "old";
    e.DirectoryType = "old";
    ModalWatcher watcher;
    EXPECT_TRUE(desktop.project->read(QString::fromStdString(path)));
    ASSERT_EQ(watcher.shown.size(), 1);
    EXPECT_TRUE(watcher.shown[0].contains("IPersistVariant_Load")) << watcher.shown[0].toStdString();
    EXPECT_EQ(QDir(QString::fromStdString(dir.path().string())).entryList({"Tarnwick_Error_Log_*.txt"}).size(), 1);
    EXPECT_EQ(e.StandIDHistory, "");  // value 1 was read before the failure
    EXPECT_FALSE(e.OrientationFromField);
    if (std::string(key) == "v24") {
      EXPECT_EQ(e.DirectoryType, "Shapefile");
      EXPECT_EQ(e.XSpacing, -20);  // no repair after a failed load
      EXPECT_EQ(e.YSpacing, 0);
    } else {
      EXPECT_EQ(e.DirectoryType, "old");
    }
  }
}

}  // namespace
}  // namespace tarnwick::desktop::testing
