// The extension's settings inside a QGIS project file: saved when the project
// is written, back in a new session that reads it, untouched by a project
// that never held them, and one error for a damaged file.
#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <fstream>
#include <tuple>
#include <vector>

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

// Gives every saved setting a value of its own, none its default: texts an
// XML file must escape, numbers with a third that only full precision keeps,
// switches turned over.
void SetDistinctSettings(clsExtension& e) {
  RecordingStream stream;
  e.Save(stream);
  for (std::size_t i = 0; i < stream.values.size(); ++i) {
    auto& value = stream.values[i];
    if (auto* text = std::get_if<std::string>(&value)) *text = "<Stand " + std::to_string(i) + "> & \"ID\"";
    if (auto* number = std::get_if<std::int32_t>(&value)) *number = static_cast<std::int32_t>(i) + 1;
    if (auto* number = std::get_if<double>(&value)) *number = static_cast<double>(i) + 1.0 / 3.0;
    if (auto* flag = std::get_if<bool>(&value)) *flag = !*flag;
  }
  e.Load(stream);
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
    session.Extension().IsFeatureDataset = true;  // not part of the saved settings
    session.Extension().FeatDatasetName = "Cruise";
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
  ASSERT_EQ(written.size(), 24u);
  EXPECT_EQ(Saved(e), written);
  EXPECT_TRUE(e.OrientationFromField);
  EXPECT_FALSE(e.IsFeatureDataset);
  EXPECT_EQ(e.FeatDatasetName, "");
  ASSERT_EQ(session.Document().FocusMap().Transformations().size(), 1u);
  EXPECT_EQ(session.Document().FocusMap().Transformations()[0].transformation.name, "NAD_1927_To_NAD_1983_NADCON");
  EXPECT_EQ(session.Document().Title(), "forest");

  ASSERT_TRUE(desktop.project->read(QString::fromStdString(dir / "plain.qgs")));
  EXPECT_EQ(Saved(e), written);
}

// A project file whose settings lost their last value, or hold text for a
// number (the fifth): what came before the damage is read from the file
// (value 1, and 21 when it lies before), the rest stays, and the failure is
// shown once and logged.
TEST(SettingsInProject, ADamagedProjectOpensWithOneErrorShownAndLogged) {
  for (const auto& [key, damaged, directoryType] : std::vector<std::tuple<QString, QString, std::string>>{
           {"v24", "", "Shapefile"}, {"v05", "<v05 type=\"QString\">abc</v05>", "old"}}) {
    SCOPED_TRACE(key.toStdString());
    testkit::TempDir dir;
    const std::string path = dir / "damaged.qgs";
    {
      MiniDesktop desktop;
      DesktopSession session(desktop.Windows());
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
    EXPECT_EQ(e.StandIDHistory, "");
    EXPECT_EQ(e.DirectoryType, directoryType);
    EXPECT_FALSE(e.OrientationFromField);  // true in the file, never reached
  }
}

}  // namespace
}  // namespace tarnwick::desktop::testing
