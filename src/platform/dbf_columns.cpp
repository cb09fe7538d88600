// Column writes into a .dbf's fixed-width records, a window of records at a
// time (the records arrive in file order), read and written with pread and
// pwrite beside the driver's own handle. The driver has written out what it
// holds before the first read here, and writes into the file itself only
// between a Finish and a Reload.
#include "platform/internal/dbf_columns.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <utility>

#include "platform/errors.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "ShapefileEdit";
constexpr std::size_t kWindowBytes = 1 << 20;
constexpr std::size_t kHeaderStart = 32;  // field descriptors follow the file header
constexpr std::size_t kDescriptorSize = 32;

std::uint32_t Little(const unsigned char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = count - 1; i >= 0; --i) value = (value << 8) | bytes[i];
  return value;
}

[[noreturn]] void ThrowWriteFailure(const std::string& path) {
  const int error = errno != 0 ? errno : ENOSPC;  // a short write is a full disk
  throw PlatformError(kErrPlatform, kSource, "Cannot write '" + path + "': " + std::strerror(error));
}

bool IsAscii(const char* text) {
  for (; *text != '\0'; ++text) {
    if (static_cast<unsigned char>(*text) >= 0x80) return false;
  }
  return true;
}

}  // namespace

DbfColumns::DbfColumns(std::string path, int fd, std::vector<int> ogrIndexes)
    : path_(std::move(path)), fd_(fd), ogrIndexes_(std::move(ogrIndexes)) {}

DbfColumns::DbfColumns(DbfColumns&& other) noexcept
    : path_(std::move(other.path_)),
      fd_(std::exchange(other.fd_, -1)),
      ogrIndexes_(std::move(other.ogrIndexes_)),
      columns_(std::move(other.columns_)),
      records_(other.records_),
      headerSize_(other.headerSize_),
      recordSize_(other.recordSize_),
      window_(std::move(other.window_)),
      windowFirst_(other.windowFirst_),
      windowCount_(other.windowCount_),
      windowChanged_(std::exchange(other.windowChanged_, false)) {}

DbfColumns::~DbfColumns() {
  if (fd_ >= 0) ::close(fd_);
}

std::optional<DbfColumns> DbfColumns::Open(OgrFeatureClass& featureClass, const std::vector<int>& ogrIndexes) {
  std::filesystem::path path = featureClass.StorageFullPath();
  path.replace_extension(".dbf");
  if (!std::filesystem::exists(path)) path.replace_extension(".DBF");
  {
    QuietGdalErrors quiet;
    if (featureClass.Layer().SyncToDisk() != OGRERR_NONE) {
      ThrowGdalError(kSource, "Cannot write '" + featureClass.StorageFullPath() + "'");
    }
  }
  const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  DbfColumns columns(path.string(), fd, ogrIndexes);
  columns.ReadLayout();
  OGRFeatureDefn* defn = featureClass.Layer().GetLayerDefn();
  if (columns.columns_.size() != ogrIndexes.size()) return std::nullopt;
  for (std::size_t i = 0; i < ogrIndexes.size(); ++i) {
    const OGRFieldType type = defn->GetFieldDefn(ogrIndexes[i])->GetType();
    const char dbfType = columns.columns_[i].type;
    const bool text = dbfType == 'C' && type == OFTString;
    const bool number = (dbfType == 'N' || dbfType == 'F') && (type == OFTInteger || type == OFTInteger64 || type == OFTReal);
    if (!text && !number) return std::nullopt;
  }
  return columns;
}

void DbfColumns::ReadLayout() {
  unsigned char header[kHeaderStart];
  if (::pread(fd_, header, sizeof header, 0) != static_cast<ssize_t>(sizeof header)) {
    throw PlatformError(kErrDamagedData, kSource, "'" + path_ + "' has no complete header");
  }
  records_ = Little(header + 4, 4);
  headerSize_ = Little(header + 8, 2);
  recordSize_ = Little(header + 10, 2);
  std::vector<unsigned char> descriptors(headerSize_ > kHeaderStart ? headerSize_ - kHeaderStart : 0);
  if (::pread(fd_, descriptors.data(), descriptors.size(), kHeaderStart) != static_cast<ssize_t>(descriptors.size())) {
    throw PlatformError(kErrDamagedData, kSource, "'" + path_ + "' has no complete header");
  }
  std::vector<Column> all;
  std::size_t offset = 1;  // after the deletion flag
  for (std::size_t at = 0; at + kDescriptorSize <= descriptors.size() && descriptors[at] != 0x0D; at += kDescriptorSize) {
    const Column column{static_cast<char>(descriptors[at + 11]), offset, descriptors[at + 16], descriptors[at + 17]};
    all.push_back(column);
    offset += static_cast<std::size_t>(column.width);
  }
  columns_.clear();
  for (int index : ogrIndexes_) {
    if (index < 0 || static_cast<std::size_t>(index) >= all.size()) return;
    columns_.push_back(all[static_cast<std::size_t>(index)]);
  }
  if (offset != recordSize_) columns_.clear();
}

void DbfColumns::Reload() {
  window_.clear();
  windowCount_ = 0;
  ReadLayout();
  if (columns_.size() != ogrIndexes_.size()) {
    throw PlatformError(kErrDamagedData, kSource, "'" + path_ + "' lost the columns being written");
  }
}

char* DbfColumns::Record(std::int64_t oid) {
  if (oid < 0 || oid >= records_) return nullptr;
  if (oid < windowFirst_ || oid >= windowFirst_ + windowCount_) {
    Finish();
    windowFirst_ = oid;
    windowCount_ = std::min<std::int64_t>(records_ - oid, std::max<std::size_t>(kWindowBytes / recordSize_, 1));
    window_.resize(static_cast<std::size_t>(windowCount_) * recordSize_);
    const auto at = static_cast<off_t>(headerSize_ + static_cast<std::size_t>(oid) * recordSize_);
    if (::pread(fd_, window_.data(), window_.size(), at) != static_cast<ssize_t>(window_.size())) {
      windowCount_ = 0;
      throw PlatformError(kErrDamagedData, kSource, "'" + path_ + "' ends before record " + std::to_string(oid));
    }
  }
  return window_.data() + static_cast<std::size_t>(oid - windowFirst_) * recordSize_;
}

bool DbfColumns::Format(const Column& column, const OGRFeature& values, int index, std::string& text) const {
  if (!values.IsFieldSetAndNotNull(index)) {
    text.assign(static_cast<std::size_t>(column.width), column.type == 'C' ? ' ' : '*');
    return true;
  }
  switch (values.GetFieldDefnRef(index)->GetType()) {
    case OFTInteger:
    case OFTInteger64: text = fmt::format("{:>{}}", values.GetFieldAsInteger64(index), column.width); break;
    case OFTReal:
      text = fmt::format("{:>{}.{}f}", values.GetFieldAsDouble(index), column.width, column.decimals);
      break;
    default: {
      // Longer text is cut to the field's width, as the driver cuts it.
      const char* value = values.GetFieldAsString(index);
      if (!IsAscii(value)) return false;
      text = value;
      text.resize(static_cast<std::size_t>(column.width), ' ');
      return true;
    }
  }
  return text.size() <= static_cast<std::size_t>(column.width);
}

bool DbfColumns::Write(std::int64_t oid, const OGRFeature& values, const std::vector<int>& ogrIndexes) {
  formatted_.resize(columns_.size());
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (!Format(columns_[i], values, ogrIndexes[i], formatted_[i])) return false;
  }
  char* record = Record(oid);
  if (record == nullptr) {
    throw PlatformError(kErrPlatform, kSource, "'" + path_ + "' has no record " + std::to_string(oid));
  }
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    std::memcpy(record + columns_[i].offset, formatted_[i].data(), formatted_[i].size());
  }
  windowChanged_ = true;
  return true;
}

void DbfColumns::Finish() {
  if (!windowChanged_) return;
  const auto at = static_cast<off_t>(headerSize_ + static_cast<std::size_t>(windowFirst_) * recordSize_);
  errno = 0;
  if (::pwrite(fd_, window_.data(), window_.size(), at) != static_cast<ssize_t>(window_.size())) ThrowWriteFailure(path_);
  windowChanged_ = false;
  // The date of the last update, as the driver keeps it.
  const std::time_t now = std::time(nullptr);
  std::tm today{};
  ::localtime_r(&now, &today);
  const unsigned char date[3] = {static_cast<unsigned char>(today.tm_year), static_cast<unsigned char>(today.tm_mon + 1),
                                 static_cast<unsigned char>(today.tm_mday)};
  if (::pwrite(fd_, date, sizeof date, 1) != static_cast<ssize_t>(sizeof date)) ThrowWriteFailure(path_);
}

}  // namespace tarnwick::platform::internal
