#include "platform/internal/shapefile_files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace tarnwick::platform::internal {

namespace {

namespace fs = std::filesystem;

// The endings of a class's files: those the driver removes with the class,
// and the metadata document beside it.
constexpr std::array<const char*, 12> kCompanionEndings = {".shp", ".shx", ".dbf", ".sbn", ".sbx", ".prj",
                                                           ".idm", ".ind", ".qix", ".cpg", ".qpj", ".shp.xml"};
constexpr std::uintmax_t kMainHeaderBytes = 100;
constexpr std::uint32_t kShapefileCode = 9994;

// The file folder/name + ending in any case of the ending, if it exists.
std::optional<fs::path> FindFile(const std::string& folder, const std::string& name, const std::string& ending) {
  const fs::path exact = fs::path(folder) / (name + ending);
  std::error_code ec;
  if (fs::is_regular_file(exact, ec)) return exact;
  std::string upper = ending;
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  const fs::path shouted = fs::path(folder) / (name + upper);
  if (fs::is_regular_file(shouted, ec)) return shouted;
  return std::nullopt;
}

struct Header {
  std::uintmax_t size = 0;
  std::array<unsigned char, 32> bytes{};
  bool complete = false;  // the file holds at least the bytes read
};

Header ReadHeader(const fs::path& path) {
  Header header;
  std::error_code ec;
  header.size = fs::file_size(path, ec);
  std::ifstream in(path, std::ios::binary);
  in.read(reinterpret_cast<char*>(header.bytes.data()), header.bytes.size());
  header.complete = in.gcount() == static_cast<std::streamsize>(header.bytes.size());
  return header;
}

std::uint32_t BigEndian32(const Header& h, std::size_t at) {
  return (std::uint32_t{h.bytes[at]} << 24) | (std::uint32_t{h.bytes[at + 1]} << 16) |
         (std::uint32_t{h.bytes[at + 2]} << 8) | std::uint32_t{h.bytes[at + 3]};
}
std::uint32_t LittleEndian32(const Header& h, std::size_t at) {
  return (std::uint32_t{h.bytes[at + 3]} << 24) | (std::uint32_t{h.bytes[at + 2]} << 16) |
         (std::uint32_t{h.bytes[at + 1]} << 8) | std::uint32_t{h.bytes[at]};
}
std::uint32_t LittleEndian16(const Header& h, std::size_t at) {
  return std::uint32_t{h.bytes[at + 1]} << 8 | h.bytes[at];
}

// A .shp or .shx: the shapefile code first and the file's own length (in
// 16-bit words) at byte 24.
std::string MainFileDamage(const fs::path& path) {
  const Header header = ReadHeader(path);
  const std::string file = "'" + path.string() + "'";
  if (!header.complete || header.size < kMainHeaderBytes || BigEndian32(header, 0) != kShapefileCode) {
    return file + " is not a shapefile file: it does not start with a shapefile header";
  }
  const std::uintmax_t declared = std::uintmax_t{BigEndian32(header, 24)} * 2;
  if (declared != header.size) {
    return file + " is damaged: it holds " + std::to_string(header.size) + " bytes, but its header says " +
           std::to_string(declared) + " (the file was cut short or not finished)";
  }
  return "";
}

}  // namespace

std::vector<std::string> ShapefileCompanions(const std::string& folder, const std::string& name) {
  std::vector<std::string> files;
  for (const char* ending : kCompanionEndings) {
    if (const auto found = FindFile(folder, name, ending)) files.push_back(found->string());
  }
  return files;
}

std::string ShapefileDamage(const std::string& folder, const std::string& name,
                            std::optional<std::int64_t> expectedRecords) {
  const auto shp = FindFile(folder, name, ".shp");
  if (!shp) return "'" + (fs::path(folder) / (name + ".shp")).string() + "' is missing";
  if (std::string damage = MainFileDamage(*shp); !damage.empty()) return damage;

  std::optional<std::int64_t> shapes;
  if (const auto shx = FindFile(folder, name, ".shx")) {
    if (std::string damage = MainFileDamage(*shx); !damage.empty()) return damage;
    const std::uintmax_t size = fs::file_size(*shx);
    if ((size - kMainHeaderBytes) % 8 != 0) return "'" + shx->string() + "' is damaged: its last entry is cut short";
    shapes = static_cast<std::int64_t>((size - kMainHeaderBytes) / 8);
  }

  std::optional<std::int64_t> records;
  if (const auto dbf = FindFile(folder, name, ".dbf")) {
    const Header header = ReadHeader(*dbf);
    if (!header.complete) return "'" + dbf->string() + "' is not a dBASE table: its header is incomplete";
    const std::uintmax_t count = LittleEndian32(header, 4);
    const std::uintmax_t headerBytes = LittleEndian16(header, 8);
    const std::uintmax_t recordBytes = LittleEndian16(header, 10);
    const std::uintmax_t needed = headerBytes + count * recordBytes;
    if (header.size < needed) {
      return "'" + dbf->string() + "' is damaged: it should hold " + std::to_string(count) + " records (" +
             std::to_string(needed) + " bytes) but has " + std::to_string(header.size) + " bytes";
    }
    records = static_cast<std::int64_t>(count);
  }

  if (shapes && records && *shapes != *records) {
    return "'" + shp->string() + "' is damaged: its index lists " + std::to_string(*shapes) +
           " shapes but its table holds " + std::to_string(*records) + " records";
  }
  const std::optional<std::int64_t> held = records ? records : shapes;
  if (expectedRecords && held && *held != *expectedRecords) {
    return "'" + shp->string() + "' is damaged: it holds " + std::to_string(*held) + " features instead of " +
           std::to_string(*expectedRecords);
  }
  return "";
}

}  // namespace tarnwick::platform::internal
