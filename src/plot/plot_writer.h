#pragma once
// Writes numbered plot points through one buffered insert cursor and one
// reused feature buffer for the whole run.
#include <memory>
#include <vector>

#include "platform/workspace.h"
#include "plot/plot_output.h"

namespace tarnwick {

class PlotWriter {
 public:
  PlotWriter(const PlotOutput& output, bool plotIdIsText);
  // Writes the stand's points in order, numbered on from the last one. The
  // cursor is flushed at the first of every hundred points and after the
  // stand's last point.
  void WriteStand(const std::vector<platform::XY>& points, const platform::SpatialReference& reference,
                  const platform::Value& standId);
  long PlotsWritten() const { return written_; }

 private:
  std::unique_ptr<platform::InsertCursor> cursor_;
  platform::Feature buffer_;
  int standFieldIndex_;
  int plotFieldIndex_;
  bool plotIdIsText_;
  bool hasZ_;
  bool hasM_;
  long plotNumber_;
  long written_ = 0;
};

}  // namespace tarnwick
