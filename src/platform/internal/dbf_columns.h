#pragma once
// Writes chosen columns straight into the fixed-width records of a
// shapefile's .dbf (platform-internal): in a shapefile session that is the
// class's staged copy, so the session's swap makes the writes final. Values
// are written in the form the shapefile driver gives them; a value the
// driver would have to convert or resize for (text beyond ASCII, whose
// encoding only the driver knows; a number wider than its field) is left
// to the driver: Write returns false.
#include <ogrsf_frmts.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarnwick::platform::internal {

class OgrFeatureClass;

class DbfColumns {
 public:
  // The class's .dbf ready for its fields at these OGR indexes, or nullopt
  // when one of them is not a text or number column of the file.
  static std::optional<DbfColumns> Open(OgrFeatureClass& featureClass, const std::vector<int>& ogrIndexes);
  ~DbfColumns();
  DbfColumns(DbfColumns&& other) noexcept;
  DbfColumns& operator=(DbfColumns&&) = delete;
  DbfColumns(const DbfColumns&) = delete;
  DbfColumns& operator=(const DbfColumns&) = delete;

  // Writes the fields' values (of values, at the same OGR indexes) into
  // record oid; false, with nothing written, when the driver must write it.
  bool Write(std::int64_t oid, const OGRFeature& values, const std::vector<int>& ogrIndexes);
  // Writes the records held; throws PlatformError when the file cannot
  // take them.
  void Finish();
  // Reads the file's layout again after the driver wrote to it.
  void Reload();

 private:
  struct Column {
    char type;
    std::size_t offset;  // in the record
    int width;
    int decimals;
  };
  DbfColumns(std::string path, int fd, std::vector<int> ogrIndexes);
  void ReadLayout();
  char* Record(std::int64_t oid);
  bool Format(const Column& column, const OGRFeature& values, int index, std::string& text) const;

  std::string path_;
  int fd_ = -1;
  std::vector<int> ogrIndexes_;
  std::vector<Column> columns_;  // of ogrIndexes_, in their order
  std::int64_t records_ = 0;
  std::size_t headerSize_ = 0;
  std::size_t recordSize_ = 0;
  std::vector<char> window_;  // records held, from windowFirst_
  std::int64_t windowFirst_ = 0;
  std::int64_t windowCount_ = 0;
  bool windowChanged_ = false;
  std::vector<std::string> formatted_;  // the values of one Write
};

}  // namespace tarnwick::platform::internal
