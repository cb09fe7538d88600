#pragma once
// Code values of the metadata document: three-digit codes by index, and the
// contact address types.
#include <string>

namespace tarnwick::metadata {

// 1 to 13 give "001" to "013"; anything else an empty text.
std::string MaintenanceFrequencyCode(int index);
// 1 to 8 give "001" to "008"; anything else an empty text.
std::string ProgressStatusCode(int index);
// 1 to 15 give "001" to "015"; anything else an empty text.
std::string ContactRoleCode(int index);
// 1 "postal", 2 "physical", 3 "both"; anything else "skip".
std::string AddressTypeText(int index);
// The one address type index that leaves the attribute out altogether.
inline constexpr int kAddressTypeOmitted = 4;

}  // namespace tarnwick::metadata
