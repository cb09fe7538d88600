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
  // Stands without a shape are never found. Throws when a stand polygon is
  // invalid, naming the first offending stands.
  StandIndex(platform::FeatureClass& stands, const std::vector<int>& valueFieldIndexes);

  // The values of the first stand, in the stand class's feature order, whose
  // polygon contains the point or has it on its boundary; null when no
  // stand does. Taking the first in feature order gives the same answer as
  // searching the stand class for the point and keeping the first feature
  // the search yields, for points on shared boundaries and in overlaps too.
  const std::vector<platform::Value>* Find(double x, double y) const;

  size_t StandCount() const { return stands_.size(); }

 private:
  struct Stand {
    platform::Envelope envelope;
    platform::PreparedPolygon polygon;
    std::vector<platform::Value> values;
  };
  void BuildGrid();
  std::vector<Stand> stands_;  // in feature order
  platform::Envelope extent_;
  int columns_ = 0;
  int rows_ = 0;
  double cellWidth_ = 1;
  double cellHeight_ = 1;
  std::vector<std::vector<std::uint32_t>> cells_;  // stand positions, ascending
};

// OIDs of stands whose polygons are invalid (self-intersections, bad rings),
// in feature order.
std::vector<std::int64_t> FindInvalidStands(platform::FeatureClass& stands);

}  // namespace tarnwick
