#include "metadata/code_tables.h"

#include <fmt/format.h>

namespace tarnwick::metadata {

namespace {

std::string ThreeDigitCode(int index, int last) {
  if (index < 1 || index > last) return "";
  return fmt::format("{:03}", index);
}

}  // namespace

std::string MaintenanceFrequencyCode(int index) { return ThreeDigitCode(index, 13); }
std::string ProgressStatusCode(int index) { return ThreeDigitCode(index, 8); }
std::string ContactRoleCode(int index) { return ThreeDigitCode(index, 15); }

std::string AddressTypeText(int index) {
  switch (index) {
    case 1: return "postal";
    case 2: return "physical";
    case 3: return "both";
    default: return "skip";
  }
}

}  // namespace tarnwick::metadata
