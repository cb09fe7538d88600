#pragma once
// frmTransform: explains why a geographic transformation is advisable
// between two layers (or spatial references) and lets the user pick one of
// the ranked candidates, or go on without one. The choice goes to the
// extension: SpecifiedGeoTransform, SelectedGeoTransformation and
// ChoseToSkipGeoTransformation.
#include <optional>
#include <string>

#include "platform/geometry.h"
#include "presentation/tool_dialog_model.h"
#include "shell/host_array.h"
#include "transforms/search_types.h"

namespace tarnwick {

// What the dialog is opened over.
struct TransformChooserRequest {
  SearchObject object1;
  SearchObject object2;
  std::optional<std::string> name1;  // display names; else the layer's or reference's own
  std::optional<std::string> name2;
  std::optional<platform::Geometry> place;  // where to rank; else at the data
};

inline constexpr const char* kNoKnownTransformations = "<-- No Known Transformations for these two GCSs -->";

class frmTransform : public ToolDialogModel {
 public:
  frmTransform(HostArray host, TransformChooserRequest request);

  // The candidates in the order the list shows them.
  const TransformList& RankedTransformations() const { return ranked_; }

 private:
  void ArcApplication();
  void AddControls();
  std::string ExplanationText();
  void CheckEnable();
  void cmdOK_Click();
  void cmdCancel_Click();
  void lbxTransformations_DblClick();

  HostArray host_;
  TransformChooserRequest request_;
  TransformList ranked_;
};

}  // namespace tarnwick
