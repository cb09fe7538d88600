// Attribute-only updates of a point class: the points are read in batches
// (OID and shape; the attributes too only where whole features must be
// rewritten) and each Set writes the chosen fields of one feature.
//
// A GeoPackage is updated through GDAL's own SQLite connection, so every
// UPDATE belongs to the edit session's transaction and rolls back with it;
// an UPDATE that leaves the geometry column alone does not touch the
// spatial index. Elsewhere, and for field types whose stored form only the
// driver knows (dates), the kept features are rewritten through OGR.
#include <sqlite3.h>

#include <cpl_string.h>

#include "platform/errors.h"
#include "platform/internal/dbf_columns.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "AttributeUpdate";
constexpr std::size_t kBatchSize = 4096;
// Features rewritten through OGR between two writes of what GDAL gathers
// for the layer, so that memory stays flat over a long run.
constexpr int kFeaturesPerSync = 10000;
constexpr int kFirstAttribute = 2;  // slots 0 and 1 of Fields() hold the OID and the shape

std::optional<XY> PointOf(const OGRFeature& feature) {
  const OGRGeometry* shape = feature.GetGeometryRef();
  if (shape == nullptr || shape->IsEmpty()) return std::nullopt;
  if (wkbFlatten(shape->getGeometryType()) != wkbPoint) {
    throw PlatformError(kErrPlatform, "Geometry", "The geometry is not a point");
  }
  return XY{shape->toPoint()->getX(), shape->toPoint()->getY()};
}

bool IsPlainType(OGRFieldType type) {
  return type == OFTInteger || type == OFTInteger64 || type == OFTReal || type == OFTString;
}

// Reads the batches and converts each Set's values as the store's fields
// require; the store's way of writing them is the subclass's.
class AttributeCursor : public AttributeUpdateCursor {
 public:
  AttributeCursor(std::shared_ptr<OgrFeatureClass> featureClass, std::vector<int> ogrIndexes, bool readAttributes)
      : class_(std::move(featureClass)),
        ogrIndexes_(std::move(ogrIndexes)),
        values_(class_->Layer().GetLayerDefn()),
        keepFeatures_(readAttributes) {
    class_->ApplyFilter("");
    if (!readAttributes) {
      IgnoreAttributes(true);
      class_->Layer().ResetReading();
    }
  }
  ~AttributeCursor() override {
    if (class_->LayerIfAny() != nullptr) IgnoreAttributes(false);
  }

  std::span<const PointRow> NextBatch() override {
    rows_.clear();
    features_.clear();
    QuietGdalErrors quiet;
    while (rows_.size() < kBatchSize) {
      OGRFeatureUniquePtr feature(class_->Layer().GetNextFeature());
      if (!feature) {
        class_->ThrowIfReadFailed("");
        break;
      }
      CheckFeatureRead(*class_, *feature);
      rows_.push_back({feature->GetFID(), PointOf(*feature)});
      if (keepFeatures_) features_.push_back(std::move(feature));
    }
    return rows_;
  }

  void Set(std::size_t row, std::span<const Value> values) override {
    if (row >= rows_.size() || values.size() != ogrIndexes_.size()) {
      throw PlatformError(kErrInvalidProcedureCall, kSource,
                          "Set is given a feature or values that the update of '" + class_->Name() + "' lacks");
    }
    for (std::size_t i = 0; i < values.size(); ++i) OgrFeatureClass::SetOgrField(values_, ogrIndexes_[i], values[i]);
    Write(row);
  }

 protected:
  virtual void Write(std::size_t row) = 0;
  // Has the layer read the attributes or only the OID and shape.
  void IgnoreAttributes(bool ignore) {
    if (ignore == ignoring_) return;
    OGRFeatureDefn* defn = class_->Layer().GetLayerDefn();
    CPLStringList ignored;
    if (ignore) {
      for (int i = 0; i < defn->GetFieldCount(); ++i) ignored.AddString(defn->GetFieldDefn(i)->GetNameRef());
    }
    ignoring_ = class_->Layer().SetIgnoredFields(ignore ? const_cast<const char**>(ignored.List()) : nullptr) ==
                    OGRERR_NONE && ignore;
  }
  std::string CannotUpdate(std::int64_t oid) const {
    return "Cannot update feature " + std::to_string(oid) + " of '" + class_->Name() + "'";
  }

  std::shared_ptr<OgrFeatureClass> class_;
  std::vector<int> ogrIndexes_;
  OGRFeature values_;  // the values of the current Set, as the layer's fields take them
  std::vector<PointRow> rows_;
  std::vector<OGRFeatureUniquePtr> features_;  // the batch's whole features, when they are rewritten

 private:
  bool keepFeatures_;
  bool ignoring_ = false;
};

// Rewrites whole features through OGR.
class FeatureRewriteCursor final : public AttributeCursor {
 public:
  FeatureRewriteCursor(std::shared_ptr<OgrFeatureClass> featureClass, std::vector<int> ogrIndexes)
      : AttributeCursor(std::move(featureClass), std::move(ogrIndexes), true) {}

 private:
  void Write(std::size_t row) override {
    OGRFeature& feature = *features_[row];
    for (int index : ogrIndexes_) feature.SetField(index, values_.GetRawFieldRef(index));
    QuietGdalErrors quiet;
    if (class_->Layer().SetFeature(&feature) != OGRERR_NONE) ThrowGdalError(kSource, CannotUpdate(feature.GetFID()));
    if (++written_ >= kFeaturesPerSync) {
      written_ = 0;
      if (class_->Layer().SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot write '" + class_->Name() + "'");
    }
  }

  int written_ = 0;
};

std::string QuotedIdentifier(const std::string& name) {
  std::string quoted = "\"";
  for (char c : name) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

// One prepared UPDATE of the chosen columns per feature, by its fid.
class GeoPackageUpdateCursor final : public AttributeCursor {
 public:
  GeoPackageUpdateCursor(std::shared_ptr<OgrFeatureClass> featureClass, std::vector<int> ogrIndexes, sqlite3* db)
      : AttributeCursor(std::move(featureClass), std::move(ogrIndexes), false), db_(db) {
    OGRLayer& layer = class_->Layer();
    QuietGdalErrors quiet;
    // A class made or changed in this session is written out before SQL meets it.
    if (layer.SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot write '" + class_->Name() + "'");
    std::string sql = "UPDATE " + QuotedIdentifier(layer.GetName()) + " SET ";
    for (std::size_t i = 0; i < ogrIndexes_.size(); ++i) {
      if (i > 0) sql += ", ";
      sql += QuotedIdentifier(layer.GetLayerDefn()->GetFieldDefn(ogrIndexes_[i])->GetNameRef()) + " = ?";
    }
    sql += " WHERE " + QuotedIdentifier(layer.GetFIDColumn()) + " = ?";
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) ThrowSqlite(CannotPrepare());
    statement_.reset(statement);
    // The class's date of last change, as GDAL keeps it when it writes.
    const std::string touch =
        "UPDATE gpkg_contents SET last_change = strftime('%Y-%m-%dT%H:%M:%fZ','now') WHERE lower(table_name) = lower(" +
        QuotedLiteral(layer.GetName()) + ")";
    if (sqlite3_exec(db_, touch.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) ThrowSqlite(CannotPrepare());
  }

 private:
  static std::string QuotedLiteral(const std::string& text) {
    std::string quoted = "'";
    for (char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
    return quoted + "'";
  }
  std::string CannotPrepare() const { return "Cannot update '" + class_->Name() + "'"; }
  [[noreturn]] void ThrowSqlite(const std::string& what) const {
    throw PlatformError(kErrPlatform, kSource, what + ": " + sqlite3_errmsg(db_));
  }

  void Write(std::size_t row) override {
    sqlite3_stmt* statement = statement_.get();
    sqlite3_reset(statement);
    int parameter = 0;
    for (int index : ogrIndexes_) {
      ++parameter;
      if (!values_.IsFieldSetAndNotNull(index)) {
        sqlite3_bind_null(statement, parameter);
        continue;
      }
      switch (values_.GetFieldDefnRef(index)->GetType()) {
        case OFTInteger:
        case OFTInteger64: sqlite3_bind_int64(statement, parameter, values_.GetFieldAsInteger64(index)); break;
        case OFTReal: sqlite3_bind_double(statement, parameter, values_.GetFieldAsDouble(index)); break;
        default: sqlite3_bind_text(statement, parameter, values_.GetFieldAsString(index), -1, SQLITE_TRANSIENT); break;
      }
    }
    const std::int64_t oid = rows_[row].oid;
    sqlite3_bind_int64(statement, parameter + 1, oid);
    if (sqlite3_step(statement) != SQLITE_DONE) ThrowSqlite(CannotUpdate(oid));
    if (sqlite3_changes(db_) != 1) {
      throw PlatformError(kErrPlatform, kSource, CannotUpdate(oid) + ": the feature is not there");
    }
  }

  sqlite3* db_;
  std::unique_ptr<sqlite3_stmt, StatementCloser> statement_;
};

// Writes the chosen columns into the records of the class's staged .dbf.
class DbfUpdateCursor final : public AttributeCursor {
 public:
  DbfUpdateCursor(std::shared_ptr<OgrFeatureClass> featureClass, std::vector<int> ogrIndexes, DbfColumns columns)
      : AttributeCursor(std::move(featureClass), std::move(ogrIndexes), false), columns_(std::move(columns)) {}
  ~DbfUpdateCursor() override = default;

  // The records still held are written when the batches end.
  std::span<const PointRow> NextBatch() override {
    auto rows = AttributeCursor::NextBatch();
    if (rows.empty()) columns_.Finish();
    return rows;
  }

 private:
  void Write(std::size_t row) override {
    if (columns_.Write(rows_[row].oid, values_, ogrIndexes_)) return;
    // The driver writes this record itself, from the whole feature.
    columns_.Finish();
    IgnoreAttributes(false);
    QuietGdalErrors quiet;
    OGRFeatureUniquePtr feature(class_->Layer().GetFeature(rows_[row].oid));
    if (!feature) ThrowGdalError(kSource, CannotUpdate(rows_[row].oid));
    for (int index : ogrIndexes_) feature->SetField(index, values_.GetRawFieldRef(index));
    if (class_->Layer().SetFeature(feature.get()) != OGRERR_NONE || class_->Layer().SyncToDisk() != OGRERR_NONE) {
      ThrowGdalError(kSource, CannotUpdate(rows_[row].oid));
    }
    IgnoreAttributes(true);
    columns_.Reload();
  }

  DbfColumns columns_;
};

}  // namespace

std::unique_ptr<AttributeUpdateCursor> OgrFeatureClass::UpdateAttributes(const std::vector<int>& fieldIndexes) {
  workspace_->RequireWritable("update '" + name_ + "'");
  if (!workspace_->IsBeingEdited()) {
    throw PlatformError(kErrInvalidProcedureCall, kSource, "'" + name_ + "' is not being edited");
  }
  workspace_->PrepareToWrite(*this);
  std::vector<int> ogrIndexes;
  bool plainTypes = true;
  for (int index : fieldIndexes) {
    if (index < kFirstAttribute || static_cast<std::size_t>(index) >= fields_.size()) {
      throw PlatformError(kErrInvalidProcedureCall, kSource, "No attribute field " + std::to_string(index) + " in '" + name_ + "'");
    }
    ogrIndexes.push_back(index - kFirstAttribute);
    plainTypes = plainTypes && IsPlainType(Layer().GetLayerDefn()->GetFieldDefn(index - kFirstAttribute)->GetType());
  }
  auto self = shared_from_this();
  if (plainTypes && workspace_->Kind() == WorkspaceKind::GeoPackage) {
    if (auto* db = static_cast<sqlite3*>(workspace_->Dataset().GetInternalHandle("SQLITE_HANDLE"))) {
      return std::make_unique<GeoPackageUpdateCursor>(self, std::move(ogrIndexes), db);
    }
  }
  if (plainTypes && workspace_->Kind() == WorkspaceKind::ShapefileFolder) {
    if (auto columns = DbfColumns::Open(*this, ogrIndexes)) {
      return std::make_unique<DbfUpdateCursor>(self, std::move(ogrIndexes), std::move(*columns));
    }
  }
  return std::make_unique<FeatureRewriteCursor>(self, std::move(ogrIndexes));
}

}  // namespace tarnwick::platform::internal
