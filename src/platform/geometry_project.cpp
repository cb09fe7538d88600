// Projection of geometries. Project applies no datum shift: the source is
// taken to its own geographic system, those longitudes and latitudes are
// read as lying on the target's geographic system, and then projected.
// ProjectEx puts a chosen datum transformation between the two steps.
#include <ogr_spatialref.h>

#include <exception>
#include <vector>

#include "platform/errors.h"
#include "platform/geometry.h"
#include "platform/internal/geo_transform.h"
#include "platform/internal/geometry_impl.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/spatial_reference_impl.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "Geometry.Project";

// Source -> geographic (source) -> [datum transformation] -> geographic
// (target) -> target, in place. False when a point cannot be converted.
bool ProjectCoordinates(const SpatialReference& from, const SpatialReference& to,
                        const GeoTransformation* transformation, TransformDirection direction, int count, double* x,
                        double* y, double* z) {
  if (!internal::ConvertToGeographic(from, count, x, y, z)) return false;
  if (transformation) {
    std::vector<XY> lonLat(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) lonLat[i] = {x[i], y[i]};
    internal::ApplyGeoTransformation(lonLat, *transformation, direction);
    for (int i = 0; i < count; ++i) {
      x[i] = lonLat[i].x;
      y[i] = lonLat[i].y;
    }
  }
  return internal::ConvertFromGeographic(to, count, x, y, z);
}

// The same steps as an OGR coordinate transformation, so that OGR can walk
// a geometry's vertices and hand them over in batches.
class StepwiseTransformation final : public OGRCoordinateTransformation {
 public:
  StepwiseTransformation(const SpatialReference& from, const SpatialReference& to,
                         const GeoTransformation* transformation, TransformDirection direction)
      : from_(from), to_(to), transformation_(transformation), direction_(direction) {}

  // The geometry keeps its reference beside it, so OGR is given none to attach.
  OGRSpatialReference* GetSourceCS() override { return nullptr; }
  OGRSpatialReference* GetTargetCS() override { return nullptr; }
  OGRCoordinateTransformation* Clone() const override { return nullptr; }
  OGRCoordinateTransformation* GetInverse() const override { return nullptr; }

  int Transform(int count, double* x, double* y, double* z, double* /*t*/, int* success) override {
    if (success) std::fill(success, success + count, TRUE);
    try {
      if (!ProjectCoordinates(from_, to_, transformation_, direction_, count, x, y, z)) return Fail(success, count);
    } catch (...) {
      // OGR is C++ but not written for exceptions passing through it.
      failure_ = std::current_exception();
      return Fail(success, count);
    }
    return TRUE;
  }

  std::exception_ptr Failure() const { return failure_; }

 private:
  static int Fail(int* success, int count) {
    if (success) std::fill(success, success + count, FALSE);
    return FALSE;
  }

  const SpatialReference& from_;
  const SpatialReference& to_;
  const GeoTransformation* transformation_;
  TransformDirection direction_;
  std::exception_ptr failure_;
};

[[noreturn]] void ThrowNotProjected(const SpatialReference& from, const SpatialReference& to) {
  internal::ThrowGdalError(kSource, "The geometry could not be projected from " + from.Name() + " to " + to.Name());
}

Geometry ProjectGeometry(const Geometry& source, const SpatialReference& to, const GeoTransformation* transformation,
                         TransformDirection direction) {
  const SpatialReference& from = source.SpatialRef();
  if (source.IsNull()) return source;
  Geometry result(source);
  result.SetSpatialRef(to);
  if (from.IsUnknown() || to.IsUnknown() || source.IsEmpty()) return result;
  internal::QuietGdalErrors quiet;
  StepwiseTransformation steps(from, to, transformation, direction);
  const OGRErr status = result.impl()->geom->transform(&steps);
  result.impl()->geom->assignSpatialReference(nullptr);
  if (status != OGRERR_NONE) {
    if (steps.Failure()) std::rethrow_exception(steps.Failure());
    ThrowNotProjected(from, to);
  }
  return result;
}

}  // namespace

Geometry Geometry::Project(const SpatialReference& to) const {
  return ProjectGeometry(*this, to, nullptr, TransformDirection::Forward);
}

Geometry Geometry::ProjectEx(const SpatialReference& to, const GeoTransformation& transformation,
                             TransformDirection direction) const {
  return ProjectGeometry(*this, to, &transformation, direction);
}

void ProjectPoints(std::span<XY> points, const SpatialReference& from, const SpatialReference& to,
                   const GeoTransformation* transformation, TransformDirection direction) {
  if (points.empty() || from.IsUnknown() || to.IsUnknown()) return;
  const auto count = points.size();
  std::vector<double> x(count), y(count), z(count, 0.0);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = points[i].x;
    y[i] = points[i].y;
  }
  internal::QuietGdalErrors quiet;
  if (!ProjectCoordinates(from, to, transformation, direction, static_cast<int>(count), x.data(), y.data(),
                          z.data())) {
    ThrowNotProjected(from, to);
  }
  for (std::size_t i = 0; i < count; ++i) points[i] = {x[i], y[i]};
}

}  // namespace tarnwick::platform
