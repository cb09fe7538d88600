#pragma once
// The Import Stand IDs command's driver: the Stand ID transfer run on the
// parameter set the dialog left in the extension.
#include <any>
#include <string>

#include "shell/host_array.h"

namespace tarnwick {

// parameters holds a TransferStandIDParameters; returns the report, empty
// when the run failed.
std::string RunImportStandIDValues(HostArray& host, const std::any& parameters);

}  // namespace tarnwick
