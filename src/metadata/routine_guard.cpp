#include "metadata/routine_guard.h"

#include <iostream>

namespace tarnwick::metadata {

void ReportCurrentError(std::string_view routine, SourceLocation where) {
  try {
    HandleError(routine, kMetadataModule, where);
  } catch (const RoutineError& error) {
    std::cerr << error.Description() << '\n';
  } catch (const std::exception& error) {
    std::cerr << routine << ": " << error.what() << '\n';
  } catch (...) {
    std::cerr << routine << ": unknown error\n";
  }
}

}  // namespace tarnwick::metadata
