#pragma once
// Workspaces (a folder of shapefiles, a .gdb file geodatabase, a .gpkg
// GeoPackage), feature classes, cursors and selections on GDAL/OGR.
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/geometry.h"
#include "platform/spatial_reference.h"

namespace tarnwick::platform {

enum class WorkspaceKind { ShapefileFolder, FileGeodatabase, GeoPackage };

class FeatureClass;

class Workspace {
 public:
  // Opens an existing workspace for update. Throws PlatformError naming the
  // path and the reason (missing, unreadable, an .mdb personal geodatabase).
  static std::shared_ptr<Workspace> Open(const std::string& path);
  // Opens, creating the folder, .gdb or .gpkg when it does not exist yet.
  static std::shared_ptr<Workspace> OpenOrCreate(const std::string& path);
  // Kind by the path's ending: .gdb, .gpkg, otherwise a folder.
  static WorkspaceKind KindOfPath(const std::string& path);

  virtual ~Workspace() = default;
  virtual WorkspaceKind Kind() const = 0;
  // The host's esriWorkspaceType: 0 file system (folder), 1 local database.
  int Type() const { return Kind() == WorkspaceKind::ShapefileFolder ? 0 : 1; }
  virtual std::string PathName() const = 0;
  // True when a feature class or table of that name exists (case-insensitive).
  virtual bool NameExists(const std::string& name) = 0;
  virtual std::vector<std::string> FeatureClassNames() = 0;
  virtual std::shared_ptr<FeatureClass> OpenFeatureClass(const std::string& name) = 0;

  struct NewFeatureClass {
    std::string name;
    GeometryType geometryType = GeometryType::Point;
    SpatialReference spatialReference;
    std::vector<Field> fields;        // attribute fields, in order
    std::string oidFieldName = "OBJECTID";  // ignored by shapefiles (FID)
    std::string shapeFieldName = "Shape";   // ignored by shapefiles
    bool hasZ = false;
    bool hasM = false;
  };
  virtual std::shared_ptr<FeatureClass> CreateFeatureClass(const NewFeatureClass& newClass) = 0;
  virtual void DeleteFeatureClass(const std::string& name) = 0;

  // Edit sessions, all or nothing: while a workspace is being edited, every
  // change made through it and its classes (new and deleted classes, added
  // fields, inserts, updates, metadata documents) stays provisional until
  // StopEditing(true) saves it; StopEditing(false) discards it. A GeoPackage
  // or file geodatabase holds the session in one transaction of its own; a
  // shapefile folder writes each changed class as a new set of files and
  // swaps them in at the save. The tools use EditSession
  // (platform/edit_session.h), which discards on every path that does not
  // save.
  virtual void StartEditing() = 0;
  // Saving throws PlatformError when the store cannot take the changes; the
  // session's changes are then discarded. Discarding never throws.
  virtual void StopEditing(bool saveEdits) = 0;
  virtual bool IsBeingEdited() const = 0;
};

// One feature read from or written to a class. Values are indexed by the
// class's field list (OID at 0, Shape at 1, then the attributes).
struct Feature {
  std::int64_t oid = -1;
  Geometry shape;
  std::vector<Value> values;  // same length as the class's field list; [0] oid, [1] unused
};

class FeatureCursor {
 public:
  virtual ~FeatureCursor() = default;
  // The next feature, or nullopt at the end.
  virtual std::optional<Feature> NextFeature() = 0;
};

// Writing cursors. Inside an edit session their writes belong to the
// session, which alone makes them final, and Flush does nothing more. A
// cursor opened outside a session is a small session of its own where the
// store has transactions: Flush makes what it wrote final (and throws when
// the store cannot take it), and what it wrote after the last Flush is
// discarded with the cursor.
class InsertCursor {
 public:
  virtual ~InsertCursor() = default;
  // A reusable buffer with every value Null and a null shape.
  virtual Feature CreateFeatureBuffer() = 0;
  // Writes the feature; readers in this process see it at once.
  virtual std::int64_t InsertFeature(const Feature& buffer) = 0;
  virtual void Flush() = 0;
};

class UpdateCursor {
 public:
  virtual ~UpdateCursor() = default;
  virtual std::optional<Feature> NextFeature() = 0;
  virtual void UpdateFeature(const Feature& feature) = 0;  // the feature last returned
  virtual void Flush() = 0;  // as InsertCursor::Flush
};

// A feature of a point class as an attribute update reads it: its OID and
// its point, without its attributes.
struct PointRow {
  std::int64_t oid = -1;
  std::optional<XY> point;  // none when the feature has no shape
};

// Sets chosen attribute fields of every feature of a point class, in the
// class's feature order, and leaves the shapes and all other fields as they
// are. Where the store allows it only those fields are written: a
// GeoPackage takes one UPDATE of them per feature, a shapefile's copy has
// them written into its .dbf records; elsewhere (and for field types that
// need the store's own conversion) whole features are rewritten.
class AttributeUpdateCursor {
 public:
  virtual ~AttributeUpdateCursor() = default;
  // The next features, empty at the end; valid until the next call. A shape
  // that is not a point raises PlatformError. Writes are complete only once
  // the empty batch has been returned.
  virtual std::span<const PointRow> NextBatch() = 0;
  // Sets the cursor's fields of the feature at position row of the last
  // batch; values in the order of the cursor's field indexes.
  virtual void Set(std::size_t row, std::span<const Value> values) = 0;
};

// A feature class reads through one OGR layer, which has a single read
// position and attribute filter. Cursors on one FeatureClass object must
// therefore not interleave: finish or destroy one before opening the next,
// and do not count or select while a cursor is open. Shapefiles and file
// geodatabases give an independent layer to each opening of the class; all
// openings of a GeoPackage in one process share one connection and layer,
// so there the rule holds for every object of that class.
class FeatureClass {
 public:
  virtual ~FeatureClass() = default;
  virtual std::string Name() const = 0;
  // Path that names the class: "dir/name.shp", "x.gdb/NAME", "x.gpkg/NAME".
  virtual std::string FullPath() const = 0;
  virtual std::shared_ptr<Workspace> GetWorkspace() const = 0;

  // OID at index 0, Shape at 1, then the attribute fields.
  virtual const std::vector<Field>& Fields() const = 0;
  // Index of a field by name, ignoring case; -1 when absent.
  int FindField(const std::string& name) const;
  virtual void AddField(const Field& field) = 0;
  std::string OIDFieldName() const { return Fields().at(0).name; }
  std::string ShapeFieldName() const { return Fields().at(1).name; }

  virtual GeometryType ShapeType() const = 0;
  virtual bool HasZ() const = 0;
  virtual bool HasM() const = 0;
  virtual SpatialReference GetSpatialReference() const = 0;
  virtual Envelope Extent() = 0;

  // Counts and reads in the class's own feature order. A where clause is an
  // OGR SQL attribute filter ("" for all). A feature that cannot be read
  // (a damaged file) raises PlatformError naming the feature and the
  // reason, and so does a reading of the whole class that ends before the
  // number of features the store announces.
  virtual std::int64_t FeatureCount(const std::string& where = "") = 0;
  virtual std::unique_ptr<FeatureCursor> Search(const std::string& where = "") = 0;
  // The features with these OIDs, in the order given.
  virtual std::unique_ptr<FeatureCursor> SearchOids(const std::vector<std::int64_t>& oids) = 0;
  // OIDs of the features a where clause matches (a selection set).
  virtual std::vector<std::int64_t> Select(const std::string& where) = 0;

  // Buffered inserts inside a transaction where the store has them.
  virtual std::unique_ptr<InsertCursor> Insert() = 0;
  virtual std::unique_ptr<UpdateCursor> Update(const std::string& where = "") = 0;
  // Attribute-only updates of the fields at these indexes of Fields(), for
  // a class in an edit session (throws PlatformError otherwise): the
  // session alone makes the writes final. Open no other cursor on the class
  // until this one is gone.
  virtual std::unique_ptr<AttributeUpdateCursor> UpdateAttributes(const std::vector<int>& fieldIndexes) = 0;
};

// A layer as a map holds it: a feature class, a name and a selection.
struct FeatureLayer {
  std::string name;
  std::shared_ptr<FeatureClass> featureClass;
  std::vector<std::int64_t> selection;  // selected OIDs; empty when none
  bool valid = true;
};

// Opens "PATH" or "PATH|layername=NAME" as a layer named after its class.
// A folder or .gdb/.gpkg path with one class opens that class. Throws
// PlatformError naming the path and the reason.
FeatureLayer OpenFeatureLayer(const std::string& layerSource);

// Splits "x.gpkg/Plots", "x.gdb/Plots" or "dir/plots.shp" into the
// workspace path and the class name ("plots" for a shapefile).
struct ClassPath {
  std::string workspace;
  std::string name;
};
ClassPath SplitClassPath(const std::string& path);

}  // namespace tarnwick::platform
