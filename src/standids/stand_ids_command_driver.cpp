#include "standids/stand_ids_command_driver.h"

#include "errors/error_road.h"
#include "platform/errors.h"
#include "standids/import_stand_id_values.h"

namespace tarnwick {

std::string RunImportStandIDValues(HostArray& host, const std::any& parameters) {
  const auto* transfer = std::any_cast<TransferStandIDParameters>(&parameters);
  if (!transfer) RaiseError(platform::kErrTypeMismatch, "..\\TransferFunctions", "Type mismatch");
  return ImportStandIDValues(host.application, &host.document, *transfer).report;
}

}  // namespace tarnwick
