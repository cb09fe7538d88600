#pragma once
// The Stand ID transfer: finds for every plot point the stand that contains
// it and copies the Stand ID and the chosen stand attributes into fields of
// the point class, adding the fields it needs. Records the run in the point
// dataset's metadata and returns an RTF report.
#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "standids/transfer_parameters.h"

namespace tarnwick {

// Works straight on the feature classes (selections play no part), inside
// one edit session of the point class's store that is committed only once
// every point and the metadata are written: a failure leaves the points as
// they were, without the fields the run added. A failure is shown through
// the error road and gives an empty report; an interruption
// (platform::RunInterrupted) rolls back the same way and is thrown on.
TransferStandIDResult ImportStandIDValues(platform::host::Application& application,
                                          const platform::host::MapDocument* document,
                                          const TransferStandIDParameters& parameters);

}  // namespace tarnwick
