#include "plot/plot_layout_checks.h"

#include <cstdlib>
#include <filesystem>

#include <fmt/core.h>

#include "support/key_filters.h"
#include "support/lookups.h"
#include "support/number_text.h"
#include "support/text_operations.h"
#include "transforms/transform_search.h"

namespace tarnwick {

namespace {

using platform::host::MessageIcon;

PlotCheckFailure Failure(int number, std::string head, std::string body, std::string control) {
  PlotCheckFailure failure;
  failure.number = number;
  failure.head = std::move(head);
  failure.body = std::move(body);
  failure.marked = {control};
  failure.focus = std::move(control);
  return failure;
}

// The boxes about a spatial reference: their own title, an exclamation icon,
// no control.
PlotCheckFailure ReferenceFailure(int number, std::string head, std::string body) {
  PlotCheckFailure failure;
  failure.number = number;
  failure.head = std::move(head);
  failure.body = std::move(body);
  failure.title = "Invalid Spatial Reference:";
  failure.icon = MessageIcon::Exclamation;
  return failure;
}

bool Numeric(const std::string& text) { return NumberOfText(text).has_value(); }

PlotCheck CheckRatio(const GridEntries& e) {
  if (e.plotsOption != 0 && e.plotsOption != 1) return std::nullopt;
  if (e.ratioOption < 0) {
    return Failure(3, "No Spacing Ratio Specified!",
                   "Please specify the X/Y Spacing Ratio you wish to use for grid spacing...", "cbxSpacingRatioOptions");
  }
  if (e.ratioOption != 3) return std::nullopt;
  const std::string xHead = "Invalid Value for X-Value of User-Defined Ratio!";
  const std::string yHead = "Invalid Value for Y-Value of User-Defined Ratio!";
  if (!Numeric(e.xRatioText)) return Failure(4, xHead, "Please specify the X-value for the X/Y ratio...", "txtXRatio");
  if (*NumberOfText(e.xRatioText) == 0) {
    return Failure(5, xHead, "Please specify a non-zero X-value for the X/Y ratio...", "txtXRatio");
  }
  if (!Numeric(e.yRatioText)) return Failure(6, yHead, "Please specify the Y-value for the X/Y ratio...", "txtYRatio");
  if (*NumberOfText(e.yRatioText) == 0) {
    return Failure(7, yHead, "Please specify a non-zero Y-value for the X/Y ratio...", "txtYRatio");
  }
  return std::nullopt;
}

PlotCheck CheckSpacing(const GridEntries& e) {
  switch (e.plotsOption) {
    case -1:
      return Failure(8, "No Plot Spacing Specified!",
                     "Please specify the Plot Spacing option you wish to use for grid spacing...", "cbxPlotsOption");
    case 0:
      if (!Numeric(e.numPlotsText)) {
        return Failure(9, "No Number of Plots per Stand Specified!",
                       "Please specify the number of plot points you wish to generate in each stand...",
                       "txtNumPlots");
      }
      break;
    case 1:
      if (!e.plotsFieldChosen) {
        return Failure(10, "No Plot Count Attribute Field selected!",
                       "Please specify the attribute field containing the number of plots you wish to create...",
                       "cbxPlotsField");
      }
      break;
    case 2: {
      const std::string body = "Please specify your desired spacing between points...";
      if (!Numeric(e.xSpacingText)) return Failure(11, "No X-Axis Spacing Distance Specified!", body, "txtXSpacing");
      if (!Numeric(e.ySpacingText)) return Failure(12, "No Y-Axis Spacing Distance Specified!", body, "txtYSpacing");
      break;
    }
    case 3:
      if (!e.xSpacingFieldChosen) {
        return Failure(13, "No X-Spacing Attribute Field selected!",
                       "Please specify the attribute field containing the X-Spacing value you wish to use...",
                       "cbxXSpacing");
      }
      if (!e.ySpacingFieldChosen) {
        return Failure(14, "No Y-Spacing Attribute Field selected!",
                       "Please specify the attribute field containing the Y-Spacing value you wish to use...",
                       "cbxYSpacing");
      }
      break;
    default:
      break;
  }
  return std::nullopt;
}

std::string ReferenceProblemHead(std::string_view subject, std::string_view reason) {
  return "There is a problem with the spatial reference for " + std::string(subject) + "\n  --> " +
         std::string(reason);
}

// The reason ReturnGCSFromSpRef gives for a reference, empty when it has none.
std::optional<std::string> ReferenceProblem(const platform::SpatialReference& reference) {
  bool booError = false;
  std::string strErrMsg;
  std::optional<platform::SpatialReference> projected;
  ReturnGCSFromSpRef(&reference, booError, strErrMsg, projected);
  if (!booError) return std::nullopt;
  return strErrMsg;
}

std::optional<std::string> DatasetProblem(const platform::FeatureLayer& layer) {
  bool booError = false;
  std::string strErrMsg;
  std::optional<platform::SpatialReference> projected;
  ReturnGCSFromDataset(layer, booError, strErrMsg, projected);
  if (!booError) return std::nullopt;
  return strErrMsg;
}

}  // namespace

std::optional<double> NumberOfText(std::string_view text) {
  if (!IsNumericText(std::string(text))) return ParseNumber(text);
  std::string normal = TrimBlanks(text);
  for (char& c : normal) {
    if (c == ',') c = '.';
  }
  return std::strtod(normal.c_str(), nullptr);
}

std::vector<platform::Field> FieldsOffered(const std::vector<platform::Field>& fields, long kinds) {
  std::vector<platform::Field> offered = ReturnFieldsByType(fields, kinds);
  std::erase_if(offered, [](const platform::Field& field) {
    return EqualsIgnoreCase(field.name, "Shape_Area") || EqualsIgnoreCase(field.name, "Shape_Length");
  });
  return offered;
}

std::optional<platform::Field> FieldOffered(const platform::FeatureClass& featureClass, std::string_view name,
                                            long kinds) {
  const int index = featureClass.FindField(std::string(name));
  if (index < 0) return std::nullopt;
  const platform::Field& field = featureClass.Fields().at(static_cast<std::size_t>(index));
  const std::vector<platform::Field> offered = FieldsOffered({field}, kinds);
  if (offered.empty()) return std::nullopt;
  return offered.front();
}

PlotCheck CheckGridEntries(const GridEntries& e) {
  if (!e.standFieldChosen) {
    return Failure(1, "No Stand ID Attribute Field Specified!",
                   "Please specify Stand Polygon attribute field that contains Stand ID values...", "lbxStandFields");
  }
  if (e.unitsText.empty() && (e.plotsOption == 2 || e.plotsOption == 3)) {
    return Failure(2, "No Units Specified!", "Please specify the units you wish to use for grid spacing...",
                   "cbxUnits");
  }
  if (auto failure = CheckRatio(e)) return failure;
  if (auto failure = CheckSpacing(e)) return failure;
  if (e.orientationFromField) {
    if (!e.orientationFieldChosen) {
      return Failure(15, "No Orientation Attribute Field selected!",
                     "Please specify the attribute field containing the Array Orientation value you wish to use...",
                     "cbxOrientationField");
    }
  } else if (!Numeric(e.orientationText)) {
    return Failure(16, "No Grid Orientation Specified!", "Please specify your angle to generate the array over...",
                   "txtGridOrientation");
  }
  if (!Numeric(e.bufferText)) {
    return Failure(17, "No Buffer Distance Specified!", "Please specify your internal buffer distance...",
                   "txtBuffer");
  }
  // This test looks as though it demands a unit for a buffer, but the text
  // has just been found numeric, so it never fires: a buffer without a unit
  // goes through with an empty unit, as intended.
  if (NumberOfText(e.bufferText) != 0.0 && e.bufferUnitsText.empty() && !Numeric(e.bufferText)) {
    return Failure(17, "No Buffer Distance Units Specified!",
                   "Please specify whether your buffer distance is in Feet, Meters or Chains...", "cbxBufferUnits");
  }
  if (!Numeric(e.startNumberText) && !e.startAboveHighest) {
    return Failure(18, "No Starting Number specified!", "Please specify the number to start naming points with...",
                   "txtGridStartingNumber");
  }
  return std::nullopt;
}

PlotCheck CheckNewOutput(std::string_view outputText, FClassPathData& data, OutputPathReading reading) {
  data = ConvertFClassPathToWSData(outputText);
  if (reading == OutputPathReading::CommandLine && data.errorText.empty()) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path directory(data.directory);
    const std::string ending = ToLowerAscii(directory.extension().string());
    const fs::path folder = directory.has_parent_path() ? directory.parent_path() : ".";
    if (!data.directoryExists && (ending == ".gpkg" || ending == ".gdb") && fs::is_directory(folder, error)) {
      return std::nullopt;
    }
    if (data.datasetExists && data.workspace && data.workspace->Kind() == platform::WorkspaceKind::ShapefileFolder) {
      data.datasetExists = data.workspace->NameExists(fs::path(data.name).stem().string());
    }
  }
  const std::string retry = "Please specify a new filename for the Stand Points feature class...";
  if (!data.errorText.empty()) return Failure(19, "Failed to check workspace!", data.errorText, "txtOutput");
  if (!data.directoryExists) {
    return Failure(20, "Specified Directory does not exist!", "--> Directory = '" + data.directory + "'\n\n" + retry,
                   "txtOutput");
  }
  if (data.datasetExists) {
    return Failure(21, "Specified filename already exists!",
                   "--> Workspace = '" + data.directory + "'\n--> Filename = '" + data.name + "'\n\n" + retry,
                   "txtOutput");
  }
  return std::nullopt;
}

PlotCheck CheckExistingOutputChoice(bool layerChosen, bool plotIdFieldChosen, std::string_view layerText) {
  if (!layerChosen) {
    return Failure(22, "No Point Feature Class selected!",
                   "Please select an existing point feature class to add points to...", "cbxExistingPointLayer");
  }
  if (!plotIdFieldChosen) {
    return Failure(23, "No Point ID field selected in point feature class!",
                   "Please select the attribute field in '" + std::string(layerText) +
                       "' that will contain your new point ID values...",
                   "cbxExistingIDField");
  }
  return std::nullopt;
}

PlotCheck CheckStandLayerReference(const platform::FeatureLayer& standLayer) {
  const auto reason = DatasetProblem(standLayer);
  if (!reason) return std::nullopt;
  return ReferenceFailure(24, ReferenceProblemHead("'" + standLayer.name + "':", *reason),
                          "Please select a different stand layer, or fix the spatial reference before running this "
                          "tool.");
}

PlotCheck CheckPointLayerReference(const platform::FeatureLayer& pointLayer) {
  const auto reason = DatasetProblem(pointLayer);
  if (!reason) return std::nullopt;
  return ReferenceFailure(25, ReferenceProblemHead("'" + pointLayer.name + "':", *reason),
                          "Please select a different point ID layer, or fix the spatial reference before running "
                          "this tool.");
}

PlotCheck CheckAnchorEntries(const AnchorEntries& e) {
  const bool fromLayer = e.option != 0;
  if (fromLayer && !e.layerChosen) {
    return Failure(26, "No Anchor Point Feature Class selected!",
                   "Please select an existing point feature class that contains your anchor point...",
                   "cbxAnchorLayer");
  }
  const std::string xHead = "Invalid X-Coordinate for Anchor Point!";
  const std::string yHead = "Invalid Y-Coordinate for Anchor Point!";
  if (fromLayer) {
    const bool selected = ToLowerAscii(e.layerOptionCaption).find("selected") != std::string::npos;
    const std::string body = std::string(selected ? "It is possible that the first selected point in '"
                                                  : "It is possible that the first point in '") +
                             e.layerText + "' is an empty point.  Please select a valid point to use as your anchor point...";
    if (!Numeric(e.xText)) return Failure(27, xHead, body, "txtAnchorX");
    if (!Numeric(e.yText)) return Failure(28, yHead, body, "txtAnchorY");
  } else {
    if (!Numeric(e.xText)) {
      return Failure(30, xHead, "Please enter a numeric value for the X-coordinate of your anchor point...",
                     "txtAnchorX");
    }
    if (!Numeric(e.yText)) {
      return Failure(31, yHead, "Please enter a numeric value for the Y-coordinate of your anchor point...",
                     "txtAnchorY");
    }
  }
  if (e.reference.IsUnknown()) {
    PlotCheckFailure failure =
        Failure(fromLayer ? 29 : 32, "Unknown Coordinate System for Anchor Point!",
                "Please set the spatial reference of your map.  This tool assumes the anchor point is in the "
                "coordinate system of your map.",
                "txtAnchorY");
    failure.marked = {"txtAnchorX", "txtAnchorY"};
    return failure;
  }
  return std::nullopt;
}

PlotCheck CheckAnchorReference(const platform::SpatialReference& anchorReference) {
  const auto reason = ReferenceProblem(anchorReference);
  if (!reason) return std::nullopt;
  return ReferenceFailure(
      33, ReferenceProblemHead("your Anchor point!", *reason),
      "If clicking on the screen to set the anchor point, then please set the map spatial reference before running "
      "this tool.  If setting the anchor point based on an existing point feature class, then please set the "
      "spatial reference for that feature class before running this tool.");
}

PlotCheck CheckNewOutputReference(std::string_view standLayerName, const platform::SpatialReference& standReference) {
  const auto reason = ReferenceProblem(standReference);
  if (!reason) return std::nullopt;
  return ReferenceFailure(
      34, ReferenceProblemHead("'" + std::string(standLayerName) + "' (your new points feature class):", *reason),
      "Because you are creating a new point feature class, this spatial reference is copied from your selected "
      "Stand Polygon layer. Please fix the spatial reference of your Stand Polygon layer before running this tool.");
}

PlotCheck CheckExistingOutputReference(std::string_view layerName, const platform::SpatialReference& reference) {
  const auto reason = ReferenceProblem(reference);
  if (!reason) return std::nullopt;
  return ReferenceFailure(35, ReferenceProblemHead("'" + std::string(layerName) + "':", *reason),
                          "Please select a different Existing Points layer, or fix the spatial reference before "
                          "running this tool.");
}

PlotCheckFailure LayerGoneFailure(std::string_view layerName, std::string_view control) {
  PlotCheckFailure failure =
      Failure(0, "Layer No Longer Available!",
              "The layer '" + std::string(layerName) +
                  "' has been removed from the map, or its data can no longer be read.  Please choose another "
                  "layer...",
              std::string(control));
  failure.title = "Layer Not Found:";
  failure.icon = MessageIcon::Exclamation;
  return failure;
}

AnchorPointReading ReadAnchorPoint(const platform::FeatureLayer& layer) {
  AnchorPointReading reading;
  std::unique_ptr<platform::FeatureCursor> cursor;
  if (!layer.selection.empty()) {
    reading.caption = "Use first selected point in";
    cursor = layer.featureClass->SearchOids({layer.selection.front()});
  } else {
    reading.caption = "Use first point in";
    cursor = layer.featureClass->Search();
  }
  const auto first = cursor->NextFeature();
  if (first && !first->shape.IsEmpty()) reading.point = first->shape.PointXY();
  if (reading.point) {
    const bool geographic = layer.featureClass->GetSpatialReference().IsGeographic();
    reading.xText = AnchorCoordinateText(reading.point->x, geographic);
    reading.yText = AnchorCoordinateText(reading.point->y, geographic);
  } else {
    reading.xText = reading.yText = "<-- Empty Point -->";
  }
  return reading;
}

std::string AnchorCoordinateText(double value, bool geographic) {
  return geographic ? fmt::format("{:.8f}", value) : fmt::format("{:.3f}", value);
}

}  // namespace tarnwick
