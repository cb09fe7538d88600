// Reads the predefined transformation set straight from PROJ's SQLite
// database: the C API offers no way to list operations with their ESRI
// aliases and end systems in one pass.
#include "platform/predefined_transformations.h"

#include <proj.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <memory>
#include <string>

#include "platform/errors.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "PredefinedGeoTransformations";

// Operations of the EPSG and ESRI authorities between two geographic 2D
// systems; the name is the ESRI alias where one is recorded.
constexpr const char* kQuery = R"sql(
SELECT v.auth_name, v.code,
       COALESCE((SELECT a.alt_name FROM alias_name a
                 WHERE a.table_name = v.table_name AND a.auth_name = v.auth_name
                   AND a.code = v.code AND a.source = 'ESRI' LIMIT 1), v.name),
       v.source_crs_code, v.target_crs_code
FROM coordinate_operation_view v
JOIN geodetic_crs s ON s.auth_name = v.source_crs_auth_name AND s.code = v.source_crs_code
JOIN geodetic_crs t ON t.auth_name = v.target_crs_auth_name AND t.code = v.target_crs_code
WHERE v.auth_name IN ('EPSG', 'ESRI')
  AND s.type = 'geographic 2D' AND t.type = 'geographic 2D'
)sql";

struct DatabaseCloser {
  void operator()(sqlite3* db) const { sqlite3_close(db); }
};
struct StatementFinalizer {
  void operator()(sqlite3_stmt* st) const { sqlite3_finalize(st); }
};

std::optional<int> ToInt(const unsigned char* text) {
  if (text == nullptr) return std::nullopt;
  const std::string_view s(reinterpret_cast<const char*>(text));
  int value = 0;
  auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
  if (ec != std::errc() || end != s.data() + s.size()) return std::nullopt;
  return value;
}

std::string Text(const unsigned char* text) { return text ? reinterpret_cast<const char*>(text) : ""; }

std::vector<GeoTransformation> ReadSet() {
  const char* path = proj_context_get_database_path(nullptr);
  if (path == nullptr) throw PlatformError(kErrPlatform, kSource, "PROJ's database (proj.db) was not found");
  sqlite3* raw = nullptr;
  if (sqlite3_open_v2(path, &raw, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    sqlite3_close(raw);
    throw PlatformError(kErrPlatform, kSource, std::string("PROJ's database '") + path + "' cannot be opened");
  }
  std::unique_ptr<sqlite3, DatabaseCloser> db(raw);
  sqlite3_stmt* rawStatement = nullptr;
  if (sqlite3_prepare_v2(db.get(), kQuery, -1, &rawStatement, nullptr) != SQLITE_OK) {
    throw PlatformError(kErrPlatform, kSource,
                        std::string("PROJ's database '") + path + "' cannot be read: " + sqlite3_errmsg(db.get()));
  }
  std::unique_ptr<sqlite3_stmt, StatementFinalizer> statement(rawStatement);
  std::vector<GeoTransformation> set;
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    auto code = ToInt(sqlite3_column_text(statement.get(), 1));
    auto from = ToInt(sqlite3_column_text(statement.get(), 3));
    auto to = ToInt(sqlite3_column_text(statement.get(), 4));
    if (!code || !from || !to) continue;  // codes that are no numbers have no factory code
    GeoTransformation t;
    t.authority = Text(sqlite3_column_text(statement.get(), 0));
    t.code = *code;
    t.name = Text(sqlite3_column_text(statement.get(), 2));
    t.fromGcsCode = *from;
    t.toGcsCode = *to;
    set.push_back(std::move(t));
  }
  std::sort(set.begin(), set.end(), [](const GeoTransformation& a, const GeoTransformation& b) {
    if (a.authority != b.authority) return a.authority < b.authority;
    return a.code < b.code;
  });
  return set;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
         });
}

SpatialReference GeographicSystem(int code) {
  try {
    return SpatialReference::FromUserInput("EPSG:" + std::to_string(code));
  } catch (const PlatformError&) {
    return SpatialReference::FromUserInput("ESRI:" + std::to_string(code));
  }
}

}  // namespace

const std::vector<GeoTransformation>& PredefinedGeoTransformations() {
  static const std::vector<GeoTransformation> set = ReadSet();
  return set;
}

std::optional<GeoTransformation> FindPredefinedGeoTransformation(std::string_view nameOrCode) {
  const auto& set = PredefinedGeoTransformations();
  auto byName = std::find_if(set.begin(), set.end(),
                             [&](const GeoTransformation& t) { return EqualNoCase(t.name, nameOrCode); });
  if (byName != set.end()) return *byName;
  int code = 0;
  auto [end, ec] = std::from_chars(nameOrCode.data(), nameOrCode.data() + nameOrCode.size(), code);
  if (ec == std::errc() && end == nameOrCode.data() + nameOrCode.size()) {
    auto byCode = std::find_if(set.begin(), set.end(), [&](const GeoTransformation& t) { return t.code == code; });
    if (byCode != set.end()) return *byCode;
  }
  return std::nullopt;
}

void GetSpatialReferences(const GeoTransformation& transformation, SpatialReference& from, SpatialReference& to) {
  from = GeographicSystem(transformation.fromGcsCode);
  to = GeographicSystem(transformation.toGcsCode);
}

}  // namespace tarnwick::platform
