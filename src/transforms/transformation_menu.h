#pragma once
// The "Geographic Transformation..." menu entry: the user picks two layers
// (or a layer and the map's coordinate system), chooses among their ranked
// candidates in frmTransform, and the choice is stored in the map, where the
// tools' sequence finds it before it searches.
#include <optional>
#include <vector>

#include "presentation/tool_dialog_model.h"
#include "shell/host_array.h"
#include "transforms/search_types.h"

namespace tarnwick {

inline constexpr const char* kMapCoordinateSystemEntry = "<-- Map Coordinate System -->";

// Asks for the two sides of the transformation.
class TransformationPairDialog : public ToolDialogModel {
 public:
  explicit TransformationPairDialog(HostArray host);

  // Set by OK: the two sides, the second being the map's system when the
  // map entry was chosen.
  struct Pair {
    SearchObject object1;
    SearchObject object2;
    std::string name1;
    std::string name2;
  };
  const std::optional<Pair>& Chosen() const { return chosen_; }

 private:
  void CheckEnable();
  void cmdOK_Click();

  HostArray host_;
  std::vector<platform::FeatureLayer> layers_;  // parallel to cbxLayer1, and to cbxLayer2 from its entry 1
  std::optional<Pair> chosen_;
};

struct TransformationMenuOutcome {
  enum class Kind { Cancelled, NotNeeded, Skipped, Refused, Stored } kind = Kind::Cancelled;
  std::optional<platform::GeoTransformation> stored;
};

// Runs the entry as an entry point of the error road. The map's
// transformations change only when a transformation was chosen, and then the
// document is marked changed.
TransformationMenuOutcome RunGeographicTransformationMenu(HostArray host, TransformationDefaults& defaults,
                                                          const ShowModalDialog& showModal);

}  // namespace tarnwick
