// Applies a datum transformation with PROJ. The operation is created from
// its authority and code, put in longitude-latitude order, and checked for
// the grid files it needs: an operation that cannot run here is reported by
// name, never replaced by another.
#include "platform/internal/geo_transform.h"

#include <proj.h>

#include <cmath>
#include <memory>
#include <string>

#include "platform/errors.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "ApplyGeoTransformation";

struct ContextDeleter {
  void operator()(PJ_CONTEXT* ctx) const { proj_context_destroy(ctx); }
};
struct OperationDeleter {
  void operator()(PJ* pj) const { proj_destroy(pj); }
};
using ContextPtr = std::unique_ptr<PJ_CONTEXT, ContextDeleter>;
using OperationPtr = std::unique_ptr<PJ, OperationDeleter>;

std::string Label(const GeoTransformation& t) {
  return "'" + t.name + "' (" + t.authority + ":" + std::to_string(t.code) + ")";
}

// The grids the operation needs that this machine lacks, joined by ", ".
std::string MissingGrids(PJ_CONTEXT* ctx, PJ* op) {
  std::string missing;
  const int count = proj_coordoperation_get_grid_used_count(ctx, op);
  for (int i = 0; i < count; ++i) {
    const char* shortName = nullptr;
    int available = 0;
    if (!proj_coordoperation_get_grid_used(ctx, op, i, &shortName, nullptr, nullptr, nullptr, nullptr, nullptr,
                                           &available) ||
        available) {
      continue;
    }
    if (!missing.empty()) missing += ", ";
    missing += shortName ? shortName : "(unnamed grid)";
  }
  return missing;
}

// A ready operation for one transformation, on its own PROJ context.
struct PreparedOperation {
  std::string authority;
  int code = 0;
  ContextPtr ctx;
  OperationPtr op;
};

PreparedOperation Prepare(const GeoTransformation& t) {
  PreparedOperation prepared{t.authority, t.code, ContextPtr(proj_context_create()), nullptr};
  PJ_CONTEXT* ctx = prepared.ctx.get();
  proj_log_level(ctx, PJ_LOG_NONE);
  proj_context_set_enable_network(ctx, 0);
  const std::string code = std::to_string(t.code);
  OperationPtr op(proj_create_from_database(ctx, t.authority.c_str(), code.c_str(), PJ_CATEGORY_COORDINATE_OPERATION,
                                            0, nullptr));
  if (!op) {
    throw PlatformError(kErrPlatform, kSource, "Geographic transformation " + Label(t) + " is unknown to PROJ");
  }
  if (!proj_coordoperation_is_instantiable(ctx, op.get())) {
    const std::string grids = MissingGrids(ctx, op.get());
    throw PlatformError(kErrPlatform, kSource,
                        "Geographic transformation " + Label(t) + " cannot be applied on this machine: " +
                            (grids.empty() ? std::string("PROJ cannot instantiate it")
                                           : "grid file " + grids + " is not installed"));
  }
  prepared.op.reset(proj_normalize_for_visualization(ctx, op.get()));
  if (!prepared.op) {
    throw PlatformError(kErrPlatform, kSource,
                        "Geographic transformation " + Label(t) + " cannot be put in longitude-latitude order");
  }
  return prepared;
}

// The operation last used on this thread. Creating an operation reads PROJ's
// database, and a tool applies the same one to every feature of a run, so
// the last one is kept; it is a memo of an immutable lookup, not state that
// changes any result.
PreparedOperation& OperationFor(const GeoTransformation& t) {
  thread_local PreparedOperation last;
  if (!last.op || last.code != t.code || last.authority != t.authority) {
    last.op.reset();  // an operation goes before its context
    last.ctx.reset();
    last = Prepare(t);
  }
  return last;
}

}  // namespace

void ApplyGeoTransformation(std::span<XY> lonLat, const GeoTransformation& transformation,
                            TransformDirection direction) {
  PreparedOperation& prepared = OperationFor(transformation);
  const PJ_DIRECTION pjDirection = direction == TransformDirection::Reverse ? PJ_INV : PJ_FWD;
  for (XY& p : lonLat) {
    PJ_COORD c = proj_coord(p.x, p.y, 0, HUGE_VAL);
    proj_errno_reset(prepared.op.get());
    PJ_COORD r = proj_trans(prepared.op.get(), pjDirection, c);
    if (!std::isfinite(r.xy.x) || !std::isfinite(r.xy.y)) {
      throw PlatformError(kErrPlatform, kSource,
                          "Geographic transformation " + Label(transformation) + " failed at longitude " +
                              std::to_string(p.x) + ", latitude " + std::to_string(p.y) + ": " +
                              proj_context_errno_string(prepared.ctx.get(), proj_errno(prepared.op.get())));
    }
    p = {r.xy.x, r.xy.y};
  }
}

}  // namespace tarnwick::platform::internal

namespace tarnwick::platform {

void CheckTransformationUsable(const GeoTransformation& transformation) {
  (void)internal::OperationFor(transformation);
}

}  // namespace tarnwick::platform
