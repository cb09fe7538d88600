#pragma once
// Workspaces and feature classes on GDAL/OGR (platform-internal).
//
// A FeatureClass object wraps one OGR layer of its workspace's dataset. OGR
// layers have a single read position, so cursors opened on one FeatureClass
// object must not interleave: finish (or destroy) one cursor before opening
// the next on the same object. Opening the class again gives independent
// reads for shapefiles and file geodatabases; all workspaces on one
// GeoPackage share one connection (see workspace.cpp), so there the rule
// holds for every FeatureClass object of that class in the process.
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/file_replace.h"
#include "platform/internal/shapefile_staging.h"
#include "platform/workspace.h"

namespace tarnwick::platform::internal {

class OgrFeatureClass;

// The GDAL driver of a kind of store; throws when it is missing.
GDALDriver* OgrDriver(WorkspaceKind kind);
// Opens the store's dataset (nullptr when GDAL cannot); all openings of one
// GeoPackage share one connection.
GDALDatasetUniquePtr OpenOgrDataset(const std::string& path, WorkspaceKind kind, bool update);

class OgrWorkspace final : public Workspace, public std::enable_shared_from_this<OgrWorkspace> {
 public:
  OgrWorkspace(WorkspaceKind kind, std::string path, GDALDatasetUniquePtr dataset, bool readOnly);

  WorkspaceKind Kind() const override { return kind_; }
  std::string PathName() const override { return path_; }
  bool NameExists(const std::string& name) override;
  std::vector<std::string> FeatureClassNames() override;
  std::shared_ptr<FeatureClass> OpenFeatureClass(const std::string& name) override;
  std::shared_ptr<FeatureClass> CreateFeatureClass(const NewFeatureClass& newClass) override;
  void DeleteFeatureClass(const std::string& name) override;
  void StartEditing() override;
  void StopEditing(bool saveEdits) override;
  bool IsBeingEdited() const override { return editing_; }

  GDALDataset& Dataset() { return *dataset_; }
  bool ReadOnly() const { return readOnly_; }
  // Throws PlatformError naming the workspace when it cannot be written.
  void RequireWritable(const std::string& what) const;

  // Called before the class is changed: in a shapefile session, moves the
  // class onto a staged copy of its files (once); elsewhere nothing.
  void PrepareToWrite(OgrFeatureClass& featureClass);
  // The folder that holds the class's files now (a staged copy's folder
  // during a shapefile session).
  std::string StorageFolder(const std::string& className) const;
  // Writes a file that belongs to the workspace's data (a metadata sidecar):
  // at once outside a session, at a successful commit inside one.
  void WriteDataFile(const std::string& path, const std::string& content);
  // Removes such a file: at once outside a session, at a successful commit
  // inside one.
  void RemoveDataFile(const std::string& path);

 private:
  OGRLayer* FindLayer(const std::string& name);
  std::shared_ptr<OgrFeatureClass> Track(OGRLayer* layer, bool staged);
  // Reopens the dataset from disk and points every class object of this
  // workspace at its layer there (none when the class is gone).
  void Reopen();
  // Discards a store transaction and the files waiting for the commit.
  void Discard();
  void RemoveNow(const std::string& path);
  std::string CannotSave() const;

  WorkspaceKind kind_;
  std::string path_;
  GDALDatasetUniquePtr dataset_;
  bool readOnly_;
  bool editing_ = false;
  std::unique_ptr<ShapefileStaging> staging_;  // a shapefile folder's session
  std::vector<StagedFile> waitingFiles_;       // written at a successful commit
  std::vector<std::string> filesToRemove_;     // removed at a successful commit
  std::set<std::string> filesBeforeEdit_;      // a geodatabase folder's files when its session began
  std::vector<std::weak_ptr<OgrFeatureClass>> classes_;
};

class OgrFeatureClass final : public FeatureClass, public std::enable_shared_from_this<OgrFeatureClass> {
 public:
  OgrFeatureClass(std::shared_ptr<OgrWorkspace> workspace, OGRLayer* layer);

  std::string Name() const override { return name_; }
  std::string FullPath() const override;
  std::shared_ptr<Workspace> GetWorkspace() const override { return workspace_; }
  const std::vector<Field>& Fields() const override { return fields_; }
  void AddField(const Field& field) override;
  GeometryType ShapeType() const override;
  bool HasZ() const override;
  bool HasM() const override;
  SpatialReference GetSpatialReference() const override { return spatialReference_; }
  Envelope Extent() override;
  std::int64_t FeatureCount(const std::string& where = "") override;
  std::unique_ptr<FeatureCursor> Search(const std::string& where = "") override;
  std::unique_ptr<FeatureCursor> SearchOids(const std::vector<std::int64_t>& oids) override;
  std::vector<std::int64_t> Select(const std::string& where) override;
  std::unique_ptr<InsertCursor> Insert() override;
  std::unique_ptr<UpdateCursor> Update(const std::string& where = "") override;
  std::unique_ptr<AttributeUpdateCursor> UpdateAttributes(const std::vector<int>& fieldIndexes) override;

  OgrWorkspace& Store() const { return *workspace_; }
  // The OGR layer the class reads and writes; throws when the class is gone
  // (made in an edit session that did not commit).
  OGRLayer& Layer() const;
  OGRLayer* LayerIfAny() const noexcept { return layer_; }
  // Points the class at another layer of the same class (a staged copy, or
  // the store reopened after a commit); nullptr when the class is gone.
  void Rebind(OGRLayer* layer, bool staged);
  bool Staged() const { return staged_; }
  // The class's .shp as it now lies on disk (for a shapefile: a staged
  // copy during a session).
  std::string StorageFullPath() const;
  // Reads an OGR feature into the class's value layout.
  Feature ToFeature(OGRFeature& source) const;
  // Writes values and shape of a feature into an OGR feature of this layer.
  void FromFeature(const Feature& source, OGRFeature& target) const;
  // Writes one value into OGR field index of an OGR feature of this layer,
  // converted as the store's field requires.
  static void SetOgrField(OGRFeature& target, int index, const Value& value);
  // Applies the where clause to the layer (throws when OGR rejects it).
  void ApplyFilter(const std::string& where);
  // Throws when GDAL recorded a failure since the last reset (a query that
  // the store rejected only when it ran).
  void ThrowIfReadFailed(const std::string& where) const;

 private:
  void ReadFields();

  std::shared_ptr<OgrWorkspace> workspace_;
  OGRLayer* layer_;
  bool staged_ = false;
  std::string name_;
  std::vector<Field> fields_;
  SpatialReference spatialReference_;
};

// Fails (DamagedData) when GDAL reported a failure while reading the
// feature just read.
void CheckFeatureRead(const OgrFeatureClass& featureClass, const OGRFeature& feature);

// Field description of an OGR field, and the OGR definition of a Field.
Field FieldFromOgr(const OGRFieldDefn& defn, WorkspaceKind kind);
std::unique_ptr<OGRFieldDefn> OgrFromField(const Field& field, WorkspaceKind kind);

}  // namespace tarnwick::platform::internal
