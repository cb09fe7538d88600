#pragma once
// Records a Stand ID transfer in the point dataset's metadata: one process
// step with the description, then one lineage process record per log line.
#include <string>
#include <vector>

#include "platform/host/application.h"
#include "platform/workspace.h"

namespace tarnwick {

void WriteTransferMetadata(platform::host::Application& application, platform::FeatureClass& points,
                           const std::string& processDescription, const std::vector<std::string>& logLines);

// "Import Stand ID tool in Tarnwick Extension 'Tarnwick Tools' [" + the
// program's folder + "/Tarnwick.dll"; the bracket is never closed.
std::string TransferToolSource();

}  // namespace tarnwick
