#include "waypoints/create_waypoint_file.h"

#include <cmath>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "presentation/error_handling.h"
#include "support/file_operations.h"
#include "support/lookups.h"
#include "support/time_operations.h"
#include "waypoints/waypoint_record.h"
#include "waypoints/waypoint_report.h"

namespace tarnwick {

namespace {

// Number of points between two turns of the host's message loop: a
// hundredth of the points, rounded half to even.
long YieldInterval(std::int64_t points) { return static_cast<long>(std::nearbyint(static_cast<double>(points) / 100.0)); }

constexpr std::size_t kPointsPerBatch = 4096;
// A little more than a typical record, so that the text is seldom moved as
// it grows; pages reserved and never written cost no memory.
constexpr std::size_t kReservedBytesPerRecord = 64;

// Points read but not yet written: their coordinates and field values.
struct PointBatch {
  std::vector<platform::XY> xy;
  std::vector<std::vector<platform::Value>> values;
  void Clear() {
    xy.clear();
    values.clear();
  }
};

// "record 3 (Plot ID 'A,1', Stand ID 'North\nSide')", line breaks shown as \n.
std::string MisreadRecordText(std::int64_t record, const platform::Value& plotId, const platform::Value* standId) {
  auto shown = [](const platform::Value& value) {
    std::string text;
    for (const char c : platform::IsNull(value) ? std::string("<Null>") : platform::ValueToText(value)) {
      text += c == '\n' ? std::string("\\n") : c == '\r' ? std::string("\\r") : std::string(1, c);
    }
    return "'" + text + "'";
  };
  std::string text = "record " + std::to_string(record) + " (Plot ID " + shown(plotId);
  if (standId) text += ", Stand ID " + shown(*standId);
  return text + ")";
}

}  // namespace

WaypointResult CreateWaypointFile(platform::host::Application& application,
                                  const platform::host::MapDocument* document,
                                  const WaypointParameters& parameters) {
  WaypointResult result;
  auto& statusBar = application.GetStatusBar();
  try {
    const auto& featureClass = parameters.pointLayer.featureClass;
    if (!featureClass) {
      RaiseError(platform::kErrObjectNotSet, "CreateWaypointFile",
                 "The point layer '" + parameters.pointLayer.name + "' has no feature class.");
    }
    const int plotIdIndex = featureClass->FindField(parameters.plotIdField.name);
    const int standIdIndex = parameters.standIdField ? featureClass->FindField(parameters.standIdField->name) : -1;
    const int elevationIndex =
        parameters.elevationField ? featureClass->FindField(parameters.elevationField->name) : -1;
    if (plotIdIndex < 0) {
      RaiseError(platform::kErrInvalidProcedureCall, "CreateWaypointFile",
                 "The Plot ID field '" + parameters.plotIdField.name + "' is not in '" + featureClass->Name() + "'.");
    }

    const platform::SpatialReference target = CreateSpatialReferenceWGS84();
    const platform::SpatialReference source = featureClass->GetSpatialReference();
    const bool sameGeographicSystem =
        source.GeographicCoordinateSystem().FactoryCode() == target.GeographicCoordinateSystem().FactoryCode();
    const bool mustProject = source.FactoryCode() != target.FactoryCode();

    // A "selected" run with nothing selected converts every point.
    const auto selectedCount = static_cast<std::int64_t>(parameters.pointLayer.selection.size());
    const bool allPoints = parameters.convertAll || selectedCount == 0;
    std::int64_t total = 0;
    std::unique_ptr<platform::FeatureCursor> cursor;
    if (allPoints) {
      total = featureClass->FeatureCount();
      cursor = featureClass->Search();
    } else {
      cursor = featureClass->SearchOids(parameters.pointLayer.selection);
    }
    const std::int64_t points = allPoints ? total : selectedCount;

    statusBar.ShowProgressBar("Converting Points...", 0, static_cast<long>(points), 1, true);
    const long interval = YieldInterval(points);
    long sinceYield = 0;
    std::string text;
    text.reserve(static_cast<std::size_t>(points) * kReservedBytesPerRecord);
    PointBatch batch;
    // Points are projected a batch at a time, which costs far less than one
    // geometry at a time; records keep the order of the cursor.
    auto writeBatch = [&] {
      if (mustProject) {
        const auto* transformation = parameters.transformation ? &*parameters.transformation : nullptr;
        platform::ProjectPoints(batch.xy, source, target, transformation, parameters.direction);
      }
      for (std::size_t i = 0; i < batch.xy.size(); ++i) {
        const auto& values = batch.values[i];
        auto field = [&values](int index) {
          return index >= 0 ? &values.at(static_cast<std::size_t>(index)) : nullptr;
        };
        const platform::Value* standId = field(standIdIndex);
        AppendWaypointRecord(text, *field(plotIdIndex), batch.xy[i].y, batch.xy[i].x, field(elevationIndex), standId);
        text += "\r\n";
        if (HoldsRecordSeparator(*field(plotIdIndex)) || (standId && HoldsRecordSeparator(*standId))) {
          result.misreadRecords.push_back(MisreadRecordText(result.records + static_cast<std::int64_t>(i) + 1,
                                                            *field(plotIdIndex), standId));
        }
      }
      result.records += static_cast<std::int64_t>(batch.xy.size());
      batch.Clear();
    };
    while (auto feature = cursor->NextFeature()) {
      statusBar.Step();
      if (++sinceYield >= interval) {
        sinceYield = 0;
        application.DoEvents();
      }
      if (feature->shape.IsEmpty()) {
        RaiseError(platform::kErrObjectNotSet, "CreateWaypointFile",
                   "Point feature " + std::to_string(feature->oid) + " of '" + featureClass->Name() +
                       "' has no geometry.");
      }
      batch.xy.push_back(feature->shape.PointXY());
      batch.values.push_back(std::move(feature->values));
      if (batch.xy.size() == kPointsPerBatch) writeBatch();
    }
    writeBatch();
    if (allPoints && result.records != total) {
      RaiseError(platform::kErrDamagedData, "CreateWaypointFile",
                 "'" + featureClass->FullPath() + "' should give " + std::to_string(total) + " points, but only " +
                     std::to_string(result.records) + " could be read.");
    }

    WriteTextFile(application, parameters.outputPath, text, true);
    statusBar.HideProgressBar();

    WaypointReportItems items;
    items.pointLayer = parameters.pointLayer.name;
    items.plotIdField = parameters.plotIdField.name;
    if (parameters.standIdField) items.standIdField = parameters.standIdField->name;
    if (parameters.elevationField) items.elevationField = parameters.elevationField->name;
    items.allPoints = allPoints;
    items.total = total;
    items.selectedCount = selectedCount;
    items.sourceSpatialReference = source.Name();
    items.waypointSpatialReference = target.Name();
    items.transformation = parameters.transformation;
    items.direction = parameters.direction;
    items.sameGeographicSystem = sameGeographicSystem;
    const LocalTime now = LocalNow();
    items.completeTime = LongTimeText(now);
    items.completeDate = LongDateText(now);
    items.outputPath = parameters.outputPath;
    items.version = application.GetVersion();
    result.report = BuildWaypointReport(items);
  } catch (const platform::RunInterrupted&) {
    statusBar.HideProgressBar();
    throw;
  } catch (...) {
    statusBar.HideProgressBar();
    const ErrorLog log = HandleErrorAtEntryPoint("CreateWaypointFile", "..\\ConversionFunctions", &application, document);
    result.report.clear();
    result.errorText = log.text;
    result.errorLogPath = log.path;
    result.errorReason = log.reason;
  }
  return result;
}

}  // namespace tarnwick
