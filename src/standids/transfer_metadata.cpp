#include "standids/transfer_metadata.h"

#include <filesystem>
#include <string>

#include "metadata/contacts.h"
#include "metadata/document_io.h"
#include "metadata/geoprocessing_event.h"

namespace tarnwick {

std::string TransferToolSource() {
  std::error_code ec;
  const auto executable = std::filesystem::read_symlink("/proc/self/exe", ec);
  const std::string folder = ec ? std::filesystem::current_path(ec).string() : executable.parent_path().string();
  return "Import Stand ID tool in Tarnwick Extension 'Tarnwick Tools' [" + folder + "/Tarnwick.dll";
}

void WriteTransferMetadata(platform::host::Application& application, platform::FeatureClass& points,
                           const std::string& processDescription, const std::vector<std::string>& logLines) {
  auto& statusBar = application.GetStatusBar();
  statusBar.ShowProgressBar("Updating Metadata...", 0, static_cast<long>(logLines.size()) + 1, 1, true);

  metadata::LineageProcessStep step;
  step.description = processDescription;
  step.date = metadata::DateTime::Now();
  metadata::AddLineageProcessStep(points, step);
  metadata::SynchronizeMetadata(points);

  const std::string toolSource = TransferToolSource();
  for (const auto& line : logLines) {
    statusBar.Step();
    application.DoEvents();
    metadata::GeoprocessingEvent event;
    event.eventText = line;
    event.toolSource = toolSource;
    event.date = metadata::DateTime::Now();
    event.name = "ImportStandIDValues";
    metadata::AddGeoprocessingEvent(points, event);
  }
  statusBar.HideProgressBar();
}

}  // namespace tarnwick
