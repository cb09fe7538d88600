#include "waypoints/waypoint_checks.h"

#include <filesystem>

#include "support/lookups.h"
#include "waypoints/duplicate_plot_ids.h"
#include "waypoints/waypoint_output.h"

namespace tarnwick {

namespace {

struct RoleText {
  const char* name;
  const char* control;
};

RoleText TextOf(WaypointFieldRole role) {
  switch (role) {
    case WaypointFieldRole::PlotID:
      return {"Plot ID", "lbxFields"};
    case WaypointFieldRole::StandID:
      return {"Stand ID", "lbxStandFields"};
    case WaypointFieldRole::Elevation:
      return {"elevation", "lbxElevation"};
  }
  return {"", ""};
}

}  // namespace

std::optional<CheckMessage> CheckWaypointLayer(const platform::FeatureLayer& layer) {
  if (layer.featureClass && layer.featureClass->ShapeType() == platform::GeometryType::Point) return std::nullopt;
  return CheckMessage{"The layer '" + layer.name + "' is not a point layer.", "", platform::host::MessageIcon::None,
                      "lbxLayers"};
}

Checked<platform::Field> FindWaypointField(const platform::FeatureLayer& layer, const std::string& name,
                                           WaypointFieldRole role) {
  const RoleText text = TextOf(role);
  const int index = layer.featureClass->FindField(name);
  if (index < 0) {
    return CheckMessage{"The point layer '" + layer.name + "' has no field '" + name + "' (" + text.name + ").", "",
                        platform::host::MessageIcon::None, text.control};
  }
  const platform::Field field = layer.featureClass->Fields().at(static_cast<size_t>(index));
  const bool numericOnly = role == WaypointFieldRole::Elevation;
  if (!FieldIsNumeric(field.type) && (numericOnly || !FieldIsString(field.type))) {
    return CheckMessage{std::string("The field '") + field.name + "' cannot serve as " + text.name + ": it must be " +
                            (numericOnly ? "numeric." : "a text or numeric field."),
                        "", platform::host::MessageIcon::None, text.control};
  }
  return field;
}

std::optional<CheckMessage> CheckPlotIDsForConversion(const WaypointParameters& parameters,
                                                      const std::function<void(const std::string&)>& onProgress) {
  auto& featureClass = *parameters.pointLayer.featureClass;
  const auto& selection = parameters.pointLayer.selection;
  const bool all = parameters.convertAll || selection.empty();
  const std::int64_t total = all ? featureClass.FeatureCount() : static_cast<std::int64_t>(selection.size());
  auto cursor = all ? featureClass.Search() : featureClass.SearchOids(selection);
  std::string problems =
      CheckForDuplicatePlotIDs(*cursor, featureClass.FindField(parameters.plotIdField.name), total, onProgress);
  if (problems.empty()) return std::nullopt;
  return CheckMessage{std::move(problems), kPlotIdProblemsCaption, platform::host::MessageIcon::None, "",
                      CheckMessage::Display::Report};
}

Checked<std::string> CheckWaypointOutput(platform::host::Application& application, const std::string& text) {
  const std::string path = WaypointOutputPath(text);
  std::error_code ec;
  if (std::filesystem::exists(path, ec)) {
    const std::string question = WaypointFileExistsQuestion(path);
    const auto answer =
        application.MessageBox(question, kWaypointFileExistsTitle, platform::host::MessageButtons::YesNoCancel);
    if (answer != platform::host::MessageResult::Yes) {
      return CheckMessage{question, kWaypointFileExistsTitle, platform::host::MessageIcon::None, "txtOutput",
                          CheckMessage::Display::Answered};
    }
  }
  if (std::string folder = CheckWaypointOutputFolder(path); !folder.empty()) {
    return CheckMessage{std::move(folder), "", platform::host::MessageIcon::None, "txtOutput"};
  }
  return path;
}

}  // namespace tarnwick
