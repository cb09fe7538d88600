#pragma once
// Opening the point feature class a plot run writes to: a new class made for
// the run, or an existing point layer that gets a stand ID field if needed.
#include <memory>
#include <string>

#include "platform/workspace.h"
#include "plot/plot_layout_parameters.h"

namespace tarnwick::platform {
class EditSession;
namespace host {
class Application;
}
}  // namespace tarnwick::platform

namespace tarnwick {

inline constexpr const char* kPlotIdFieldName = "PlotID";

struct PlotOutput {
  std::shared_ptr<platform::FeatureClass> featureClass;
  int standFieldIndex = -1;
  int plotFieldIndex = -1;
  long firstPlotNumber = 1;
  bool isNew = false;
  bool standFieldAdded = false;  // made by this run (always for a new class)
  std::string standFieldName;    // the stand ID field as the output names it
  std::string plotFieldName;
  std::string datasetName;
  std::string workspacePath;
};

// The copy of the stand ID field for a store: its name made legal for the
// store (a folder's shapefiles or a database), the same type and alias, text
// at least 255 wide in a folder, doubles with precision 12 and scale 6 there.
platform::Field StandFieldForOutput(const platform::Field& standField, bool folderWorkspace);

// Output type for dataset creation by the workspace path: 1 folder, 2 .gdb,
// 3 .gpkg, 4 .mdb, 0 anything else.
long OutputKindOfPath(const std::string& workspacePath);

// Makes the new class inside the run's edit session (an existing class of
// that name, when the user agrees to replace it, goes only when the session
// commits). Fails when the class could not be made (a refused overwrite, a
// bad path).
PlotOutput OpenNewPlotOutput(platform::host::Application& application, const NewPlotClass& output,
                             const StandsParameters& stands, long firstPlotNumber, platform::EditSession& session);

// Opens an existing layer's class for editing in the run's session, adding
// the stand ID field when it is missing, and settles the first plot number
// (above the highest one there when asked: 1 for an empty class).
PlotOutput OpenExistingPlotOutput(const ExistingPlotLayer& output, const StandsParameters& stands,
                                  long firstPlotNumber, platform::EditSession& session);

}  // namespace tarnwick
