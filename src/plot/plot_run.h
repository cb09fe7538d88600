#pragma once
// The Plot Layout tool's run: plots over every stand, written to a point
// feature class, with a report and the output's metadata.
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/workspace.h"
#include "plot/plot_count_estimate.h"
#include "plot/plot_layout_parameters.h"
#include "presentation/error_handling.h"
#include "support/time_operations.h"

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

struct PlotRunOptions {
  // The run's clock for the report's time lines and the metadata dates
  // (the local time now when empty).
  std::function<LocalTime()> clock;
  // The run fails rather than lay out more plots than this (see
  // plot_count_estimate.h for asking before the run).
  long maxPlots = kDefaultMaxPlots;
};

struct PlotLayoutResult {
  bool succeeded = false;
  std::string caption;        // "Analysis Complete:" or "Analysis Failed:"
  std::string rtfReport;      // the report of a finished run
  std::string failureReport;  // the plain-text report of a failed one
  std::string parameterText;
  std::string purposeText;
  std::shared_ptr<platform::FeatureClass> outputClass;
  bool newClass = false;
  long plotsWritten = 0;
  long standsDone = 0;    // stands gone through, including a failing one
  long standCount = 0;    // stands picked for the run
  std::string failedStandId;  // the stand the run failed at ("" before the stands)
  std::optional<ErrorLog> errorLog;  // of a failed run
};

// Runs the tool inside one edit session of the output's store, committed
// before the run declares success. A failure ends the run with the error
// road (message window and log file) and a failure report, and nothing of
// the run stays in the data: the plots written before it, a stand ID field
// added for the run and a new class are rolled back, and an output being
// replaced is still there. An interruption (platform::RunInterrupted) rolls
// back the same way and is thrown on to the caller.
PlotLayoutResult GeneratePlotLayout(platform::host::Application& application, platform::host::MapDocument& document,
                                    const PlotLayoutParameters& parameters, const PlotRunOptions& options = {});

}  // namespace tarnwick
