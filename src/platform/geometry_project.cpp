// Projection of geometries. Project applies no datum shift: the source is
// taken to its own geographic system, those longitudes and latitudes are
// read as lying on the target's geographic system, and then projected.
// ProjectEx puts a chosen datum transformation between the two steps.
#include <ogr_spatialref.h>

#include <exception>
#include <optional>
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

using TransformPtr = std::unique_ptr<OGRCoordinateTransformation, void (*)(OGRCoordinateTransformation*)>;

TransformPtr NoTransform() { return TransformPtr(nullptr, OGRCoordinateTransformation::DestroyCT); }

// A pure conversion between a system and its geographic system, or nothing
// when both are the same.
TransformPtr Conversion(const SpatialReference& from, const SpatialReference& to) {
  if (!from.IsProjected() && !to.IsProjected()) return NoTransform();
  const auto source = internal::CopyOgr(from);
  const auto target = internal::CopyOgr(to);
  TransformPtr ct(OGRCreateCoordinateTransformation(source.get(), target.get()),
                  OGRCoordinateTransformation::DestroyCT);
  if (!ct) internal::ThrowGdalError(kSource, "No conversion from " + from.Name() + " to " + to.Name());
  return ct;
}

// Source -> geographic (source) -> [datum transformation] -> geographic (target) -> target.
class StepwiseTransformation final : public OGRCoordinateTransformation {
 public:
  StepwiseTransformation(const SpatialReference& from, const SpatialReference& to,
                         const GeoTransformation* transformation, TransformDirection direction)
      : from_(from),
        to_(to),
        toGeographic_(Conversion(from, from.GeographicCoordinateSystem())),
        fromGeographic_(Conversion(to.GeographicCoordinateSystem(), to)),
        transformation_(transformation),
        direction_(direction),
        source_(internal::CopyOgr(from).release()),
        target_(internal::CopyOgr(to).release()) {}
  ~StepwiseTransformation() override {
    source_->Release();
    target_->Release();
  }
  StepwiseTransformation(const StepwiseTransformation&) = delete;
  StepwiseTransformation& operator=(const StepwiseTransformation&) = delete;

  // OGR attaches these to the geometry it transforms and counts references
  // on them, so they are reference-counted copies, not the wrapped objects.
  OGRSpatialReference* GetSourceCS() override { return source_; }
  OGRSpatialReference* GetTargetCS() override { return target_; }
  OGRCoordinateTransformation* Clone() const override { return nullptr; }
  OGRCoordinateTransformation* GetInverse() const override { return nullptr; }

  int Transform(int count, double* x, double* y, double* z, double* t, int* success) override {
    if (success) std::fill(success, success + count, TRUE);
    if (toGeographic_ && !toGeographic_->Transform(count, x, y, z, t, success)) return FALSE;
    if (transformation_) {
      try {
        std::vector<XY> lonLat(count);
        for (int i = 0; i < count; ++i) lonLat[i] = {x[i], y[i]};
        internal::ApplyGeoTransformation(lonLat, *transformation_, direction_);
        for (int i = 0; i < count; ++i) {
          x[i] = lonLat[i].x;
          y[i] = lonLat[i].y;
        }
      } catch (...) {
        failure_ = std::current_exception();
        return FALSE;
      }
    }
    if (fromGeographic_ && !fromGeographic_->Transform(count, x, y, z, t, success)) return FALSE;
    return TRUE;
  }

  std::exception_ptr Failure() const { return failure_; }

 private:
  SpatialReference from_;
  SpatialReference to_;
  TransformPtr toGeographic_;
  TransformPtr fromGeographic_;
  const GeoTransformation* transformation_;
  TransformDirection direction_;
  std::exception_ptr failure_;
  OGRSpatialReference* source_;  // reference-counted by OGR
  OGRSpatialReference* target_;
};

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
  result.impl()->geom->assignSpatialReference(nullptr);  // the reference is kept beside the geometry
  if (status != OGRERR_NONE) {
    if (steps.Failure()) std::rethrow_exception(steps.Failure());
    internal::ThrowGdalError(kSource, "The geometry could not be projected from " + from.Name() + " to " + to.Name());
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

}  // namespace tarnwick::platform
