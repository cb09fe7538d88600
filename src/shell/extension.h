#pragma once
// clsExtension: the one object of a desktop session that outlives the
// dialogs. It keeps what the user last chose in the Plot Layout dialog and
// the field names the tools have learnt, carries a closed dialog's result to
// the command that opened it, and writes its settings into the map document
// as an ordered run of 24 values.
#include <any>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/transformation.h"
#include "shell/plot_layout_form_link.h"
#include "shell/value_stream.h"

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

class clsExtension {
 public:
  // Plain members, each read and written as it is; the order is that of the
  // stream where they are persisted (see Save).
  bool ShouldContinue = false;
  std::string DirectoryPath;
  std::any frmLayerIDReturn;  // a dialog's parameter set; empty for none
  std::string DirectoryType;  // "Shapefile", "File Geodatabase" or "Personal Geodatabase"
  bool IsFeatureDataset = false;
  std::string FeatDatasetName;
  std::optional<platform::GeoTransformation> SpecifiedGeoTransform;
  bool SelectedGeoTransformation = false;
  bool ChoseToSkipGeoTransformation = false;
  std::any frmPlotLayoutReturn;
  std::any frmTransferStandIDReturn;
  std::string StandIDHistory;
  std::string XSpacingHistory;
  std::string YSpacingHistory;
  std::string PlotCountHistory;
  std::int32_t BufferUnitIndex = 0;
  std::int32_t SeparationUnitIndex = 0;
  std::int32_t PlotOptionIndex = 0;
  std::int32_t SpacingRatioOptionIndex = 0;
  double GridOrientation = 0;
  double StandBufferDist = 0;
  std::int32_t SavePointsWhere = 0;
  std::int32_t GetStartFromPointFC = 0;
  std::int32_t ForceAnchorPoint = 0;
  std::int32_t AnchorPointOption = 0;
  std::int32_t UserSpacingOption = 0;  // kept in the stream only
  PlotLayoutFormLink* PlotLayoutForm = nullptr;  // the open Plot Layout dialog; not owned
  bool SelToolEnabled = false;
  double XRatio = 0;
  double YRatio = 0;
  double XSpacing = 0;
  double YSpacing = 0;
  std::string ExistingIDHistory;
  std::string OrientationHistory;
  bool OrientationFromField = false;

  std::string Name() const { return "TNWK_Waypoint_Converter"; }
  std::string ID() const { return "Tarnwick.clsExtension"; }

  // The host whose message window and log receive this object's errors.
  void SetErrorHost(platform::host::Application* application, const platform::host::MapDocument* document);

  // Starts the session: an output location without a kind or a path falls
  // back to an empty shapefile folder.
  void Startup();
  // Drops the dialogs' results and the chosen transformation.
  void Shutdown();
  // Reads the 24 values. A stream that ends early or holds a value that
  // cannot be converted ends the load with one error on the error road: the
  // values read so far are kept, the rest keep their old values, and the
  // spacings are not repaired.
  void Load(ValueStream& stream);
  void Save(ValueStream& stream) const;

 private:
  platform::host::Application* errorApplication_ = nullptr;
  const platform::host::MapDocument* errorDocument_ = nullptr;
};

}  // namespace tarnwick
