#pragma once
// The catalogue of named geographic transformations: for each, where it is
// meant to be used (a box and a text), the box's centre and an accuracy
// figure. The search ranks candidates with it; it holds neither parameters
// nor from/to systems, which stay with the platform.
#include <cstdint>
#include <span>
#include <string>

#include "support/lookups.h"

namespace tarnwick {

// One catalogue row; the members follow the row's ten columns in order.
struct CatalogueRow {
  std::string name;      // 0: the platform's name of the transformation
  std::string code;      // 1: factory code, decimal digits
  double west = 0;       // 2: area of use, decimal degrees
  double east = 0;       // 3
  double south = 0;      // 4
  double north = 0;      // 5
  double centreLon = 0;  // 6: stored, not computed at use
  double centreLat = 0;  // 7
  std::string accuracy;  // 8: a decimal number kept as text
  std::string area;      // 9: area of use in words
};

// Main collection: code text -> row. Reverse collection: name -> code.
// Keys are compared without regard to case.
using TransformColl = KeyedCollection<CatalogueRow>;
using TransformColl2 = KeyedCollection<std::int32_t>;

// Both are built once on first use and shared, immutable, afterwards.
const TransformColl& ReturnTransformColl();
const TransformColl2& ReturnTransformColl2();

// All rows in catalogue order.
std::span<const CatalogueRow> CatalogueRows();

}  // namespace tarnwick
