#include "plot/plot_writer.h"

#include <string>

#include "plot/stand_preparation.h"

namespace tarnwick {

PlotWriter::PlotWriter(const PlotOutput& output, bool plotIdIsText)
    : cursor_(output.featureClass->Insert()),
      buffer_(cursor_->CreateFeatureBuffer()),
      standFieldIndex_(output.standFieldIndex),
      plotFieldIndex_(output.plotFieldIndex),
      plotIdIsText_(plotIdIsText),
      hasZ_(output.featureClass->HasZ()),
      hasM_(output.featureClass->HasM()),
      plotNumber_(output.firstPlotNumber - 1) {}

void PlotWriter::WriteStand(const std::vector<platform::XY>& points, const platform::SpatialReference& reference,
                            const platform::Value& standId) {
  if (points.empty()) return;
  for (std::size_t i = 0; i < points.size(); ++i) {
    platform::Geometry point = platform::Geometry::MakePoint(points[i].x, points[i].y, reference);
    FixShapeZandM(point, hasZ_, hasM_);
    ++plotNumber_;
    buffer_.shape = std::move(point);
    buffer_.values.at(standFieldIndex_) = standId;
    buffer_.values.at(plotFieldIndex_) =
        plotIdIsText_ ? platform::Value{std::to_string(plotNumber_)} : platform::Value{std::int64_t{plotNumber_}};
    cursor_->InsertFeature(buffer_);
    ++written_;
    if (i % 100 == 0) cursor_->Flush();
  }
  cursor_->Flush();
}

}  // namespace tarnwick
