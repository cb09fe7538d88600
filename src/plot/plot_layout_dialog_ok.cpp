// OK of the Plot Layout dialog: every check in the order of the controls,
// the parameter set built on the way, the transformations settled, the
// choices stored in the extension, then the run and its report.
#include <cmath>

#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "plot/plot_layout_checks.h"
#include "plot/plot_layout_dialog.h"
#include "shell/field_histories.h"
#include "plot/plot_run.h"
#include "shell/extension.h"
#include "shell/sel_point_tool.h"
#include "support/host_operations.h"
#include "support/path_operations.h"
#include "support/text_operations.h"

namespace tarnwick {

namespace {

double ValueOf(const std::string& text) { return NumberOfText(text).value_or(0); }

long LongOf(const std::string& text) {
  return static_cast<long>(platform::ValueToLong(platform::Value{ValueOf(text)}));
}

constexpr const char* kPlotCountTitle = "Plot Layout";

bool Contains(const std::string& text, std::string_view part) {
  return ToLowerAscii(text).find(ToLowerAscii(part)) != std::string::npos;
}

}  // namespace

void frmPlotLayout::ShowFailure(const PlotCheckFailure& failure) {
  application_->MessageBox(failure.Text(), failure.title, platform::host::MessageButtons::OK, failure.icon);
  for (const auto& name : failure.marked) (*this)[name].backColor = kYellow;
  if (!failure.focus.empty()) focus = failure.focus;
}

void frmPlotLayout::cmdOK_Click() {
  const std::optional<PlotLayoutParameters> parameters = ValidateAndBuild();
  if (!parameters) return;
  const std::optional<long> maxPlots = AskAboutPlotCount(*parameters);
  if (!maxPlots) return;
  StoreSettings(*parameters);
  RunAndClose(*parameters, *maxPlots);
}

std::optional<PlotLayoutParameters> frmPlotLayout::ValidateAndBuild() {
  const frmPlotLayout& c = *this;
  GridEntries grid;
  grid.standFieldChosen = c["lbxStandFields"].listIndex >= 0 && c["lbxPolygons"].listIndex >= 0;
  grid.unitsText = c["cbxUnits"].SelectedEntry();
  grid.plotsOption = c["cbxPlotsOption"].listIndex;
  grid.ratioOption = c["cbxSpacingRatioOptions"].listIndex;
  grid.xRatioText = c["txtXRatio"].text;
  grid.yRatioText = c["txtYRatio"].text;
  grid.numPlotsText = c["txtNumPlots"].text;
  grid.plotsFieldChosen = c["cbxPlotsField"].listIndex >= 1;
  grid.xSpacingText = c["txtXSpacing"].text;
  grid.ySpacingText = c["txtYSpacing"].text;
  grid.xSpacingFieldChosen = c["cbxXSpacing"].listIndex >= 1;
  grid.ySpacingFieldChosen = c["cbxYSpacing"].listIndex >= 1;
  grid.orientationFromField = orientationFromField_;
  grid.orientationFieldChosen = c["cbxOrientationField"].listIndex >= 1;
  grid.orientationText = c["txtGridOrientation"].text;
  grid.bufferText = c["txtBuffer"].text;
  grid.bufferUnitsText = c["cbxBufferUnits"].SelectedEntry();
  grid.startNumberText = c["txtGridStartingNumber"].text;
  grid.startAboveHighest = c["chkGridStartAtHighest"].value == 1;
  if (const PlotCheck failure = CheckGridEntries(grid)) {
    ShowFailure(*failure);
    return std::nullopt;
  }

  PlotLayoutParameters p;
  const platform::FeatureLayer& listedStands = polygonLayers_.at(static_cast<std::size_t>(c["lbxPolygons"].listIndex));
  const std::optional<platform::FeatureLayer> stands = LayerInMap(listedStands);
  if (!stands) {
    ShowFailure(LayerGoneFailure(listedStands.name, "lbxPolygons"));
    return std::nullopt;
  }
  const platform::FeatureClass& standClass = *stands->featureClass;
  const platform::Field& standField = standFields_.at(static_cast<std::size_t>(c["lbxStandFields"].listIndex));
  p.stands = {*stands, standClass.FindField(standField.name), standField, c["optSel"].value == 0};
  p.units = grid.unitsText;

  auto numericField = [&](std::string_view combo) -> const platform::Field& {
    return numericFields_.at(static_cast<std::size_t>(c[combo].listIndex - 1));
  };
  auto ratio = [&] {
    const auto option = static_cast<SpacingRatioOption>(grid.ratioOption);
    return SpacingRatio::Of(option, ValueOf(grid.xRatioText), ValueOf(grid.yRatioText));
  };
  switch (grid.plotsOption) {
    case 0:
      p.spacing = PlotsPerPolygon{LongOf(grid.numPlotsText), ratio()};
      break;
    case 1: {
      const platform::Field& field = numericField("cbxPlotsField");
      p.spacing = PlotsFromField{standClass.FindField(field.name), field, ratio()};
      break;
    }
    case 2:
      p.spacing = ManualSpacing{ValueOf(grid.xSpacingText), ValueOf(grid.ySpacingText)};
      break;
    default: {
      const platform::Field& x = numericField("cbxXSpacing");
      const platform::Field& y = numericField("cbxYSpacing");
      p.spacing = SpacingFromFields{standClass.FindField(x.name), x, standClass.FindField(y.name), y};
      break;
    }
  }
  if (orientationFromField_) {
    const platform::Field& field = numericField("cbxOrientationField");
    p.orientation = tarnwick::OrientationFromField{standClass.FindField(field.name), field};
  } else {
    p.orientation = ConstantOrientation{ValueOf(grid.orientationText)};
  }
  p.buffer = {ValueOf(grid.bufferText), grid.bufferUnitsText};
  p.firstPlotNumber = NumberOfText(grid.startNumberText) ? LongOf(grid.startNumberText) : 0;

  std::optional<OutputOption> output = BuildOutput(*stands);
  if (!output) return std::nullopt;
  p.output = std::move(*output);
  std::optional<AnchorOption> anchor = BuildAnchor(*stands, p.output);
  if (!anchor) return std::nullopt;
  p.anchor = std::move(*anchor);
  return p;
}

std::optional<OutputOption> frmPlotLayout::BuildOutput(const platform::FeatureLayer& standLayer) {
  const frmPlotLayout& c = *this;
  if (c["cbxCreatePointsIn"].listIndex == 0) {
    FClassPathData data;
    if (const PlotCheck failure = CheckNewOutput(c["txtOutput"].text, data)) {
      ShowFailure(*failure);
      return std::nullopt;
    }
    return NewPlotClass{c["txtOutput"].text, data.directory, data.name};
  }

  const int layerIndex = c["cbxExistingPointLayer"].listIndex;
  const int fieldIndex = c["cbxExistingIDField"].listIndex;
  if (const PlotCheck failure =
          CheckExistingOutputChoice(layerIndex >= 0, fieldIndex >= 1, c["cbxExistingPointLayer"].SelectedEntry())) {
    ShowFailure(*failure);
    return std::nullopt;
  }
  const platform::FeatureLayer& listed = pointLayers_.at(static_cast<std::size_t>(layerIndex));
  const std::optional<platform::FeatureLayer> points = LayerInMap(listed);
  if (!points) {
    ShowFailure(LayerGoneFailure(listed.name, "cbxExistingPointLayer"));
    return std::nullopt;
  }
  ExistingPlotLayer existing;
  existing.layer = *points;
  existing.plotIdField = existingIdFields_.at(static_cast<std::size_t>(fieldIndex - 1));
  existing.plotIdFieldName = existing.plotIdField.name;
  existing.plotIdFieldIndex = points->featureClass->FindField(existing.plotIdFieldName);
  existing.startAboveHighest = c["chkGridStartAtHighest"].value == 1;
  if (const PlotCheck failure = SettleExistingOutput(standLayer, existing, ChooserOfTransformations())) {
    ShowFailure(*failure);
    return std::nullopt;
  }
  return existing;
}

std::optional<AnchorOption> frmPlotLayout::BuildAnchor(const platform::FeatureLayer& standLayer,
                                                       const OutputOption& output) {
  const frmPlotLayout& c = *this;
  if (c["chkApplyAnchor"].value != 1) return NoAnchor{};

  AnchorEntries entries;
  entries.option = c["cbxAnchorOption"].listIndex == 1 ? 1 : 0;
  entries.layerChosen = c["cbxAnchorLayer"].listIndex >= 0;
  entries.layerText = c["cbxAnchorLayer"].SelectedEntry();
  entries.layerOptionCaption = c["lblAnchorLayerOption"].caption;
  entries.xText = c["txtAnchorX"].text;
  entries.yText = c["txtAnchorY"].text;
  std::optional<platform::FeatureLayer> anchorLayer;
  if (entries.option == 1 && entries.layerChosen) {
    const platform::FeatureLayer& listed = pointLayers_.at(static_cast<std::size_t>(c["cbxAnchorLayer"].listIndex));
    anchorLayer = LayerInMap(listed);
    if (!anchorLayer) {
      ShowFailure(LayerGoneFailure(listed.name, "cbxAnchorLayer"));
      return std::nullopt;
    }
    entries.reference = anchorLayer->featureClass->GetSpatialReference();
  } else if (entries.option == 0) {
    entries.reference = document_->FocusMap().GetSpatialReference();
  }
  AnchorOption anchor;
  if (const PlotCheck failure =
          SettleAnchor(entries, anchorLayer, standLayer, output, ChooserOfTransformations(), anchor)) {
    ShowFailure(*failure);
    return std::nullopt;
  }
  return anchor;
}

// Each transformation is settled by the Selection sequence, which may ask
// the user, after the choice to skip one has been forgotten; one that cannot
// run here is refused before anything is written.
TransformationChooser frmPlotLayout::ChooserOfTransformations() {
  return [this](const SearchObject& from, const SearchObject& to, const platform::Geometry* at) {
    extension_->ChoseToSkipGeoTransformation = false;
    return SelectGeoTransformationForRun(*application_, document_->FocusMap(), defaults_, from, to, at);
  };
}

// Before anything is stored or written: a stand the run could not use is
// shown as an error, and a run above the plot limit is put to the user as a
// Yes/No question; Yes lifts the limit for this run.
std::optional<long> frmPlotLayout::AskAboutPlotCount(const PlotLayoutParameters& parameters) {
  using platform::host::MessageButtons;
  using platform::host::MessageIcon;
  const PlotCountEstimate estimate = EstimatePlotCount(parameters);
  if (!estimate.problem.empty()) {
    application_->MessageBox(estimate.problem + ".", kPlotCountTitle, MessageButtons::OK, MessageIcon::Critical);
    return std::nullopt;
  }
  if (estimate.plots <= static_cast<double>(kDefaultMaxPlots)) return kDefaultMaxPlots;
  const std::string question =
      PlotCountAboveLimitText(estimate, kDefaultMaxPlots) + "\n\nDo you want to lay them out anyway?";
  if (application_->MessageBox(question, kPlotCountTitle, MessageButtons::YesNo, MessageIcon::Question) !=
      platform::host::MessageResult::Yes) {
    return std::nullopt;
  }
  return kLargestPlotLimit;
}

void frmPlotLayout::StoreSettings(const PlotLayoutParameters& p) {
  const frmPlotLayout& c = *this;
  clsExtension& ext = *extension_;
  if (const auto* created = std::get_if<NewPlotClass>(&p.output)) {
    ext.DirectoryPath = created->workspacePath;
    if (Contains(created->workspacePath, ".gdb")) {
      ext.DirectoryType = "File Geodatabase";
    } else if (Contains(created->workspacePath, ".mdb") || Contains(created->workspacePath, ".gpkg")) {
      ext.DirectoryType = "Personal Geodatabase";
    } else if (ExistFileDir(created->workspacePath)) {
      ext.DirectoryType = "Shapefile";
    }
  }
  ext.ShouldContinue = true;

  // A value this run did not read is stored as 1.
  const SpacingRatio* ratio = nullptr;
  if (const auto* perPolygon = std::get_if<PlotsPerPolygon>(&p.spacing)) ratio = &perPolygon->ratio;
  if (const auto* fromField = std::get_if<PlotsFromField>(&p.spacing)) ratio = &fromField->ratio;
  const bool userRatio = ratio && ratio->option == SpacingRatioOption::UserDefined;
  ext.XRatio = PositiveNonZero(userRatio ? ratio->x : 0);
  ext.YRatio = PositiveNonZero(userRatio ? ratio->y : 0);
  const auto* manual = std::get_if<ManualSpacing>(&p.spacing);
  ext.XSpacing = PositiveNonZero(manual ? manual->x : 0);
  ext.YSpacing = PositiveNonZero(manual ? manual->y : 0);

  ext.StandBufferDist = p.buffer.distance;
  ext.SeparationUnitIndex = c["cbxUnits"].listIndex;
  ext.PlotOptionIndex = c["cbxPlotsOption"].listIndex;
  ext.BufferUnitIndex = c["cbxBufferUnits"].listIndex;
  ext.SpacingRatioOptionIndex = c["cbxSpacingRatioOptions"].listIndex;
  ext.OrientationFromField = orientationFromField_;
  const auto* constant = std::get_if<ConstantOrientation>(&p.orientation);
  ext.GridOrientation = constant ? constant->degrees : 0;
  ext.SavePointsWhere = c["cbxCreatePointsIn"].listIndex;
  ext.GetStartFromPointFC = c["chkGridStartAtHighest"].value;
  ext.ForceAnchorPoint = c["chkApplyAnchor"].value;
  ext.AnchorPointOption = c["cbxAnchorOption"].listIndex;
  ext.frmLayerIDReturn = p;
  ext.PlotLayoutForm = nullptr;

  AddFieldNameToHistory(ext, FieldHistory::StandID, c["lbxStandFields"].SelectedEntry());
  switch (c["cbxPlotsOption"].listIndex) {
    case 1: AddFieldNameToHistory(ext, FieldHistory::PlotCount, c["cbxPlotsField"].SelectedEntry()); break;
    case 3:
      AddFieldNameToHistory(ext, FieldHistory::XSpacing, c["cbxXSpacing"].SelectedEntry());
      AddFieldNameToHistory(ext, FieldHistory::YSpacing, c["cbxYSpacing"].SelectedEntry());
      break;
    default: break;
  }
  if (c["cbxCreatePointsIn"].listIndex == 1) {
    AddFieldNameToHistory(ext, FieldHistory::ExistingID, c["cbxExistingIDField"].SelectedEntry());
  }
}

void frmPlotLayout::RunAndClose(const PlotLayoutParameters& parameters, long maxPlots) {
  hidden = true;
  NotifyChanged();
  platform::host::Application& app = *application_;
  if (app.CurrentTool() == AnchorTool()) {
    app.SetCurrentTool("");
    app.RefreshCommandItem(AnchorTool());
  }
  extension_->SelToolEnabled = false;

  PlotRunOptions options;
  options.maxPlots = maxPlots;
  const PlotLayoutResult result = GeneratePlotLayout(app, *document_, parameters, options);
  DeleteGraphicsByName(document_->FocusMap(), kAnchorMarkerName);
  app.RefreshWindow();
  app.ShowReport({result.succeeded ? result.rtfReport : result.failureReport, result.caption,
                  platform::host::ReportWindow::Modeless});

  extension_->frmPlotLayoutReturn.reset();
  Form_Unload();
}

}  // namespace tarnwick
