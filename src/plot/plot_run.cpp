#include "plot/plot_run.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "platform/edit_session.h"
#include "platform/errors.h"
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "plot/plot_metadata.h"
#include "plot/plot_module.h"
#include "plot/plot_output.h"
#include "plot/plot_points.h"
#include "plot/plot_texts.h"
#include "plot/plot_writer.h"
#include "plot/stand_preparation.h"
#include "support/lookups.h"
#include "support/number_text.h"

namespace tarnwick {

namespace {

struct ErrorFacts {
  long number = 0;
  std::string source;
  std::string description;
};

// Number, source and description of the exception being handled.
ErrorFacts CurrentErrorFacts() {
  try {
    throw;
  } catch (const RoutineError& e) {
    return {e.Number(), e.Source(), e.Description()};
  } catch (const platform::PlatformError& e) {
    return {e.Number(), e.Source(), e.what()};
  } catch (const std::exception& e) {
    return {platform::kErrPlatform, "", e.what()};
  } catch (...) {
    return {platform::kErrPlatform, "", "Unknown error"};
  }
}

std::unique_ptr<platform::FeatureCursor> PickStands(const StandsParameters& stands, bool& allStands, long& count) {
  platform::FeatureClass& standClass = *stands.layer.featureClass;
  allStands = stands.doAllStands || stands.layer.selection.empty();
  if (allStands) {
    count = static_cast<long>(standClass.FeatureCount());
    return standClass.Search();
  }
  count = static_cast<long>(stands.layer.selection.size());
  return standClass.SearchOids(stands.layer.selection);
}

const std::optional<platform::GeoTransformation> kNoTransformation;

// The lattice points a stand may have before the run's plot limit is
// certainly passed (the limit is checked again on the stand's plots).
std::size_t LatticePointLimit(long maxPlots, long plotsWritten) {
  return static_cast<std::size_t>(std::max(0L, maxPlots - plotsWritten)) * 4 + 1024;
}

}  // namespace

PlotLayoutResult GeneratePlotLayout(platform::host::Application& application, platform::host::MapDocument& document,
                                    const PlotLayoutParameters& parameters, const PlotRunOptions& options) {
  const auto clock = options.clock ? options.clock : std::function<LocalTime()>(LocalNow);
  PlotLayoutResult result;
  long line = 0;  // the step the run has reached, for the failure report
  try {
    line = __LINE__;
    platform::EditSession session;  // rolls back on every way out but the commit below
    const LocalTime start = clock();
    platform::host::StatusBar& statusBar = application.GetStatusBar();
    const StandsParameters& stands = parameters.stands;
    if (!stands.layer.featureClass) {
      RaiseError(platform::kErrObjectNotSet, std::string(kPlotModule),
                 "Object variable or With block variable not set (the stand layer '" + stands.layer.name +
                     "' has no feature class)");
    }
    platform::FeatureClass& standClass = *stands.layer.featureClass;
    const platform::SpatialReference standReference = standClass.GetSpatialReference();
    if (standReference.IsUnknown()) {
      RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule),
                 "The stand layer '" + stands.layer.name + "' has no spatial reference");
    }

    // The output, new or existing.
    line = __LINE__;
    PlotOutput output;
    const ExistingPlotLayer* existing = std::get_if<ExistingPlotLayer>(&parameters.output);
    if (existing) {
      output = OpenExistingPlotOutput(*existing, stands, parameters.firstPlotNumber, session);
    } else {
      output = OpenNewPlotOutput(application, std::get<NewPlotClass>(parameters.output), stands,
                                 parameters.firstPlotNumber, session);
    }
    result.outputClass = output.featureClass;
    result.newClass = output.isNew;
    platform::FeatureClass& outputClass = *output.featureClass;
    const platform::SpatialReference outputReference = outputClass.GetSpatialReference();
    const bool plotIdIsText = FieldIsString(outputClass.Fields().at(output.plotFieldIndex).type);

    PlotRunDescription run;
    run.standReferenceName = standReference.Name();
    run.outputDatasetName = output.datasetName;
    run.outputWorkspacePath = output.workspacePath;
    run.outputReferenceName = outputReference.Name();
    run.outputStandFieldName = output.standFieldName;
    run.firstPlotNumber = output.firstPlotNumber;
    std::string report = ReportOpening(parameters, run);
    result.parameterText = ParameterText(parameters, run);
    result.purposeText = PurposeText(parameters, run);

    // The stands, and how they meet the output.
    line = __LINE__;
    bool allStands = true;
    long standCount = 0;
    auto standCursor = PickStands(stands, allStands, standCount);
    result.standCount = standCount;
    FillReportMarks(report, StandSelectionText(allStands, standCount), StandSubReport(parameters));
    const bool reproject = standReference.FactoryCode() != outputReference.FactoryCode();
    const bool hasTransformation = existing && existing->transformation.has_value();
    const auto& transformation = existing ? existing->transformation : kNoTransformation;
    const auto direction = existing ? existing->direction : platform::TransformDirection::Forward;

    statusBar.ShowProgressBar("Generating Plots in Stands...", 0, standCount, 1, true);
    statusBar.SetPosition(0);
    PlotWriter writer(output, plotIdIsText);

    const auto* orientationField = std::get_if<OrientationFromField>(&parameters.orientation);
    double orientation = orientationField ? 0 : std::get<ConstantOrientation>(parameters.orientation).degrees;
    if (const std::string problem = NumberProblem(orientation, OrientationLimits()); !problem.empty()) {
      RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule),
                 "The grid orientation " + NumberText(orientation) + " " + problem);
    }
    long iterations = 0;
    std::vector<platform::XY> points;

    while (auto stand = standCursor->NextFeature()) {
      line = __LINE__;
      const platform::Value& standId = stand->values.at(stands.standIdFieldIndex);
      const std::string standIdForMessages = StandIdForMessages(standId);
      const long counter = ++result.standsDone;
      result.failedStandId = standIdForMessages;
      if (orientationField) {
        const platform::Value& value = stand->values.at(orientationField->fieldIndex);
        const std::string problem =
            StandNumberProblem(standIdForMessages, orientationField->field.name, value, StandNumberRole::Orientation);
        if (!problem.empty()) RaiseError(platform::kErrInvalidProcedureCall, std::string(kPlotModule), problem);
        if (!platform::IsNull(value)) orientation = platform::ValueToDouble(value);
      }
      statusBar.SetMessage("Generating Plots in Stands [Stand ID = " + standIdForMessages + ")");
      statusBar.Step();
      application.DoEvents();

      line = __LINE__;
      const platform::Geometry polygon =
          ReturnPreparedPolygon(std::move(stand->shape), parameters.buffer.distance, parameters.buffer.units,
                                reproject, hasTransformation, outputReference, direction, transformation);
      if (polygon.IsEmpty()) {
        line = __LINE__;
        const std::string id = platform::ValueToText(standId);  // a Null stand ID fails the run here
        report += NoteLine(counter, parameters.buffer.distance >= 0
                                        ? NoteBufferEliminated(id, parameters.buffer.distance)
                                        : NoteStandEmpty(id));
        continue;
      }

      line = __LINE__;
      const StandOriginContext originContext = PrepareStandOrigin(polygon, parameters.anchor, &document.FocusMap());
      const platform::XY origin = ReturnOriginPoint2(originContext, *stand, parameters.spacing, orientation,
                                                     parameters.units, kSpacingNotKnown, kSpacingNotKnown,
                                                     standIdForMessages);
      const platform::PreparedPolygon prepared(polygon);
      StandGrid grid{polygon, prepared, *stand, parameters.spacing, parameters.units, originContext, {},
                     standIdForMessages, LatticePointLimit(options.maxPlots, result.plotsWritten)};
      line = __LINE__;
      const StandPlots plots = ReturnPointCollectionOfPoints(grid, origin, orientation, iterations, points);

      line = __LINE__;
      const std::string id = platform::ValueToText(standId);  // a Null stand ID fails the run here
      if (plots.plotCountIsZero) {
        report += NoteLine(counter, NotePlotCountZero(id));
        continue;
      }
      report += NoteLine(counter, NotePlotCount(id, static_cast<long>(points.size()), iterations));
      if (orientationField) report += OrientationNoteLine(orientation);

      line = __LINE__;
      if (result.plotsWritten + static_cast<long>(points.size()) > options.maxPlots) {
        RaiseError(platform::kErrOverflow, std::string(kPlotModule),
                   "The run would lay out more than " + std::to_string(options.maxPlots) + " plots");
      }
      writer.WriteStand(points, polygon.SpatialRef(), standId);
      result.plotsWritten = writer.PlotsWritten();
    }
    result.failedStandId.clear();
    if (result.standsDone != standCount) {
      RaiseError(platform::kErrDamagedData, std::string(kPlotModule),
                 "The stand layer '" + stands.layer.name + "' should give " + std::to_string(standCount) +
                     " stands, but only " + std::to_string(result.standsDone) + " could be read");
    }

    line = __LINE__;
    statusBar.HideProgressBar();
    statusBar.SetPosition(0);

    const LocalTime end = clock();
    report += ReportClosing(ReturnTimeElapsedRTF(start, end, 16));
    PlotMetadataRequest request;
    request.purposeText = result.purposeText;
    request.parameterText = result.parameterText;
    request.isNewFeatureClass = output.isNew;
    request.standLayerName = stands.layer.name;
    request.standFieldName = stands.standIdField.name;
    request.outputStandFieldName = output.standFieldName;
    request.outputPlotFieldName = output.plotFieldName;
    request.describeStandField = output.standFieldAdded;
    request.describePlotField = output.isNew;
    request.now = end;
    try {
      SetPlotLayoutMetadata(outputClass, request, application, &document);
    } catch (...) {
      // Metadata is a record of the run, not part of it: a failure there
      // leaves the plots and the report as they are.
    }

    // The run succeeds only once its plots, fields and metadata are saved.
    line = __LINE__;
    session.Commit();
    if (output.isNew) {
      platform::FeatureLayer layer;
      layer.name = output.datasetName;
      layer.featureClass = output.featureClass;
      document.FocusMap().AddLayer(std::move(layer));
    }
    result.rtfReport = std::move(report);
    result.caption = "Analysis Complete:";
    result.succeeded = true;
  } catch (const platform::RunInterrupted&) {
    throw;
  } catch (...) {
    const ErrorFacts facts = CurrentErrorFacts();
    result.errorLog = HandleErrorAtEntryPoint("GeneratePlotLayout", kPlotModule, &application, &document, line);
    result.failureReport = FailureReportText(line, facts.number, facts.source, facts.description);
    result.caption = "Analysis Failed:";
    result.succeeded = false;
  }
  return result;
}

}  // namespace tarnwick
