// A stored metadata document as it comes from a dataset: parsed, listed,
// read by every key the listing gives, edited and written back.
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "metadata/property_set.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string xml(reinterpret_cast<const char*>(data), size);
  try {
    auto document = tarnwick::metadata::MetadataPropertySet::FromXml(xml);
    std::vector<std::string> names;
    std::vector<tarnwick::metadata::PropertyValue> values;
    document.GetAllProperties(names, values);
    for (const auto& name : names) document.GetProperty(name);
    if (!names.empty()) {
      document.SetPropertyX(names.front(), "value");
      document.DeleteProperty(names.back());
    }
    document.SetPropertyX("dataIdInfo[0]/idPurp", "plots");
    document.Count();
    document.GetXml();
  } catch (const std::invalid_argument&) {
    // Not well-formed, or a listed name that is no key: refused, as it must be.
  }
  return 0;
}
