#pragma once
// Geometries with the topological operations the tools need. A Geometry is a
// value: copying it copies the shape.
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/spatial_reference.h"
#include "platform/transformation.h"

namespace tarnwick::platform {

struct XY {
  double x = 0;
  double y = 0;
  friend bool operator==(const XY&, const XY&) = default;
};

struct Envelope {
  double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
  bool empty = true;
  double Width() const { return xMax - xMin; }
  double Height() const { return yMax - yMin; }
};

// The host's esriGeometryType numbers.
enum class GeometryType : int { Null = 0, Point = 1, Multipoint = 2, Polyline = 3, Polygon = 4, Line = 13 };

// Rings of one polygon part: the exterior first, then its holes.
using Ring = std::vector<XY>;
using PolygonRings = std::vector<Ring>;

class Geometry {
 public:
  Geometry();  // a null geometry
  ~Geometry();
  Geometry(const Geometry&);
  Geometry& operator=(const Geometry&);
  Geometry(Geometry&&) noexcept;
  Geometry& operator=(Geometry&&) noexcept;

  static Geometry MakePoint(double x, double y, const SpatialReference& sr);
  static Geometry MakeMultipoint(std::span<const XY> points, const SpatialReference& sr);
  static Geometry MakePolygon(const std::vector<PolygonRings>& parts, const SpatialReference& sr);
  static Geometry FromWkt(std::string_view wkt, const SpatialReference& sr);  // throws PlatformError
  std::string ToWkt() const;

  GeometryType Type() const;
  bool IsNull() const;
  bool IsEmpty() const;  // null or without coordinates
  const SpatialReference& SpatialRef() const;
  void SetSpatialRef(const SpatialReference& sr);  // assigns, does not project

  // Topology.
  bool IsKnownSimple() const;  // valid as it stands
  Geometry Simplify() const;   // repaired topology (self-intersections, ring order)
  Geometry Buffer(double distance) const;  // distance in the geometry's unit; negative shrinks
  Geometry Centroid() const;   // a point; need not lie inside
  double Area() const;         // planar, in square units of the reference
  Envelope GetEnvelope() const;
  // The part of a multipoint that lies in or on this polygon, in the order of the multipoint.
  Geometry IntersectPoints(const Geometry& multipoint) const;

  // Coordinates.
  XY PointXY() const;                       // of a point
  std::vector<XY> Points() const;           // of a point or multipoint
  std::vector<PolygonRings> Polygons() const;  // of a polygon or multipolygon
  int PointCount() const;                   // vertices of any geometry

  // Z and M awareness; making a geometry aware sets its Z (or M) values to 0.
  bool HasZ() const;
  bool HasM() const;
  void SetZAware(bool aware);
  void SetMAware(bool aware);

  // Projection without a datum shift, and through a chosen transformation.
  Geometry Project(const SpatialReference& to) const;
  Geometry ProjectEx(const SpatialReference& to, const GeoTransformation& transformation,
                     TransformDirection direction) const;

  struct Impl;
  Impl* impl() const { return impl_.get(); }
  explicit Geometry(std::unique_ptr<Impl> impl);

 private:
  std::unique_ptr<Impl> impl_;
};

// Projects many points in place by the same steps as Geometry::Project (no
// transformation) or Geometry::ProjectEx, far faster than one geometry at a
// time. Nothing moves when either reference is unknown.
void ProjectPoints(std::span<XY> points, const SpatialReference& from, const SpatialReference& to,
                   const GeoTransformation* transformation = nullptr,
                   TransformDirection direction = TransformDirection::Forward);

// A polygon made ready for many point-in-polygon tests (GEOS prepared geometry).
// A point on the boundary counts as inside, as the intersection does.
class PreparedPolygon {
 public:
  explicit PreparedPolygon(const Geometry& polygon);
  ~PreparedPolygon();
  PreparedPolygon(PreparedPolygon&&) noexcept;
  PreparedPolygon& operator=(PreparedPolygon&&) noexcept;
  bool Covers(double x, double y) const;
  // True when the polygon is one ring, without holes, that neither touches
  // nor crosses itself, which makes it valid. False leaves validity open
  // (Geometry::IsKnownSimple decides it).
  bool PlainlyValid() const;
  // Removes the points that are not covered, keeping the order of the rest.
  void KeepCovered(std::vector<XY>& points) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tarnwick::platform
