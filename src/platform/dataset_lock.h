#pragma once
// One run at a time per dataset. A run that changes a dataset holds its lock
// for the whole run: an advisory lock on a small file beside the dataset
// (".NAME.tarnwick-lock"), which the system releases when the run ends in
// any way, a crash included. The lock file is removed by its holder.
#include <string>

namespace tarnwick::platform {

class DatasetLock {
 public:
  // Takes the lock of the dataset at path (a shapefile's .shp, a .gpkg file,
  // a .gdb folder or a waypoint file; it need not exist yet). Throws
  // PlatformError kErrDatasetInUse, saying that the dataset is in use and by
  // which process, when another run holds it. Where the folder cannot be
  // written the run cannot change the dataset either, and no lock is needed.
  static DatasetLock Acquire(const std::string& path);

  DatasetLock() = default;
  ~DatasetLock();
  DatasetLock(DatasetLock&& other) noexcept;
  DatasetLock& operator=(DatasetLock&& other) noexcept;
  DatasetLock(const DatasetLock&) = delete;
  DatasetLock& operator=(const DatasetLock&) = delete;

  bool Held() const { return fd_ >= 0; }

 private:
  void Release();
  int fd_ = -1;
  std::string lockPath_;
};

}  // namespace tarnwick::platform
