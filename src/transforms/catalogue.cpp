#include "transforms/catalogue.h"

#include <string>
#include <vector>

#include "presentation/error_handling.h"

namespace tarnwick {

namespace {

constexpr std::string_view kModule = "TransformFunctions";

struct RowLiteral {
  const char* name;
  const char* code;
  double west, east, south, north, centreLon, centreLat;
  const char* accuracy;
  const char* area;
};

// Generated from PROJ's database by tools/build_catalogue.py.
constexpr RowLiteral kRows[] = {
#include "transforms/catalogue_rows.inc"
};

std::vector<CatalogueRow> MakeRows() {
  std::vector<CatalogueRow> rows;
  rows.reserve(std::size(kRows));
  for (const auto& r : kRows) {
    rows.push_back({r.name, r.code, r.west, r.east, r.south, r.north, r.centreLon, r.centreLat, r.accuracy,
                    r.area});
  }
  return rows;
}

const std::vector<CatalogueRow>& Rows() {
  static const std::vector<CatalogueRow> rows = MakeRows();
  return rows;
}

[[noreturn]] void DuplicateKey(const std::string& key) {
  RaiseError(457, "TransformFunctions", "This key is already associated with an element of this collection: " + key);
}

}  // namespace

std::span<const CatalogueRow> CatalogueRows() { return Rows(); }

const TransformColl& ReturnTransformColl() {
  static const TransformColl coll = Guarded("ReturnTransformColl", kModule, [] {
    TransformColl built;
    for (const auto& row : Rows()) {
      if (!built.emplace(row.code, row).second) DuplicateKey(row.code);
    }
    return built;
  });
  return coll;
}

const TransformColl2& ReturnTransformColl2() {
  static const TransformColl2 coll = Guarded("ReturnTransformColl2", kModule, [] {
    TransformColl2 built;
    for (const auto& row : Rows()) {
      if (!built.emplace(row.name, static_cast<std::int32_t>(std::stol(row.code))).second) DuplicateKey(row.name);
    }
    return built;
  });
  return coll;
}

}  // namespace tarnwick
