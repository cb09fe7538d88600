#pragma once
// frmLayerID: collects the parameters of a waypoint conversion. OK refuses
// repeated Plot IDs among the points to convert (showing its progress while
// it reads them), checks the output file, settles the geographic
// transformation to WGS 1984, stores the parameter set in the extension
// (frmLayerIDReturn, a WaypointParameters), sets ShouldContinue and unloads;
// the command then runs CreateWaypointFile.
#include <optional>
#include <string>
#include <vector>

#include "shell/modal_tool_dialog_model.h"
#include "transforms/search_types.h"
#include "waypoints/create_waypoint_file.h"

namespace tarnwick {

inline constexpr const char* kNoStandIdFieldEntry = "<-- No Stand ID Field -->";
inline constexpr const char* kNoElevationFieldEntry = "<-- No Elevation Field -->";

class frmLayerID : public ModalToolDialogModel<WaypointParameters> {
 public:
  // Sets the form up over the host's focus map (the classic form's
  // ArcApplication). defaults: the session's default transformations.
  frmLayerID(HostArray host, TransformationDefaults& defaults);

 private:
  void AddControls();
  void ArcApplication();
  void CheckEnable();
  void lbxLayers_Click();
  void cmdGetWorkspace_Click();
  void cmdOK_Click();
  // The folder outputs go to: DirectoryPath, else the map document's folder
  // (which then becomes DirectoryPath), with a closing separator.
  std::string OutputFolder();
  void SetOutputText(const std::string& path);
  // Runs the duplicate check with txtProgress in place of the options.
  std::optional<CheckMessage> CheckPlotIDsShowingProgress(const WaypointParameters& parameters);

  TransformationDefaults& defaults_;
  std::vector<platform::FeatureLayer> layers_;  // parallel to lbxLayers
  std::string defaultLayer_;
  bool checking_ = false;  // the duplicate check is reading (the host's events still arrive)
};

}  // namespace tarnwick
