#include "platform/dataset_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/errors.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "DatasetLock";
namespace fs = std::filesystem;

std::string LockPathOf(const std::string& path) {
  fs::path target(path);
  while (!target.empty() && !target.has_filename()) target = target.parent_path();  // "x.gdb/" names x.gdb
  return (target.parent_path() / ("." + target.filename().string() + ".tarnwick-lock")).string();
}

// The process that wrote its number into the lock file, or "" when unknown.
std::string Holder(int fd) {
  char text[32] = {};
  const ssize_t read = ::pread(fd, text, sizeof text - 1, 0);
  return read > 0 ? std::string(text, static_cast<std::size_t>(read)) : std::string();
}

}  // namespace

DatasetLock DatasetLock::Acquire(const std::string& path) {
  const std::string lockPath = LockPathOf(path);
  // The holder removes the lock file on release; a lock taken on a file that
  // has just been removed (or replaced) protects nothing, so take it again.
  for (;;) {
    const int fd = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
      if (errno == EACCES || errno == EROFS || errno == EPERM) return DatasetLock();
      throw PlatformError(kErrPathNotFound, kSource,
                          "Cannot lock '" + path + "' for this run: " + std::strerror(errno));
    }
    DatasetLock lock;
    lock.fd_ = fd;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
      const std::string holder = Holder(fd);
      throw PlatformError(kErrDatasetInUse, kSource,
                          "'" + path + "' is in use by another run" +
                              (holder.empty() ? std::string() : " (process " + holder + ")") +
                              "; try again when it has finished");
    }
    struct stat held {
    }, named{};
    if (::fstat(fd, &held) == 0 && ::stat(lockPath.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
        held.st_dev == named.st_dev) {
      lock.lockPath_ = lockPath;
      const std::string pid = std::to_string(::getpid());
      // The number only improves another run's message; failing to write it is harmless.
      if (::ftruncate(fd, 0) == 0) {
        const ssize_t written = ::pwrite(fd, pid.data(), pid.size(), 0);
        static_cast<void>(written);
      }
      return lock;
    }
  }
}

DatasetLock::~DatasetLock() { Release(); }

DatasetLock::DatasetLock(DatasetLock&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)), lockPath_(std::move(other.lockPath_)) {}

DatasetLock& DatasetLock::operator=(DatasetLock&& other) noexcept {
  if (this != &other) {
    Release();
    fd_ = std::exchange(other.fd_, -1);
    lockPath_ = std::move(other.lockPath_);
  }
  return *this;
}

void DatasetLock::Release() {
  if (fd_ < 0) return;
  // Removed while still held, so that no other run locks the file in between.
  if (!lockPath_.empty()) ::unlink(lockPath_.c_str());
  ::close(fd_);
  fd_ = -1;
}

}  // namespace tarnwick::platform
