// Point-in-polygon tests against a GEOS prepared geometry. Each object owns
// its own GEOS context, so objects may be used on different threads.
#include <geos_c.h>

#include <algorithm>

#include "platform/errors.h"
#include "platform/geometry.h"
#include "platform/internal/geometry_impl.h"

namespace tarnwick::platform {

struct PreparedPolygon::Impl {
  GEOSContextHandle_t context = nullptr;
  GEOSGeometry* polygon = nullptr;
  const GEOSPreparedGeometry* prepared = nullptr;
  OGREnvelope envelope;
  bool empty = true;

  ~Impl() {
    if (prepared) GEOSPreparedGeom_destroy_r(context, prepared);
    if (polygon) GEOSGeom_destroy_r(context, polygon);
    if (context) GEOS_finish_r(context);
  }

  bool Covers(double x, double y) const {
    if (empty || x < envelope.MinX || x > envelope.MaxX || y < envelope.MinY || y > envelope.MaxY) return false;
    GEOSGeometry* point = GEOSGeom_createPointFromXY_r(context, x, y);
    const bool covered = GEOSPreparedCovers_r(context, prepared, point) == 1;
    GEOSGeom_destroy_r(context, point);
    return covered;
  }
};

PreparedPolygon::PreparedPolygon(const Geometry& polygon) : impl_(std::make_unique<Impl>()) {
  const OGRGeometry* geom = internal::OgrOf(polygon);
  impl_->context = GEOS_init_r();
  if (geom == nullptr || geom->IsEmpty()) return;
  impl_->polygon = geom->exportToGEOS(impl_->context);
  if (impl_->polygon == nullptr) {
    throw PlatformError(kErrPlatform, "PreparedPolygon", "The polygon could not be handed to GEOS");
  }
  impl_->prepared = GEOSPrepare_r(impl_->context, impl_->polygon);
  geom->getEnvelope(&impl_->envelope);
  impl_->empty = false;
}

PreparedPolygon::~PreparedPolygon() = default;
PreparedPolygon::PreparedPolygon(PreparedPolygon&&) noexcept = default;
PreparedPolygon& PreparedPolygon::operator=(PreparedPolygon&&) noexcept = default;

bool PreparedPolygon::Covers(double x, double y) const { return impl_->Covers(x, y); }

void PreparedPolygon::KeepCovered(std::vector<XY>& points) const {
  const Impl& impl = *impl_;
  std::erase_if(points, [&impl](const XY& p) { return !impl.Covers(p.x, p.y); });
}

}  // namespace tarnwick::platform
