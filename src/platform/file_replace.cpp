#include "platform/file_replace.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/errors.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "StagedFile";

[[noreturn]] void ThrowSystemError(const std::string& what, int error) {
  throw PlatformError(error == ENOENT || error == ENOTDIR ? kErrPathNotFound : kErrPermissionDenied, kSource,
                      what + ": " + std::strerror(error));
}

// A descriptor closed on every path out of scope.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Get() const { return fd_; }
  // Closes now and reports the close's own error (0 when none).
  int Close() {
    const int result = ::close(fd_);
    fd_ = -1;
    return result == 0 ? 0 : errno;
  }

 private:
  int fd_;
};

void WriteAll(int fd, std::string_view content, const std::string& path) {
  while (!content.empty()) {
    const ssize_t written = ::write(fd, content.data(), content.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError("Cannot write '" + path + "'", errno);
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string FolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

}  // namespace

StagedFile::StagedFile(std::string path, std::initializer_list<std::string_view> content) : path_(std::move(path)) {
  // A name of this process's own beside the target; the system applies the
  // user's file creation mask as for any new file.
  const std::string stem = path_ + ".partial-" + std::to_string(::getpid()) + "-";
  int fd = -1;
  for (int n = 0; fd < 0; ++n) {
    temporary_ = stem + std::to_string(n);
    fd = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0 && errno != EEXIST) {
      const int error = errno;
      temporary_.clear();
      ThrowSystemError("Cannot write '" + path_ + "'", error);
    }
  }
  Descriptor file(fd);
  try {
    for (const std::string_view piece : content) WriteAll(file.Get(), piece, path_);
    if (::fsync(file.Get()) != 0) ThrowSystemError("Cannot write '" + path_ + "'", errno);
    if (const int error = file.Close(); error != 0) ThrowSystemError("Cannot write '" + path_ + "'", error);
  } catch (...) {
    std::remove(temporary_.c_str());
    temporary_.clear();
    throw;
  }
}

StagedFile::~StagedFile() {
  if (!temporary_.empty()) std::remove(temporary_.c_str());
}

StagedFile::StagedFile(StagedFile&& other) noexcept
    : path_(std::move(other.path_)), temporary_(std::exchange(other.temporary_, std::string())) {}

StagedFile& StagedFile::operator=(StagedFile&& other) noexcept {
  if (this != &other) {
    if (!temporary_.empty()) std::remove(temporary_.c_str());
    path_ = std::move(other.path_);
    temporary_ = std::exchange(other.temporary_, std::string());
  }
  return *this;
}

void StagedFile::Publish() {
  if (temporary_.empty()) return;
  if (std::rename(temporary_.c_str(), path_.c_str()) != 0) ThrowSystemError("Cannot write '" + path_ + "'", errno);
  temporary_.clear();
  SyncPathToDisk(FolderOf(path_));
}

void ReplaceFile(const std::string& path, std::initializer_list<std::string_view> content) {
  StagedFile(path, content).Publish();
}

void SyncPathToDisk(const std::string& path) {
  Descriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (fd.Get() < 0) ThrowSystemError("Cannot write '" + path + "'", errno);
  if (::fsync(fd.Get()) != 0 && errno != EINVAL) ThrowSystemError("Cannot write '" + path + "'", errno);
}

}  // namespace tarnwick::platform
