#include "waypoints/waypoint_report.h"

#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to) {
  if (from.empty()) return text;
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

namespace {

std::string Template(const platform::host::Version& v) {
  const std::vector<std::string> lines = {
      R"({\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fnil\fcharset0 Arial;}{\f1\fnil\fcharset0 MS Sans Serif;}})",
      R"({\colortbl ;\red0\green77\blue187;})",
      R"(\viewkind4\uc1\pard\sl276\slmult1\qc\lang9\b\fs18 Analysis Complete)",
      R"(\par -------------------------------------\b0 )",
      R"(\par \pard\sl276\slmult1 Point layer: \cf1\b  zzzPointLayer\cf0\b0 )",
      R"(\par Plot ID Field: \cf1  \b zzzPlotID\cf0\b0 )",
      R"(\par Stand ID Field:  \cf1\b zzzStandID\b0 )",
      R"(\par \cf0 Elevation Field:  \cf1\b zzzElevation\b0 )",
      R"(\par \cf0 All or Selected Option:  \cf1\b zzzAllSelected\b0 )",
      R"(\par \cf0 Source Coordinate System:  \cf1\b zzzSourceSpRef\b0 )",
      R"(\par \cf0 Waypoint Coordinate System:  \cf1\b zzzWaypointSpRef\b0 )",
      R"(\par \cf0\b0 Geographic Transformation:  \cf1\b zzzTransform\cf0\b0 )",
      R"(\par Transformation Direction:  \cf1\b zzzDirection\cf0\b0 )",
      R"(\par Output File:  \cf1\b zzzOutput\cf0\b0 )",
      R"(\par \pard\sl276\slmult1\qc -----------------------------------------)",
      R"(\par \pard zzzComplete1\lang1033\f1\fs17 )",
      R"(\par \pard zzzComplete2\lang1033\f1\fs17 )",
      R"(\par \pard TNWK Waypoint Converter v. )" + std::to_string(v.major) + "." + std::to_string(v.minor) + "." +
          std::to_string(v.revision) + R"(\lang1033\f1\fs17 )",
      R"(\par })",
      " ",
  };
  std::string text;
  for (const auto& line : lines) text += line + "\r\n";
  return text;
}

}  // namespace

std::string BuildWaypointReport(const WaypointReportItems& items) {
  const std::string none = "<-- None Selected -->";
  const std::string allSelected =
      items.allPoints ? "All Points Converted [n = " + std::to_string(items.total) + "]"
                      : "Selected Points Converted [n = " + std::to_string(items.selectedCount) + " of " +
                            std::to_string(items.total) + "]";
  std::string transform;
  std::string direction;
  if (items.transformation) {
    transform = items.transformation->name;
    direction = items.direction == platform::TransformDirection::Forward ? "Forward" : "Backward";
  } else {
    transform = direction = items.sameGeographicSystem ? "<-- Not Necessary -->" : "<-- None Specified -->";
  }
  const std::vector<std::pair<std::string, std::string>> replacements = {
      {"zzzPointLayer", items.pointLayer},
      {"zzzPlotID", items.plotIdField},
      {"zzzStandID", items.standIdField.value_or(none)},
      {"zzzElevation", items.elevationField.value_or(none)},
      {"zzzSourceSpRef", items.sourceSpatialReference},
      {"zzzWaypointSpRef", items.waypointSpatialReference},
      {"zzzAllSelected", allSelected},
      {"zzzTransform", transform},
      {"zzzDirection", direction},
      {"zzzComplete1", items.completeTime},
      {"zzzComplete2", items.completeDate},
      {"zzzOutput", ReplaceAll(items.outputPath, "\\", "\\\\")},
  };
  std::string text = Template(items.version);
  for (const auto& [mark, value] : replacements) text = ReplaceAll(std::move(text), mark, value);
  return text;
}

}  // namespace tarnwick
