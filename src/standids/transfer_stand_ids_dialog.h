#pragma once
// frmTransferStandIDs: collects the parameters of a Stand ID transfer. OK
// checks the choices, settles the geographic transformation from the plot
// points to the stands, stores the parameter set in the extension
// (frmTransferStandIDReturn, a TransferStandIDParameters), sets
// ShouldContinue and unloads; the command then runs ImportStandIDValues.
#include <optional>
#include <string>
#include <vector>

#include "shell/modal_tool_dialog_model.h"
#include "standids/transfer_parameters.h"
#include "transforms/search_types.h"

namespace tarnwick {

class frmTransferStandIDs : public ModalToolDialogModel<TransferStandIDParameters> {
 public:
  // Sets the form up over the host's focus map (the classic form's
  // ArcApplication). defaults: the session's default transformations.
  frmTransferStandIDs(HostArray host, TransformationDefaults& defaults);

  // Whether the name is one of the Stand ID field names the extension has
  // learnt ("StandID,Stand_ID,ID" until it has learnt any).
  bool TransferNameInStandIDHistory(const std::string& name);
  void TransferAddFieldNameToStandIDHistory(const std::string& name);

 private:
  void AddControls();
  void ArcApplication();
  void CheckEnable();
  void lbxLayers_Click();
  void cbxStandID_Click();
  void cbxExistingPointLayer_Click();
  void cmdOK_Click();
  // Refills lbxFields with these names, keeping the selection by name.
  void RefillAdditionalFields(const std::vector<std::string>& names);

  TransformationDefaults& defaults_;
  std::vector<platform::FeatureLayer> polygonLayers_;  // parallel to lbxLayers
  std::vector<platform::FeatureLayer> pointLayers_;    // parallel to cbxExistingPointLayer
  std::vector<std::string> standFieldNames_;           // the stand layer's offered fields, in order
  std::string defaultStandLayer_;
  std::string defaultPointLayer_;
};

}  // namespace tarnwick
