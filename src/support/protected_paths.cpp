#include "support/protected_paths.h"

#include <filesystem>

#include "support/text_operations.h"

namespace tarnwick {

namespace {

namespace fs = std::filesystem;

fs::path Canonical(const std::string& path) {
  std::error_code ec;
  const fs::path canonical = fs::weakly_canonical(fs::absolute(path, ec), ec);
  return ec ? fs::path(path).lexically_normal() : canonical;
}

bool Within(const fs::path& path, const fs::path& folder) {
  auto p = path.begin();
  for (auto f = folder.begin(); f != folder.end(); ++f, ++p) {
    if (p == path.end() || *p != *f) return false;
  }
  return true;
}

}  // namespace

std::string DatasetDestroyedBy(const std::string& path, const std::vector<std::string>& datasetFiles) {
  const fs::path target = Canonical(path);
  for (const auto& file : datasetFiles) {
    if (Within(target, Canonical(file))) return file;
  }
  return "";
}

bool IsSameClass(const std::string& workspaceA, const std::string& nameA, const std::string& workspaceB,
                 const std::string& nameB) {
  return Canonical(workspaceA) == Canonical(workspaceB) && EqualsIgnoreCase(nameA, nameB);
}

}  // namespace tarnwick
