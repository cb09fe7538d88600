#pragma once
// frmPlotLayout: the Plot Layout dialog as a model without a widget toolkit.
// It lists the map's polygon and point layers and the chosen layer's fields,
// guesses the stand ID, spacing, count and orientation fields from the names
// the extension has learnt, switches its controls as the choices demand,
// checks everything at OK in the order of the controls, stores the choices
// in the extension, runs the plot layout and shows its report.
//
// It is modeless: while it is open the user may click the anchor point on
// the map with the anchor tool, which reaches it through the extension.
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/workspace.h"
#include "plot/plot_layout_parameters.h"
#include "plot/plot_layout_references.h"
#include "presentation/dialog_model.h"
#include "shell/command_table.h"
#include "shell/host_array.h"
#include "shell/plot_layout_form_link.h"
#include "transforms/search_types.h"

namespace tarnwick {

// The greys of switched-off controls.
inline constexpr Rgb kSwitchedOffGrey{195, 195, 195};
inline constexpr Rgb kDisabledNumberGrey{235, 235, 235};
inline constexpr Rgb kAnchorXGrey{232, 232, 232};
inline constexpr Rgb kAnchorYGrey{229, 230, 230};

class frmPlotLayout : public DialogModel, public PlotLayoutFormLink {
 public:
  // defaults: the session's own set of platform transformations, which the
  // transformation search reads and extends.
  explicit frmPlotLayout(TransformationDefaults& defaults);
  ~frmPlotLayout() override;

  // Takes the host objects and initialises the whole dialog.
  void ArcApplication(const HostArray& hostArray);

  // What the anchor tool uses.
  double AnchorX() const override { return anchorX_; }
  double AnchorY() const override { return anchorY_; }
  void SetAnchorX(double x) override { anchorX_ = x; }
  void SetAnchorY(double y) override { anchorY_ = y; }
  bool InitializingForm() const override { return initializingForm_; }
  void SetInitializingForm(bool initializing) override { initializingForm_ = initializing; }
  void WriteAnchorCoordinates() override;
  void imgButtonUp_Click() override;
  void imgButtonDown_Click() override;

  int KeyPress(std::string_view control, int key) override;

  // The modeless frame's place on a screen of that size, in pixels.
  struct FramePlacement {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
  };
  FramePlacement Frame(int screenWidth, int screenHeight) const;

  // Closes the dialog (also when the user closes its frame).
  void Form_Unload();

  bool AnchorToolActive() const { return anchorToolActive_; }
  // Where a new output class goes: 1 folder of shapefiles, 2 file
  // geodatabase, 4 GeoPackage (this platform's single-file database).
  long OutputKind() const { return outputKind_; }
  const std::string& OutputWorkspacePath() const { return outputWorkspacePath_; }
  const std::string& OutputName() const { return outputName_; }
  bool OutputInFeatureDataset() const { return outputInFeatureDataset_; }
  const std::string& OutputFeatureDataset() const { return outputFeatureDataset_; }

 private:
  void AddControls();
  void RegisterHandlers();
  void FormLoad();
  void ChooseStartOfOutput();
  void NoteTableOfContentsLayers(std::string& pointName, std::string& polygonName);
  void FillLayerLists(const std::string& pointName, const std::string& polygonName, int& polygonStart,
                      int& pointStart);
  void FillLists();
  void ShareControlPlaces();

  // Handlers, under their names.
  void lbxPolygons_Click();
  void cbxPlotsOption_Click();
  void cbxSpacingRatioOptions_Click();
  void txtXSpacing_Change();
  void txtYSpacing_Change();
  void FollowSpacing(std::string_view changed, std::string_view follower, bool& changing, bool otherChanging);
  void cbxUnits_Click();
  void AdjustOrientiationVisibilities();
  void cbxCreatePointsIn_Click();
  void chkGridStartAtHighest_Click();
  void cbxExistingPointLayer_Click();
  void ImplementAnchorChoice();
  void cbxAnchorOption_Click();
  void cbxAnchorLayer_Click();
  void txtAnchorX_Change();
  void txtAnchorY_Change();
  void cmdGetWorkspace_Click();
  void cmdManual_Click();
  void cmdCancel_Click();
  void cmdOK_Click();
  void cbxUserDefinedOptions_Click();
  void CheckEnable();
  bool OkAllowed() const;

  // OK's parts: the checks with the parameter set they build, the question
  // about a large run, the settings stored, and the run.
  std::optional<PlotLayoutParameters> ValidateAndBuild();
  // The plot limit the run takes; nullopt when the run stays in the dialog
  // (a stand that cannot be used, or the user's No to a very large run).
  std::optional<long> AskAboutPlotCount(const PlotLayoutParameters& parameters);
  void StoreSettings(const PlotLayoutParameters& parameters);
  void RunAndClose(const PlotLayoutParameters& parameters, long maxPlots);
  // Shows a failed check's box and marks its controls.
  void ShowFailure(const PlotCheckFailure& failure);
  std::optional<OutputOption> BuildOutput(const platform::FeatureLayer& standLayer);
  std::optional<AnchorOption> BuildAnchor(const platform::FeatureLayer& standLayer, const OutputOption& output);
  TransformationChooser ChooserOfTransformations();

  // A listed layer as the map holds it now (with its current selection);
  // nullopt when it has left the map or can no longer be read.
  std::optional<platform::FeatureLayer> LayerInMap(const platform::FeatureLayer& listed) const;
  // Sets a control back to white and checks whether OK may be pressed: what
  // most handlers do.
  void Touch(std::string_view control);
  void SetVisible(std::initializer_list<std::string_view> controls, bool visible);
  void SetEnabled(std::initializer_list<std::string_view> controls, bool enabled);
  void DropAnchorTool();
  // The anchor tool's ProgID, as the host knows its current tool.
  static std::string AnchorTool() { return std::string(kSelPointToolCommand.progId); }
  // How the extension's spacings and ratios are shown and kept: 0 as 1, no sign.
  static double PositiveNonZero(double value) { return value == 0 ? 1 : std::abs(value); }

  TransformationDefaults& defaults_;
  platform::host::Application* application_ = nullptr;
  platform::host::MapDocument* document_ = nullptr;
  clsExtension* extension_ = nullptr;

  std::vector<platform::FeatureLayer> polygonLayers_;  // behind lbxPolygons
  std::vector<platform::FeatureLayer> pointLayers_;    // behind cbxAnchorLayer and cbxExistingPointLayer
  std::vector<platform::Field> standFields_;           // behind lbxStandFields
  std::vector<platform::Field> numericFields_;         // behind the field combos, from their second entry
  std::vector<platform::Field> existingIdFields_;      // behind cbxExistingIDField, from its second entry

  bool orientationFromField_ = false;
  bool initializingForm_ = false;
  bool anchorToolActive_ = false;
  double anchorX_ = 0;
  double anchorY_ = 0;
  bool xSpacingChanging_ = false;
  bool ySpacingChanging_ = false;
  std::string outputWorkspacePath_;
  std::string outputName_;
  long outputKind_ = 1;
  bool outputInFeatureDataset_ = false;
  std::string outputFeatureDataset_;
};

}  // namespace tarnwick
