// The Plot Layout dialog's start from the host objects and the extension's
// settings, its layer and field lists, and its close.
#include <cmath>
#include <filesystem>

#include "platform/errors.h"
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "plot/plot_layout_checks.h"
#include "plot/plot_layout_dialog.h"
#include "shell/field_histories.h"
#include "plot/plot_texts.h"
#include "shell/extension.h"
#include "support/lookups.h"
#include "support/path_operations.h"
#include "support/text_operations.h"
#include "support/unique_names.h"

namespace tarnwick {

namespace {

constexpr long kPointLayers = 8;
constexpr long kPolygonLayers = 32;
constexpr const char* kSelectField = "<-- Select Field -->";

bool InHistory(clsExtension& extension, FieldHistory history, const platform::Field& field) {
  return NameInHistory(extension, history, field.name) ||
         (!field.alias.empty() && NameInHistory(extension, history, field.alias));
}

bool EndsWithSeparator(const std::string& path) {
  return !path.empty() && (path.back() == '/' || path.back() == '\\');
}

// The folder of the map document; the working folder when it has no file.
std::string DocumentFolder(const platform::host::MapDocument& document) {
  const std::string path = GetMxDocPath(document);
  if (path.empty()) return std::filesystem::current_path().string();
  return ReturnDir(GetFullFileString(path));
}

}  // namespace

frmPlotLayout::~frmPlotLayout() {
  if (extension_ && extension_->PlotLayoutForm == this) extension_->PlotLayoutForm = nullptr;
}

void frmPlotLayout::FormLoad() {
  const platform::host::Version version = application_->GetVersion();
  (*this)["lblToolVersion"].caption = "Tool Version " + std::to_string(version.major) + "." +
                                      std::to_string(version.minor) + "." + std::to_string(version.revision);
}

void frmPlotLayout::ArcApplication(const HostArray& hostArray) {
  application_ = &hostArray.application;
  document_ = &hostArray.document;
  extension_ = &hostArray.extension;
  SetErrorHost(application_, document_);
  AsEntryPoint("ArcApplication ", [&] {
    initializingForm_ = true;
    FormLoad();
    clsExtension& ext = *extension_;
    ext.PlotLayoutForm = this;
    ChooseStartOfOutput();

    std::string pointName;
    std::string polygonName;
    NoteTableOfContentsLayers(pointName, polygonName);
    ext.ShouldContinue = false;
    int polygonStart = 0;
    int pointStart = -1;
    FillLayerLists(pointName, polygonName, polygonStart, pointStart);
    (*this)["lbxStandFields"].entries.clear();
    (*this)["lbxStandFields"].listIndex = -1;
    FillLists();
    SetText("txtNumPlots", "");

    SetText("txtXRatio", NumberText(PositiveNonZero(ext.XRatio)));
    SetText("txtYRatio", NumberText(PositiveNonZero(ext.YRatio)));
    SetText("txtXSpacing", NumberText(PositiveNonZero(ext.XSpacing)));
    SetText("txtYSpacing", NumberText(PositiveNonZero(ext.YSpacing)));
    SetText("txtGridOrientation", "0");
    SetText("txtBuffer", NumberText(std::abs(ext.StandBufferDist)));
    SetText("txtGridStartingNumber", "");
    ShareControlPlaces();

    anchorToolActive_ = application_->CurrentTool() == AnchorTool();
    (*this)["imgButtonDown"].visible = anchorToolActive_;
    (*this)["imgButtonUp"].visible = !anchorToolActive_;

    // The stand choice as it stands without a layer.
    SetValue("optAll", 1);
    SetValue("optSel", 0);
    SetEnabled({"optAll", "optSel", "lblSelected"}, false);
    (*this)["lblAll"].caption = "All Stands (n = Unknown)";
    (*this)["lblSelected"].caption = "Unable to get selection...";

    auto startAt = [&](std::string_view list, long position) {
      const long count = static_cast<long>((*this)[list].entries.size());
      SetListIndex(list, position >= 0 && position < count ? static_cast<int>(position) : -1);
    };
    if (!polygonLayers_.empty()) startAt("lbxPolygons", polygonStart);
    if (!pointLayers_.empty()) startAt("cbxExistingPointLayer", pointStart);
    startAt("cbxAnchorLayer", -1);
    startAt("cbxUnits", ext.SeparationUnitIndex);
    startAt("cbxPlotsOption", ext.PlotOptionIndex);
    startAt("cbxBufferUnits", ext.BufferUnitIndex);
    startAt("cbxSpacingRatioOptions", ext.SpacingRatioOptionIndex);

    orientationFromField_ = ext.OrientationFromField;
    AdjustOrientiationVisibilities();
    SetText("txtGridOrientation", NumberText(ext.GridOrientation));
    SetText("txtBuffer", NumberText(ext.StandBufferDist));
    SetText("txtGridStartingNumber", "1");

    startAt("cbxCreatePointsIn", ext.SavePointsWhere);
    SetValue("chkGridStartAtHighest", ext.SavePointsWhere == 1 ? ext.GetStartFromPointFC : 0);
    SetValue("chkApplyAnchor", ext.ForceAnchorPoint);
    startAt("cbxAnchorOption", ext.AnchorPointOption);
    ImplementAnchorChoice();
    SetText("txtAnchorX", "");
    SetText("txtAnchorY", "");

    ext.frmLayerIDReturn.reset();
    initializingForm_ = false;
    CheckEnable();
  });
}

// The new output's first suggestion: "Plots" in the last output location,
// made unique there, or "Plots.shp" beside the map document when that
// location is gone or cannot be opened.
void frmPlotLayout::ChooseStartOfOutput() {
  const clsExtension& ext = *extension_;
  std::string directory = ext.DirectoryPath;
  bool inDataset = ext.IsFeatureDataset;
  std::string dataset = ext.FeatDatasetName;
  long kind = 0;
  std::string name = "Plots";
  if (ext.DirectoryType == "Shapefile" || ext.DirectoryType.empty()) {
    kind = 1;
    name = "Plots.shp";
  } else if (ext.DirectoryType == "File Geodatabase") {
    kind = 2;
  } else if (ext.DirectoryType == "Personal Geodatabase") {
    kind = 4;
  }

  std::shared_ptr<platform::Workspace> workspace;
  if (kind == 2 || kind == 4) {
    while (EndsWithSeparator(directory)) directory.pop_back();
    try {
      if (ExistFileDir(directory)) workspace = platform::Workspace::Open(directory);
    } catch (const platform::PlatformError&) {
      // An output location that can no longer be opened is treated as gone.
    }
  }
  if (!ExistFileDir(directory) || kind == 0 || ((kind == 2 || kind == 4) && !workspace)) {
    directory = DocumentFolder(*document_);
    kind = 1;
    name = "Plots.shp";
    inDataset = false;
    dataset.clear();
  }

  std::string path;
  if (kind == 1) {
    if (!EndsWithSeparator(directory)) directory += "/";
    path = MakeUniqueShapeFilename(directory + name);
    outputWorkspacePath_ = ReturnDir(path);
    outputName_ = ReturnFilename(path);
  } else {
    outputName_ = MakeUniqueGDBFeatureClassName(workspace, name);
    outputWorkspacePath_ = directory;
    path = directory + (inDataset ? "/" + dataset : std::string()) + "/" + outputName_;
  }
  outputKind_ = kind;
  outputInFeatureDataset_ = inDataset;
  outputFeatureDataset_ = dataset;
  SetText("txtOutput", path);
  (*this)["txtOutput"].selStart = static_cast<int>(path.size());
}

void frmPlotLayout::NoteTableOfContentsLayers(std::string& pointName, std::string& polygonName) {
  for (const auto& layer : document_->SelectedLayers()) {
    if (!layer.featureClass) continue;
    const platform::GeometryType type = layer.featureClass->ShapeType();
    if (type == platform::GeometryType::Point && pointName.empty()) pointName = layer.name;
    if (type == platform::GeometryType::Polygon && polygonName.empty()) polygonName = layer.name;
    if (!pointName.empty() && !polygonName.empty()) break;
  }
}

// Each list starts at the layer chosen in the table of contents; the start
// counts the layers gone through, readable or not.
void frmPlotLayout::FillLayerLists(const std::string& pointName, const std::string& polygonName, int& polygonStart,
                                   int& pointStart) {
  platform::host::Map& map = document_->FocusMap();
  polygonLayers_.clear();
  pointLayers_.clear();
  Control& polygons = (*this)["lbxPolygons"];
  polygons.entries.clear();
  int position = 0;
  for (const auto& layer : ReturnLayersByType(map, kPolygonLayers)) {
    if (layer.valid) {
      polygons.entries.push_back(layer.name);
      polygonLayers_.push_back(layer);
      if (layer.name == polygonName) polygonStart = position;
    }
    ++position;
  }
  std::vector<std::string> pointNames;
  position = 0;
  for (const auto& layer : ReturnLayersByType(map, kPointLayers)) {
    if (layer.valid) {
      pointNames.push_back(layer.name);
      pointLayers_.push_back(layer);
      if (layer.name == pointName) pointStart = position;
    }
    ++position;
  }
  (*this)["cbxAnchorLayer"].entries = pointNames;
  (*this)["cbxExistingPointLayer"].entries = pointNames;
}

std::optional<platform::FeatureLayer> frmPlotLayout::LayerInMap(const platform::FeatureLayer& listed) const {
  if (!listed.featureClass) return std::nullopt;
  for (auto& layer : document_->FocusMap().Layers()) {
    if (!layer.valid || !layer.featureClass) continue;
    if (layer.featureClass == listed.featureClass ||
        (layer.name == listed.name && layer.featureClass->FullPath() == listed.featureClass->FullPath())) {
      return layer;
    }
  }
  return std::nullopt;
}

void frmPlotLayout::lbxPolygons_Click() {
  (*this)["lbxPolygons"].backColor = kWhite;
  const int index = (*this)["lbxPolygons"].listIndex;
  if (index < 0 || index >= static_cast<int>(polygonLayers_.size())) return;
  const platform::FeatureLayer layer =
      LayerInMap(polygonLayers_[static_cast<std::size_t>(index)]).value_or(polygonLayers_[static_cast<std::size_t>(index)]);
  platform::FeatureClass& featureClass = *layer.featureClass;

  Control& standList = (*this)["lbxStandFields"];
  standList.entries.clear();
  standFields_.clear();
  numericFields_.clear();
  const std::vector<std::string> combos = {"cbxXSpacing", "cbxYSpacing", "cbxPlotsField", "cbxOrientationField"};
  for (const auto& combo : combos) (*this)[combo].entries = {kSelectField};

  clsExtension& ext = *extension_;
  int standStart = 0;
  int xStart = 0;
  int yStart = 0;
  int countStart = 0;
  int orientationStart = 0;
  for (const auto& field : FieldsOffered(featureClass.Fields(), kStandIdFieldKinds)) {
    standList.entries.push_back(field.name);
    standFields_.push_back(field);
    if (InHistory(ext, FieldHistory::StandID, field)) standStart = static_cast<int>(standFields_.size()) - 1;
    if (!FieldIsNumeric(field.type)) continue;
    for (const auto& combo : combos) (*this)[combo].entries.push_back(field.name);
    numericFields_.push_back(field);
    const int position = static_cast<int>(numericFields_.size());
    if (InHistory(ext, FieldHistory::XSpacing, field)) xStart = position;
    if (InHistory(ext, FieldHistory::YSpacing, field)) yStart = position;
    if (InHistory(ext, FieldHistory::PlotCount, field)) countStart = position;
    if (InHistory(ext, FieldHistory::Orientation, field)) orientationStart = position;
  }
  SetListIndex("lbxStandFields", standFields_.empty() ? -1 : standStart);
  SetListIndex("cbxXSpacing", xStart);
  SetListIndex("cbxYSpacing", yStart);
  SetListIndex("cbxPlotsField", countStart);
  SetListIndex("cbxOrientationField", orientationStart);

  const long count = static_cast<long>(featureClass.FeatureCount());
  const long selected = static_cast<long>(layer.selection.size());
  SetValue("optAll", selected == 0 ? 1 : 0);
  SetValue("optSel", selected > 0 ? 1 : 0);
  (*this)["optAll"].enabled = true;
  SetEnabled({"optSel", "lblSelected"}, selected > 0);
  (*this)["lblAll"].caption = "All Stands (n = " + std::to_string(count) + ")";
  (*this)["lblSelected"].caption = "Selected Stands (n = " + std::to_string(selected) + ")";
  CheckEnable();
}

void frmPlotLayout::cbxExistingPointLayer_Click() {
  (*this)["cbxExistingPointLayer"].backColor = kWhite;
  Control& idFields = (*this)["cbxExistingIDField"];
  idFields.entries = {"<-- Select Plot ID Field -->"};
  existingIdFields_.clear();
  const int index = (*this)["cbxExistingPointLayer"].listIndex;
  int start = 0;
  if (index >= 0 && index < static_cast<int>(pointLayers_.size())) {
    const platform::FeatureLayer& layer = pointLayers_[static_cast<std::size_t>(index)];
    for (const auto& field : FieldsOffered(layer.featureClass->Fields(), kNumericFieldKinds)) {
      idFields.entries.push_back(field.name);
      existingIdFields_.push_back(field);
      if (InHistory(*extension_, FieldHistory::ExistingID, field)) start = static_cast<int>(existingIdFields_.size());
    }
  }
  SetListIndex("cbxExistingIDField", start);
  CheckEnable();
}

void frmPlotLayout::Form_Unload() {
  if (unloaded) return;
  if (extension_) {
    // The anchor tool serves only an open dialog.
    if (extension_->PlotLayoutForm == this) DropAnchorTool();
    extension_->PlotLayoutForm = nullptr;
  }
  polygonLayers_.clear();
  pointLayers_.clear();
  standFields_.clear();
  numericFields_.clear();
  existingIdFields_.clear();
  unloaded = true;
  NotifyChanged();
}

}  // namespace tarnwick
