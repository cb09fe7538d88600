#pragma once
// The Stand ID transfer: finds for every plot point the stand that contains
// it and copies the Stand ID and the chosen stand attributes into fields of
// the point class, adding the fields it needs. Records the run in the point
// dataset's metadata and returns an RTF report.
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "standids/transfer_parameters.h"

namespace tarnwick {

// Works straight on the feature classes (selections play no part) and
// cannot be undone. The fields are added before any point is read and stay
// when a later step fails, as do the point updates flushed by then. A
// failure is shown through the error road and gives an empty report.
TransferStandIDResult ImportStandIDValues(platform::host::Application& application,
                                          const platform::host::MapDocument* document,
                                          const TransferStandIDParameters& parameters);

}  // namespace tarnwick
