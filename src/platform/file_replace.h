#pragma once
// Files written whole and put in place only once complete. The content goes
// to a temporary file beside the target, is forced to the disk and takes the
// target's name in one step, so a failure at any point (a full disk, a
// folder that cannot be written) leaves the old file or none, never part of
// one. Every write, flush and close is checked.
#include <initializer_list>
#include <string>
#include <string_view>

namespace tarnwick::platform {

class StagedFile {
 public:
  // Writes the pieces of content, in order, to a temporary file in path's
  // folder. Throws PlatformError naming path and the system's reason.
  StagedFile(std::string path, std::initializer_list<std::string_view> content);
  // Removes the temporary file unless it was published.
  ~StagedFile();
  StagedFile(StagedFile&& other) noexcept;
  StagedFile& operator=(StagedFile&& other) noexcept;
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  // Gives the file its name, replacing a file of that name. Throws
  // PlatformError when it cannot.
  void Publish();
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  std::string temporary_;  // empty once published
};

// Writes the file through a StagedFile and publishes it at once.
void ReplaceFile(const std::string& path, std::initializer_list<std::string_view> content);

// Forces a file, or a folder's entries, to the disk. Throws PlatformError
// naming the path and the reason.
void SyncPathToDisk(const std::string& path);

}  // namespace tarnwick::platform
