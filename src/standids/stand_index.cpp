#include "standids/stand_index.h"

#include <algorithm>
#include <cmath>

#include "platform/errors.h"
#include "presentation/error_handling.h"

namespace tarnwick {

StandIndex::StandIndex(platform::FeatureClass& stands, const std::vector<int>& valueFieldIndexes) {
  Guarded("StandIndex", "..\\TransferFunctions", [&] {
    auto cursor = stands.Search();
    while (auto feature = cursor->NextFeature()) {
      if (feature->shape.IsEmpty()) continue;
      std::vector<platform::Value> values;
      values.reserve(valueFieldIndexes.size());
      for (int index : valueFieldIndexes) values.push_back(feature->values.at(static_cast<size_t>(index)));
      platform::Geometry shape = std::move(feature->shape);
      platform::PreparedPolygon polygon(shape);
      // Most stands are one plain ring; only the others need GEOS's verdict.
      if (!polygon.PlainlyValid() && !shape.IsKnownSimple()) {
        repaired_.push_back({feature->oid, values.empty() ? platform::Value{} : values.front()});
        shape = shape.Simplify();
        if (shape.IsEmpty()) continue;
        polygon = platform::PreparedPolygon(shape);
      }
      envelopes_.push_back(shape.GetEnvelope());
      stands_.push_back(Stand{std::move(polygon), std::move(values)});
    }
    BuildGrid();
  });
}

void StandIndex::BuildGrid() {
  for (const auto& envelope : envelopes_) {
    if (extent_.empty) {
      extent_ = envelope;
      extent_.empty = false;
      continue;
    }
    extent_.xMin = std::min(extent_.xMin, envelope.xMin);
    extent_.yMin = std::min(extent_.yMin, envelope.yMin);
    extent_.xMax = std::max(extent_.xMax, envelope.xMax);
    extent_.yMax = std::max(extent_.yMax, envelope.yMax);
  }
  if (stands_.empty()) return;
  // About one cell per stand, shaped like the extent.
  const double width = std::max(extent_.Width(), 1e-9);
  const double height = std::max(extent_.Height(), 1e-9);
  const double cells = static_cast<double>(stands_.size());
  columns_ = std::clamp(static_cast<int>(std::ceil(std::sqrt(cells * width / height))), 1, 4096);
  rows_ = std::clamp(static_cast<int>(std::ceil(cells / columns_)), 1, 4096);
  cellWidth_ = width / columns_;
  cellHeight_ = height / rows_;
  auto column = [this](double x) { return std::clamp(static_cast<int>(std::floor((x - extent_.xMin) / cellWidth_)), 0, columns_ - 1); };
  auto row = [this](double y) { return std::clamp(static_cast<int>(std::floor((y - extent_.yMin) / cellHeight_)), 0, rows_ - 1); };
  // Each stand's cells, visited once to count and once to fill.
  auto forEachCell = [&](const platform::Envelope& e, auto visit) {
    for (int r = row(e.yMin); r <= row(e.yMax); ++r) {
      for (int c = column(e.xMin); c <= column(e.xMax); ++c) {
        visit(static_cast<size_t>(r) * static_cast<size_t>(columns_) + static_cast<size_t>(c));
      }
    }
  };
  cellStart_.assign(static_cast<size_t>(columns_) * static_cast<size_t>(rows_) + 2, 0);
  for (const auto& envelope : envelopes_) forEachCell(envelope, [this](size_t cell) { ++cellStart_[cell + 2]; });
  for (size_t cell = 2; cell < cellStart_.size(); ++cell) cellStart_[cell] += cellStart_[cell - 1];
  cellStands_.resize(cellStart_.back());
  for (std::uint32_t i = 0; i < envelopes_.size(); ++i) {
    forEachCell(envelopes_[i], [&](size_t cell) { cellStands_[cellStart_[cell + 1]++] = i; });
  }
  cellStart_.pop_back();
}

const std::vector<platform::Value>* StandIndex::Find(double x, double y) const {
  if (stands_.empty() || x < extent_.xMin || x > extent_.xMax || y < extent_.yMin || y > extent_.yMax) return nullptr;
  const int c = std::clamp(static_cast<int>(std::floor((x - extent_.xMin) / cellWidth_)), 0, columns_ - 1);
  const int r = std::clamp(static_cast<int>(std::floor((y - extent_.yMin) / cellHeight_)), 0, rows_ - 1);
  const size_t cell = static_cast<size_t>(r) * static_cast<size_t>(columns_) + static_cast<size_t>(c);
  // Candidates are in ascending feature order, so the first hit is the first stand.
  for (size_t k = cellStart_[cell]; k < cellStart_[cell + 1]; ++k) {
    const std::uint32_t i = cellStands_[k];
    const auto& e = envelopes_[i];
    if (x < e.xMin || x > e.xMax || y < e.yMin || y > e.yMax) continue;
    if (stands_[i].polygon.Covers(x, y)) return &stands_[i].values;
  }
  return nullptr;
}

}  // namespace tarnwick
