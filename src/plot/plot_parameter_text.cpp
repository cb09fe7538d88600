// The one-line record of a run's settings for the geoprocessing history,
// and the purpose sentences for the lineage.
#include <string>

#include "plot/plot_texts.h"
#include "plot/plot_texts_common.h"
#include "support/text_operations.h"

namespace tarnwick {

using plot_texts::DirectionText;
using plot_texts::FixedTenDecimals;
using plot_texts::TrueFalse;

namespace {

std::string SpacingPiece(const SpacingOption& spacing) {
  if (const auto* perPolygon = std::get_if<PlotsPerPolygon>(&spacing)) {
    return "Spacing_Method = 'Enter # Plots per Polygon', Plot_Count = '" + std::to_string(perPolygon->plotsPerStand) +
           "', Spacing_Ratio_X_Axis = '" + NumberText(perPolygon->ratio.x) + "', Spacing_Ratio_Y_Axis = '" +
           NumberText(perPolygon->ratio.y) + "'";
  }
  if (const auto* fromField = std::get_if<PlotsFromField>(&spacing)) {
    return "Spacing_Method = 'Read # Plots from Stand Attribute Field', Plot_Count_Field = '" + fromField->field.name +
           "', Spacing_Ratio_X_Axis = '" + NumberText(fromField->ratio.x) + "', Spacing_Ratio_Y_Axis = '" +
           NumberText(fromField->ratio.y) + "'";
  }
  if (const auto* manual = std::get_if<ManualSpacing>(&spacing)) {
    return "Spacing_Method = 'Manually Enter X/Y Point Spacing', X_Spacing_Value = '" + NumberText(manual->x) +
           "', Y_Spacing_Value = '" + NumberText(manual->y) + "'";
  }
  const auto& fields = std::get<SpacingFromFields>(spacing);
  return "Spacing_Method = 'Read X/Y Point Spacing from Attribute Fields', X_Spacing_Field = '" + fields.xField.name +
         "', Y_Spacing_Field = '" + fields.yField.name + "'";
}

std::string OutputPiece(const PlotLayoutParameters& p, const PlotRunDescription& run) {
  if (std::holds_alternative<NewPlotClass>(p.output)) {
    return "Output_Option = 'Create New Feature Class', Output_Dataset_Name = '" + run.outputDatasetName +
           "', Output_Worksapce = '" + run.outputWorkspacePath + "', First_Plot_Number = '" +
           std::to_string(run.firstPlotNumber) + "', Plot_ID_Field = 'PlotID', Stand_ID_Field = '" +
           run.outputStandFieldName + "'";
  }
  const auto& existing = std::get<ExistingPlotLayer>(p.output);
  const std::string transformation =
      existing.transformation
          ? "Stand_To_Point_Transform = '" + existing.transformation->name +
                "', Stand_To_Point_Transform_Direction = '" + DirectionText(existing.direction) + "'"
          : std::string("Stand_To_Point_Transform = 'None', Stand_To_Point_Transform_Direction = 'None'");
  return "Output_Option = 'Add to Existing Feature Class', Existing_Dataset_Name = '" + run.outputDatasetName +
         "', Existing_Dataset_Worksapce = '" + run.outputWorkspacePath + "', " +
         "Determine_Grid_Point_Starting_Number_from_Points_Layer = '" + TrueFalse(existing.startAboveHighest) +
         "', " + "Starting_Number = '" + std::to_string(run.firstPlotNumber) + "', Plot_ID_Field = '" +
         existing.plotIdFieldName + ", Stand_ID_Field = '" + run.outputStandFieldName +
         "', Point_Coordinate_System = '" + run.outputReferenceName + "', " + "Stand_Coordinate_System = '" +
         run.standReferenceName + "', " + transformation;
}

template <class Anchor>
std::string AnchorTail(const Anchor& anchor, const PlotRunDescription& run) {
  const std::string transformation =
      anchor.transformation
          ? "Anchor_To_Point_Transform = '" + anchor.transformation->name +
                "', Anchor_To_Point_Transform_Direction = '" + DirectionText(anchor.direction) + "'"
          : std::string("Anchor_To_Point_Transform = 'None', Anchor_To_Point_Transform_Direction = 'None'");
  return "Anchor_X = '" + FixedTenDecimals(anchor.x) + "', Anchor_Y = '" + FixedTenDecimals(anchor.y) +
         "', Point_Coordinate_System = '" + run.outputReferenceName + "', " + "Anchor_Coordinate_System = '" +
         anchor.spatialReference.Name() + "', " + transformation;
}

std::string AnchorPiece(const AnchorOption& anchor, const PlotRunDescription& run) {
  if (const auto* fromLayer = std::get_if<LayerAnchor>(&anchor)) {
    return "Force_Through_Anchor_Point = 'TRUE'Selection_Option = 'Use First Selected Point in Point Feature "
           "Class', Anchor_Point_Layer = '" +
           fromLayer->layer.name + ", " + AnchorTail(*fromLayer, run);
  }
  if (const auto* clicked = std::get_if<ClickedAnchor>(&anchor)) {
    return "Force_Through_Anchor_Point = 'TRUE'Selection_Option = 'Select Point by Clicking on Screen', " +
           AnchorTail(*clicked, run);
  }
  return "Force_Through_Anchor_Point = 'FALSE'";
}

std::string AngleText(const OrientationOption& orientation) {
  if (const auto* fromField = std::get_if<OrientationFromField>(&orientation)) return "[" + fromField->field.name + "]";
  return NumberText(std::get<ConstantOrientation>(orientation).degrees);
}

std::string PatternText(const SpacingRatio& ratio) {
  if (ratio.option == SpacingRatioOption::Square) return "a square pattern ";
  return "a rectangular pattern with an X:Y spacing ratio of " + NumberText(ratio.x) + ":" + NumberText(ratio.y);
}

}  // namespace

std::string ParameterText(const PlotLayoutParameters& p, const PlotRunDescription& run) {
  const std::string stands = "Stand_Feature_Class = '" + p.stands.layer.name + "', Stand_ID_Field = '" +
                             p.stands.standIdField.name + "' (Field Index " +
                             std::to_string(p.stands.standIdFieldIndex) + "), Do_All_Stands = '" +
                             TrueFalse(p.stands.doAllStands) + "'";
  const std::string units = "Units = '" + p.units + "'";
  const std::string orientation =
      std::holds_alternative<OrientationFromField>(p.orientation)
          ? "Plot Layout Orientation = Variable, based on Stand Attribute Field [" +
                std::get<OrientationFromField>(p.orientation).field.name + "]"
          : "Plot Layout Orientation = '" + NumberText(std::get<ConstantOrientation>(p.orientation).degrees) + "'";
  const std::string buffer =
      "Buffer_Distance = '" + NumberText(p.buffer.distance) + "', Buffer_Units = '" + p.buffer.units + "'";
  return "NOTE:  This is not Python or VB Code!  [FUNCTION Generate_Plot_Layout][Parameters: " + stands + ", " +
         units + ", " + SpacingPiece(p.spacing) + ", " + orientation + ", " + buffer + ", " + OutputPiece(p, run) +
         ", " + AnchorPiece(p.anchor, run) + "]";
}

std::string PurposeText(const PlotLayoutParameters& p, const PlotRunDescription& run) {
  const std::string& layer = p.stands.layer.name;
  std::string savedTo = "Generated an array of plots over stands from '" + layer + "' and saved them to ";
  if (std::holds_alternative<NewPlotClass>(p.output)) {
    savedTo += "a new point feature class ['" + run.outputDatasetName + "', in workspace '" +
               run.outputWorkspacePath + "'].";
  } else {
    const auto& existing = std::get<ExistingPlotLayer>(p.output);
    savedTo += "an existing point feature class ['" + existing.layer.name + "' ";
    if (!EqualsIgnoreCase(existing.layer.name, run.outputDatasetName)) {
      savedTo += "(dataset name = '" + run.outputDatasetName + "') ";
    }
    savedTo += "in workspace '" + run.outputWorkspacePath + "'].";
  }

  const std::string angle = AngleText(p.orientation);
  const std::string prior = " (prior to grid rotation of " + angle + " degrees).";
  std::string spacing;
  if (const auto* perPolygon = std::get_if<PlotsPerPolygon>(&p.spacing)) {
    spacing = "Plots generated at " + std::to_string(perPolygon->plotsPerStand) + " per polygon, arranged in " +
              PatternText(perPolygon->ratio) + prior;
  } else if (const auto* fromField = std::get_if<PlotsFromField>(&p.spacing)) {
    spacing = "Plots generated at a specified number of points per polygon (based on values in attribute field [" +
              fromField->field.name + "]), arranged in " + PatternText(fromField->ratio) + prior;
  } else if (const auto* manual = std::get_if<ManualSpacing>(&p.spacing)) {
    spacing = "Plots generated every " + NumberText(manual->x) + " " + p.units + " along X-axis, and every " +
              NumberText(manual->y) + " " + p.units + " along Y-axis " + prior;
  } else {
    const auto& fields = std::get<SpacingFromFields>(p.spacing);
    spacing = "Plots generated at a specified X- and Y-spacing, in " + p.units +
              ", based on values in attribute fields (X-spacing = [" + fields.xField.name + "], Y-spacing = [" +
              fields.yField.name + "])" + prior;
  }

  const std::string buffer =
      p.buffer.distance == 0
          ? std::string("Points generated to fill stand polygons, with no edge buffer applied.")
          : "Points generated to avoid a buffer along the edges of stand polygons, using a buffer distance of " +
                NumberText(p.buffer.distance) + " " + p.buffer.units + ".";

  std::string anchor = "Plots not forced through any anchor point.";
  if (std::holds_alternative<ClickedAnchor>(p.anchor)) {
    anchor = "Plots forced through anchor point, specified by clicking on the screen.";
  } else if (const auto* fromLayer = std::get_if<LayerAnchor>(&p.anchor)) {
    anchor = "Plots forced through anchor point, specified as the first selected point in '" +
             fromLayer->layer.name + "'.";
  }
  return savedTo + " " + spacing + " " + buffer + " " + anchor;
}

}  // namespace tarnwick
