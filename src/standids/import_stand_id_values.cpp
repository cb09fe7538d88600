#include "standids/import_stand_id_values.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/edit_session.h"
#include "platform/errors.h"
#include "presentation/error_handling.h"
#include "standids/stand_index.h"
#include "standids/transfer_fields.h"
#include "standids/transfer_metadata.h"
#include "standids/transfer_texts.h"
#include "support/time_operations.h"

namespace tarnwick {

namespace {

// What a point gets where the stand has no value or no stand holds it: Null
// in a geodatabase or GeoPackage; a shapefile has no Null, so "" in text
// fields and -999 in all others.
platform::Value MissingValue(bool isShapefile, const FieldMapping& column, const platform::Field& pointField) {
  if (!isShapefile) return std::monostate{};
  if (column.pointFieldIsText) return std::string();
  if (pointField.type == platform::FieldType::Double || pointField.type == platform::FieldType::Single) {
    return -999.0;
  }
  return std::int64_t{-999};
}

std::string Location(const platform::FeatureClass& featureClass) {
  return featureClass.GetWorkspace()->PathName() + "/" + featureClass.Name();
}

}  // namespace

TransferStandIDResult ImportStandIDValues(platform::host::Application& application,
                                          const platform::host::MapDocument* document,
                                          const TransferStandIDParameters& parameters) {
  TransferStandIDResult result;
  auto& statusBar = application.GetStatusBar();
  try {
    const LocalTime start = LocalNow();
    const auto& stands = parameters.standLayer.featureClass;
    const auto& points = parameters.pointLayer.featureClass;
    if (!stands || !points) {
      RaiseError(platform::kErrObjectNotSet, "ImportStandIDValues", "The stand or the point layer has no feature class.");
    }
    platform::EditSession session;  // rolls back on every way out but the commit below
    session.Edit(points);
    const bool isShapefile = points->GetWorkspace()->Type() == 0;

    const TransferFields settled = SettleTransferFields(*stands, *points, parameters, isShapefile, result.addedFields);
    for (const auto& column : settled.columns) {
      const bool added = std::find(result.addedFields.begin(), result.addedFields.end(), column.pointFieldName) !=
                         result.addedFields.end();
      result.fields.push_back({column.standFieldName, column.pointFieldName, added});
    }

    const platform::SpatialReference standReference = stands->GetSpatialReference();
    const platform::SpatialReference pointReference = points->GetSpatialReference();
    TransferTextItems items;
    items.standLayer = parameters.standLayer.name;
    items.standIdField = parameters.standIdField.name;
    for (const auto& field : parameters.additionalFields) items.additionalFields.push_back(field.name);
    items.pointLayer = parameters.pointLayer.name;
    items.pointStandIdField = settled.columns.front().pointFieldName;
    items.standSpatialReference = standReference.Name();
    items.pointSpatialReference = pointReference.Name();
    items.transformation = parameters.transformation;
    items.direction = parameters.direction;


    // The overlay, in the stands' coordinates. References are compared by
    // factory code alone: two custom references (code 0) count as the same.
    const bool mustProject = standReference.FactoryCode() != pointReference.FactoryCode();
    std::vector<int> standIndexes;
    for (const auto& column : settled.columns) standIndexes.push_back(column.standFieldIndex);
    const StandIndex index(*stands, standIndexes);
    for (const auto& stand : index.RepairedStands()) {
      items.repairedStands.push_back(platform::ValueToText(stand.firstValue) + " (OID " + std::to_string(stand.oid) +
                                     ")");
    }
    std::vector<std::string> logLines = settled.logLines;
    logLines.push_back(TransferSummaryLogLine(items));
    const std::string processDescription = TransferProcessDescription(items, Location(*stands), Location(*points));
    const auto& pointFields = points->Fields();

    const std::int64_t count = points->FeatureCount();
    std::vector<int> targetIndexes;
    std::vector<platform::Value> missing;
    for (const auto& column : settled.columns) {
      targetIndexes.push_back(column.pointFieldIndex);
      missing.push_back(MissingValue(isShapefile, column, pointFields.at(static_cast<size_t>(column.pointFieldIndex))));
    }
    // Only the run's fields are written; the points are read in batches,
    // which are projected together.
    auto cursor = points->UpdateAttributes(targetIndexes);
    statusBar.ShowProgressBar("Importing Stand ID Values...", 0, static_cast<long>(count), 1, true);
    std::vector<platform::XY> xy;
    std::vector<platform::Value> values(settled.columns.size());
    std::int64_t n = 0;
    for (auto rows = cursor->NextBatch(); !rows.empty(); rows = cursor->NextBatch()) {
      xy.clear();
      for (const auto& row : rows) {
        if (!row.point) {
          RaiseError(platform::kErrObjectNotSet, "ImportStandIDValues",
                     "Point feature " + std::to_string(row.oid) + " of '" + points->Name() + "' has no geometry.");
        }
        xy.push_back(*row.point);
      }
      if (mustProject) {
        platform::ProjectPoints(xy, pointReference, standReference,
                                parameters.transformation ? &*parameters.transformation : nullptr,
                                parameters.direction);
      }
      for (size_t i = 0; i < rows.size(); ++i) {
        ++n;
        statusBar.Step();
        if (n % 100 == 0) application.DoEvents();
        const std::vector<platform::Value>* standValues = index.Find(xy[i].x, xy[i].y);
        if (standValues) ++result.pointsInStands;
        for (size_t c = 0; c < values.size(); ++c) {
          values[c] = standValues && !platform::IsNull((*standValues)[c]) ? (*standValues)[c] : missing[c];
        }
        cursor->Set(i, values);
        ++result.pointsUpdated;
      }
    }
    cursor.reset();
    if (n != count) {
      RaiseError(platform::kErrDamagedData, "ImportStandIDValues",
                 "'" + points->FullPath() + "' should give " + std::to_string(count) + " points, but only " +
                     std::to_string(n) + " could be read.");
    }

    WriteTransferMetadata(application, *points, processDescription, logLines);
    session.Commit();
    statusBar.HideProgressBar();

    result.report = BuildTransferReport(items, ReturnTimeElapsedRTF(start, LocalNow(), 8));
  } catch (const platform::RunInterrupted&) {
    statusBar.HideProgressBar();
    throw;
  } catch (...) {
    statusBar.HideProgressBar();
    const ErrorLog log = HandleErrorAtEntryPoint("ImportStandIDValues", "..\\TransferFunctions", &application, document);
    result.report.clear();
    result.errorText = log.text;
    result.errorLogPath = log.path;
    result.errorReason = log.reason;
  }
  return result;
}

}  // namespace tarnwick
