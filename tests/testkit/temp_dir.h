#pragma once
// A fresh folder under the system's temp directory, removed with its contents.
#include <filesystem>
#include <string>

namespace tarnwick::testkit {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::filesystem::path& path() const { return path_; }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::filesystem::path& path);

}  // namespace tarnwick::testkit
