#include "support/unique_names.h"

#include "errors/error_road.h"
#include "platform/workspace.h"
#include "support/path_operations.h"

namespace tarnwick {

namespace {
constexpr char kModule[] = "MyGeneralOperations";

template <class Taken>
std::string FirstFreeNumbered(const BaseAndExtension& parts, Taken taken) {
  for (long n = 1;; ++n) {
    std::string candidate = parts.base + "_" + std::to_string(n) + parts.extension;
    if (!taken(candidate, parts.base + "_" + std::to_string(n))) return candidate;
  }
}
}  // namespace

bool CheckIfFeatureClassExists(const std::shared_ptr<platform::Workspace>& workspace, const std::string& name) {
  try {
    return workspace && workspace->NameExists(name);
  } catch (...) {
    return false;
  }
}

std::string MakeUniqueGDBFeatureClassName(const std::shared_ptr<platform::Workspace>& workspace,
                                          const std::string& name) {
  return Guarded("MakeUniqueGDBFeatureClassName", kModule, [&] {
    if (!CheckIfFeatureClassExists(workspace, name)) return name;
    for (long n = 1;; ++n) {
      std::string candidate = name + "_" + std::to_string(n);
      if (!CheckIfFeatureClassExists(workspace, candidate)) return candidate;
    }
  });
}

BaseAndExtension SplitShortExtension(const std::string& fullPath) {
  const auto dot = fullPath.rfind('.');
  if (dot != std::string::npos && dot + 5 >= fullPath.size()) {
    return {fullPath.substr(0, dot), fullPath.substr(dot)};
  }
  return {fullPath, ""};
}

std::string MakeUniquedBASEName(const std::string& fullPath) {
  return Guarded("MakeUniquedBASEName", kModule, [&] {
    if (!ExistFileDir(fullPath)) return fullPath;
    return FirstFreeNumbered(SplitShortExtension(fullPath),
                             [](const std::string& withExtension, const std::string&) { return ExistFileDir(withExtension); });
  });
}

std::string MakeUniqueShapeFilename(const std::string& fullPath) {
  return Guarded("MakeUniqueShapeFilename", kModule, [&] {
    const BaseAndExtension parts = SplitShortExtension(fullPath);
    if (!ExistFileDir(fullPath) && !ExistFileDir(parts.base)) return fullPath;
    return FirstFreeNumbered(parts, [](const std::string& withExtension, const std::string& withoutExtension) {
      return ExistFileDir(withExtension) || ExistFileDir(withoutExtension);
    });
  });
}

}  // namespace tarnwick
