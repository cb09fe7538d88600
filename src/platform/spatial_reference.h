#pragma once
// A coordinate system, as the tools see it. Identity is by FactoryCode alone.
// A SpatialReference never changes after it is made, so copies share one
// underlying object (copying is cheap and copies may go to other threads).
#include <memory>
#include <string>

namespace tarnwick::platform {

class SpatialReference {
 public:
  SpatialReference();  // unknown: no coordinate system
  ~SpatialReference();
  SpatialReference(const SpatialReference&);
  SpatialReference& operator=(const SpatialReference&);
  SpatialReference(SpatialReference&&) noexcept;
  SpatialReference& operator=(SpatialReference&&) noexcept;

  static SpatialReference FromEpsg(int code);
  // "EPSG:26910", "ESRI:54032", WKT or a PROJ string. Throws PlatformError.
  static SpatialReference FromUserInput(const std::string& text);
  // The World Azimuthal Equidistant projection (ESRI 54032) on WGS 1984 with
  // its centre at the given longitude and latitude, in metres.
  static SpatialReference AzimuthalEquidistant(double centralMeridian, double latitudeOfOrigin);

  bool IsUnknown() const;
  bool IsGeographic() const;
  bool IsProjected() const;
  // EPSG (or ESRI) code that identifies the reference; 0 when none does.
  int FactoryCode() const;
  // ESRI-style name, e.g. "NAD_1983_UTM_Zone_10N".
  std::string Name() const;
  // Metres per unit of a projected system's linear unit; 1 otherwise.
  double MetersPerUnit() const;
  double SemiMajorAxis() const;
  double SemiMinorAxis() const;
  // The geographic system under a projected one (itself when geographic).
  SpatialReference GeographicCoordinateSystem() const;
  std::string ToWkt() const;

  struct Impl;
  const Impl* impl() const { return impl_.get(); }
  explicit SpatialReference(std::unique_ptr<Impl> impl);

 private:
  std::shared_ptr<const Impl> impl_;
};

}  // namespace tarnwick::platform
