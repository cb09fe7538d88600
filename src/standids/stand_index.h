#pragma once
// The stands of a transfer held for fast point lookups: one prepared polygon
// per stand and a grid of stand envelopes, built once per run.
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/field.h"
#include "platform/geometry.h"
#include "platform/workspace.h"

namespace tarnwick {

class StandIndex {
 public:
  // Reads every stand of the class with the values of the given fields.
  // Stands without a shape are never found. A stand whose polygon is not
  // valid (hand-digitised rings cross, touch themselves or run the wrong
  // way) is tested against a repaired copy and listed in RepairedStands().
  StandIndex(platform::FeatureClass& stands, const std::vector<int>& valueFieldIndexes);

  // The values of the first stand, in the stand class's feature order, whose
  // polygon contains the point or has it on its boundary; null when no
  // stand does. Taking the first in feature order gives the same answer as
  // searching the stand class for the point and keeping the first feature
  // the search yields, for points on shared boundaries and in overlaps too.
  const std::vector<platform::Value>* Find(double x, double y) const;

  size_t StandCount() const { return stands_.size(); }

  struct RepairedStand {
    std::int64_t oid;
    platform::Value firstValue;  // of the first value field (the Stand ID)
  };
  // The stands tested against a repaired copy, in feature order.
  const std::vector<RepairedStand>& RepairedStands() const { return repaired_; }

 private:
  struct Stand {
    platform::PreparedPolygon polygon;
    std::vector<platform::Value> values;
  };
  void BuildGrid();
  std::vector<Stand> stands_;  // in feature order
  // The stands' envelopes, apart from the stands so that passing over a
  // candidate reads a small array.
  std::vector<platform::Envelope> envelopes_;
  std::vector<RepairedStand> repaired_;
  platform::Envelope extent_;
  int columns_ = 0;
  int rows_ = 0;
  double cellWidth_ = 1;
  double cellHeight_ = 1;
  // The stand positions of cell c are cellStands_[cellStart_[c]] up to
  // cellStands_[cellStart_[c + 1]], ascending.
  std::vector<size_t> cellStart_;
  std::vector<std::uint32_t> cellStands_;
};

}  // namespace tarnwick
