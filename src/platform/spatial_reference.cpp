// SpatialReference on OGRSpatialReference, always in the traditional GIS
// axis order (x = longitude or easting).
#include "platform/spatial_reference.h"

#include <cpl_conv.h>

#include <algorithm>
#include <cstdlib>
#include <vector>
#include <cstring>

#include "platform/errors.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/spatial_reference_impl.h"

namespace tarnwick::platform {

namespace {

constexpr const char* kSource = "SpatialReference";

std::unique_ptr<SpatialReference::Impl> NewImpl() {
  auto impl = std::make_unique<SpatialReference::Impl>();
  impl->srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  return impl;
}

int CodeOfAuthority(const OGRSpatialReference& srs) {
  const char* authority = srs.GetAuthorityName(nullptr);
  const char* code = srs.GetAuthorityCode(nullptr);
  if (authority == nullptr || code == nullptr) return 0;
  if (!EQUAL(authority, "EPSG") && !EQUAL(authority, "ESRI")) return 0;
  return std::atoi(code);
}

// The code of the catalogue entry that matches srs with high confidence.
int CodeOfBestMatch(const OGRSpatialReference& srs) {
  int count = 0;
  int* confidences = nullptr;
  OGRSpatialReferenceH* matches = srs.FindMatches(nullptr, &count, &confidences);
  int code = 0;
  for (int i = 0; i < count && code == 0; ++i) {
    if (confidences[i] < 90) break;  // matches come best first
    code = CodeOfAuthority(*OGRSpatialReference::FromHandle(matches[i]));
  }
  OSRFreeSRSArray(matches);
  CPLFree(confidences);
  return code;
}

}  // namespace

namespace internal {
SpatialReference FromOgr(const OGRSpatialReference* srs) {
  if (srs == nullptr) return SpatialReference();
  auto impl = NewImpl();
  impl->srs = *srs;
  impl->srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  return SpatialReference(std::move(impl));
}

std::unique_ptr<OGRSpatialReference> CopyOgr(const SpatialReference& sr) {
  const SpatialReference::Impl* impl = sr.impl();
  if (impl == nullptr) return nullptr;
  std::lock_guard lock(impl->mutex);
  auto copy = std::make_unique<OGRSpatialReference>(impl->srs);
  copy->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  return copy;
}
namespace {
bool Convert(const SpatialReference& sr, bool toGeographic, int count, double* x, double* y, double* z) {
  const SpatialReference::Impl* impl = sr.impl();
  if (impl == nullptr || count == 0) return true;
  std::lock_guard lock(impl->mutex);
  if (!impl->srs.IsProjected()) return true;
  auto& ct = toGeographic ? impl->toGeographic : impl->fromGeographic;
  if (!ct) {
    QuietGdalErrors quiet;
    OGRSpatialReference projected(impl->srs);
    projected.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    std::unique_ptr<OGRSpatialReference, void (*)(OGRSpatialReference*)> geographic(
        impl->srs.CloneGeogCS(), [](OGRSpatialReference* p) { OGRSpatialReference::DestroySpatialReference(p); });
    if (!geographic) ThrowGdalError(kSource, "No geographic system under the projection");
    geographic->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    ct.reset(toGeographic ? OGRCreateCoordinateTransformation(&projected, geographic.get())
                          : OGRCreateCoordinateTransformation(geographic.get(), &projected));
    if (!ct) ThrowGdalError(kSource, "No conversion between the projection and its geographic system");
  }
  std::vector<int> success(count, TRUE);
  return ct->Transform(count, x, y, z, nullptr, success.data()) &&
         std::all_of(success.begin(), success.end(), [](int ok) { return ok != 0; });
}
}  // namespace

bool ConvertToGeographic(const SpatialReference& sr, int count, double* x, double* y, double* z) {
  return Convert(sr, true, count, x, y, z);
}

bool ConvertFromGeographic(const SpatialReference& sr, int count, double* x, double* y, double* z) {
  return Convert(sr, false, count, x, y, z);
}
}  // namespace internal

SpatialReference::SpatialReference() = default;
SpatialReference::~SpatialReference() = default;
SpatialReference::SpatialReference(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
SpatialReference::SpatialReference(const SpatialReference& other) = default;
SpatialReference& SpatialReference::operator=(const SpatialReference& other) = default;
SpatialReference::SpatialReference(SpatialReference&&) noexcept = default;
SpatialReference& SpatialReference::operator=(SpatialReference&&) noexcept = default;

SpatialReference SpatialReference::FromEpsg(int code) {
  internal::QuietGdalErrors quiet;
  auto impl = NewImpl();
  if (impl->srs.importFromEPSG(code) != OGRERR_NONE) {
    // Factory codes also name ESRI's own systems, such as 54032.
    const std::string esri = "ESRI:" + std::to_string(code);
    if (impl->srs.SetFromUserInput(esri.c_str()) != OGRERR_NONE) {
      internal::ThrowGdalError(kSource, "Unknown coordinate system " + std::to_string(code));
    }
    impl->srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  }
  impl->factoryCode = code;
  return SpatialReference(std::move(impl));
}

SpatialReference SpatialReference::FromUserInput(const std::string& text) {
  internal::QuietGdalErrors quiet;
  auto impl = NewImpl();
  if (impl->srs.SetFromUserInput(text.c_str()) != OGRERR_NONE) {
    internal::ThrowGdalError(kSource, "Unknown coordinate system '" + text + "'");
  }
  impl->srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  return SpatialReference(std::move(impl));
}

SpatialReference SpatialReference::AzimuthalEquidistant(double centralMeridian, double latitudeOfOrigin) {
  auto impl = NewImpl();
  OGRSpatialReference& srs = impl->srs;
  srs.SetWellKnownGeogCS("WGS84");
  srs.SetProjCS("World_Azimuthal_Equidistant");
  srs.SetAE(latitudeOfOrigin, centralMeridian, 0.0, 0.0);
  srs.SetLinearUnits(SRS_UL_METER, 1.0);
  srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  // The catalogue's 54032 is centred at 0, 0; anywhere else no code fits.
  impl->factoryCode = (centralMeridian == 0.0 && latitudeOfOrigin == 0.0) ? 54032 : 0;
  return SpatialReference(std::move(impl));
}

bool SpatialReference::IsUnknown() const {
  if (!impl_) return true;
  std::lock_guard lock(impl_->mutex);
  return impl_->srs.IsEmpty();
}

bool SpatialReference::IsGeographic() const {
  if (!impl_) return false;
  std::lock_guard lock(impl_->mutex);
  return impl_->srs.IsGeographic();
}

bool SpatialReference::IsProjected() const {
  if (!impl_) return false;
  std::lock_guard lock(impl_->mutex);
  return impl_->srs.IsProjected();
}

int SpatialReference::FactoryCode() const {
  if (IsUnknown()) return 0;
  int code = impl_->factoryCode.load();
  if (code == Impl::kUnidentified) {
    std::lock_guard lock(impl_->mutex);
    internal::QuietGdalErrors quiet;
    code = CodeOfAuthority(impl_->srs);
    if (code == 0) code = CodeOfBestMatch(impl_->srs);
    impl_->factoryCode = code;
  }
  return code;
}

std::string SpatialReference::Name() const {
  if (IsUnknown()) return "Unknown";
  std::lock_guard lock(impl_->mutex);
  internal::QuietGdalErrors quiet;
  // The ESRI flavour of WKT carries the ESRI name as its first quoted text.
  char* wkt = nullptr;
  const char* const options[] = {"FORMAT=WKT1_ESRI", nullptr};
  impl_->srs.exportToWkt(&wkt, options);
  std::string text = wkt ? wkt : "";
  CPLFree(wkt);
  const auto open = text.find('"');
  const auto close = open == std::string::npos ? open : text.find('"', open + 1);
  if (close == std::string::npos) {
    const char* name = impl_->srs.GetName();
    return name ? name : "Unknown";
  }
  return text.substr(open + 1, close - open - 1);
}

double SpatialReference::MetersPerUnit() const {
  if (!IsProjected()) return 1.0;
  std::lock_guard lock(impl_->mutex);
  return impl_->srs.GetLinearUnits();
}

double SpatialReference::SemiMajorAxis() const {
  if (IsUnknown()) return 0.0;
  std::lock_guard lock(impl_->mutex);
  return impl_->srs.GetSemiMajor();
}

double SpatialReference::SemiMinorAxis() const {
  if (IsUnknown()) return 0.0;
  std::lock_guard lock(impl_->mutex);
  return impl_->srs.GetSemiMinor();
}

SpatialReference SpatialReference::GeographicCoordinateSystem() const {
  if (IsUnknown()) return SpatialReference();
  if (IsGeographic()) return *this;
  std::unique_ptr<OGRSpatialReference, void (*)(OGRSpatialReference*)> gcs(
      nullptr, [](OGRSpatialReference* p) { OGRSpatialReference::DestroySpatialReference(p); });
  {
    std::lock_guard lock(impl_->mutex);
    gcs.reset(impl_->srs.CloneGeogCS());
  }
  return internal::FromOgr(gcs.get());
}

std::string SpatialReference::ToWkt() const {
  if (IsUnknown()) return "";
  std::lock_guard lock(impl_->mutex);
  char* wkt = nullptr;
  impl_->srs.exportToWkt(&wkt);
  std::string text = wkt ? wkt : "";
  CPLFree(wkt);
  return text;
}

}  // namespace tarnwick::platform
