#pragma once
// What a plot run records in its output's metadata document.
#include <string>

#include "support/time_operations.h"

namespace tarnwick::platform {
class FeatureClass;
namespace host {
class Application;
class MapDocument;
}  // namespace host
}  // namespace tarnwick::platform

namespace tarnwick {

struct PlotMetadataRequest {
  std::string purposeText;
  std::string parameterText;
  bool isNewFeatureClass = false;
  std::string standLayerName;
  std::string standFieldName;        // in the stand class
  std::string outputStandFieldName;  // in the output class
  std::string outputPlotFieldName;
  bool describeStandField = false;  // the stand field was made by this run
  bool describePlotField = false;   // the class was made by this run
  LocalTime now{};
};

// Writes the lineage step and history event of the run, and for a new class
// its abstract, keywords, contacts, dates, status and field descriptions.
// The routines' status texts are not looked at: metadata never fails a run.
void SetPlotLayoutMetadata(platform::FeatureClass& featureClass, const PlotMetadataRequest& request,
                           platform::host::Application& application, const platform::host::MapDocument* document);

// Where the tool says it lives, for the history event.
std::string PlotToolSource();

}  // namespace tarnwick
