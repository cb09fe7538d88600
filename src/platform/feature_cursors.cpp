// Search, insert and update cursors on an OGR layer.
//
// Inside an edit session the session owns every write (see workspace.h);
// Flush only has GDAL write what it gathers for the layer, now and then, so
// that memory stays flat over a long run. A writing cursor outside a session
// keeps a transaction of its own where the store has them (GeoPackage):
// Flush commits it and the cursor's end rolls back what came after the last
// Flush. A shapefile's or geodatabase's Flush writes the layer's header and
// index there.
//
// Reading checks what it reads: a feature that GDAL could not read fails
// with GDAL's reason, and so does a reading of the whole class that ends
// before the count the store announces. (Files that disagree with one
// another without GDAL noticing, such as a .dbf cut short, are found by
// FindDatasetDamage, which the front ends ask of every layer they open.)
#include "platform/errors.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "FeatureCursor";

// The transaction of a writing cursor outside an edit session, opened on
// first use where the store has transactions.
class CursorTransaction {
 public:
  explicit CursorTransaction(OgrWorkspace& store)
      : dataset_(store.Dataset()),
        supported_(!store.IsBeingEdited() && store.Dataset().TestCapability(ODsCTransactions) != FALSE) {}
  ~CursorTransaction() {
    if (open_) dataset_.RollbackTransaction();
  }
  CursorTransaction(const CursorTransaction&) = delete;
  CursorTransaction& operator=(const CursorTransaction&) = delete;

  void Begin() {
    if (supported_ && !open_) open_ = dataset_.StartTransaction() == OGRERR_NONE;
  }
  void Commit(const std::string& className) {
    if (!open_) return;
    open_ = false;
    if (dataset_.CommitTransaction() != OGRERR_NONE) {
      const std::string message = WithGdalReason("Cannot save the edits to '" + className + "'");
      dataset_.RollbackTransaction();
      throw PlatformError(kErrPlatform, kSource, message);
    }
  }

 private:
  GDALDataset& dataset_;
  bool supported_;
  bool open_ = false;
};

// Features written between two writes of what GDAL gathers for a layer in
// an edit session (a GeoPackage's spatial index rows, say), which would
// otherwise grow with the run until its commit.
constexpr int kFeaturesPerSync = 10000;

// What Flush does for a writing cursor; written counts the features since
// the last write of the layer.
void Flush(CursorTransaction& transaction, OgrFeatureClass& featureClass, int& written) {
  const bool inSession = featureClass.Store().IsBeingEdited();
  if (inSession && written < kFeaturesPerSync) return;
  written = 0;
  QuietGdalErrors quiet;
  if (!inSession) transaction.Commit(featureClass.Name());
  if (featureClass.Layer().SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot write '" + featureClass.Name() + "'");
}

[[noreturn]] void ThrowDamaged(const std::string& what) { throw PlatformError(kErrDamagedData, kSource, what); }

// Reads features in the layer's order; a reading of the whole class checks
// that it got as many as the store announces.
class OgrSearchCursor final : public FeatureCursor {
 public:
  OgrSearchCursor(std::shared_ptr<OgrFeatureClass> featureClass, const std::string& where)
      : class_(std::move(featureClass)), where_(where) {
    class_->ApplyFilter(where);
    QuietGdalErrors quiet;
    if (where.empty()) announced_ = class_->Layer().GetFeatureCount(FALSE);
  }
  ~OgrSearchCursor() override {
    if (OGRLayer* layer = class_->LayerIfAny(); layer && !where_.empty()) layer->SetAttributeFilter(nullptr);
  }
  std::optional<Feature> NextFeature() override {
    QuietGdalErrors quiet;
    OGRFeatureUniquePtr feature(class_->Layer().GetNextFeature());
    if (!feature) {
      class_->ThrowIfReadFailed(where_);
      if (announced_ >= 0 && read_ != announced_) {
        ThrowDamaged("'" + class_->FullPath() + "' announces " + std::to_string(announced_) +
                     " features, but only " + std::to_string(read_) + " can be read");
      }
      return std::nullopt;
    }
    CheckFeatureRead(*class_, *feature);
    ++read_;
    return class_->ToFeature(*feature);
  }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  std::string where_;
  std::int64_t announced_ = -1;  // unknown, or a filtered reading
  std::int64_t read_ = 0;
};

class OgrOidCursor final : public FeatureCursor {
 public:
  OgrOidCursor(std::shared_ptr<OgrFeatureClass> featureClass, std::vector<std::int64_t> oids)
      : class_(std::move(featureClass)), oids_(std::move(oids)) {}
  std::optional<Feature> NextFeature() override {
    QuietGdalErrors quiet;
    while (next_ < oids_.size()) {
      OGRFeatureUniquePtr feature(class_->Layer().GetFeature(oids_[next_++]));
      if (!feature) {
        if (CPLGetLastErrorType() >= CE_Failure) {
          ThrowDamaged(WithGdalReason("Feature " + std::to_string(oids_[next_ - 1]) + " of '" + class_->FullPath() +
                                      "' cannot be read"));
        }
        continue;
      }
      CheckFeatureRead(*class_, *feature);
      return class_->ToFeature(*feature);
    }
    return std::nullopt;
  }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  std::vector<std::int64_t> oids_;
  std::size_t next_ = 0;
};

// Moves the class onto its edit copy where the session has one, and opens
// the cursor's transaction outside a session.
OgrFeatureClass& ReadyToWrite(OgrFeatureClass& featureClass, const std::string& what) {
  featureClass.Store().RequireWritable(what);
  featureClass.Store().PrepareToWrite(featureClass);
  return featureClass;
}

class OgrInsertCursor final : public InsertCursor {
 public:
  explicit OgrInsertCursor(std::shared_ptr<OgrFeatureClass> featureClass)
      : class_(std::move(featureClass)),
        transaction_(ReadyToWrite(*class_, "write to '" + class_->Name() + "'").Store()) {}
  Feature CreateFeatureBuffer() override {
    Feature buffer;
    buffer.values.resize(class_->Fields().size());
    return buffer;
  }
  std::int64_t InsertFeature(const Feature& buffer) override {
    QuietGdalErrors quiet;
    transaction_.Begin();
    OGRLayer& layer = class_->Layer();
    OGRFeature feature(layer.GetLayerDefn());
    class_->FromFeature(buffer, feature);
    if (layer.CreateFeature(&feature) != OGRERR_NONE) {
      ThrowGdalError(kSource, "Cannot insert a feature into '" + class_->Name() + "'");
    }
    ++written_;
    return feature.GetFID();
  }
  void Flush() override { internal::Flush(transaction_, *class_, written_); }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  CursorTransaction transaction_;
  int written_ = 0;
};

class OgrUpdateCursor final : public UpdateCursor {
 public:
  OgrUpdateCursor(std::shared_ptr<OgrFeatureClass> featureClass, const std::string& where)
      : class_(std::move(featureClass)),
        transaction_(ReadyToWrite(*class_, "update '" + class_->Name() + "'").Store()) {
    class_->ApplyFilter(where);
    where_ = where;
  }
  ~OgrUpdateCursor() override {
    if (OGRLayer* layer = class_->LayerIfAny(); layer && !where_.empty()) layer->SetAttributeFilter(nullptr);
  }
  std::optional<Feature> NextFeature() override {
    QuietGdalErrors quiet;
    current_.reset(class_->Layer().GetNextFeature());
    if (!current_) {
      class_->ThrowIfReadFailed(where_);
      return std::nullopt;
    }
    CheckFeatureRead(*class_, *current_);
    return class_->ToFeature(*current_);
  }
  void UpdateFeature(const Feature& feature) override {
    if (!current_) throw PlatformError(kErrPlatform, kSource, "No current feature to update in '" + class_->Name() + "'");
    QuietGdalErrors quiet;
    transaction_.Begin();
    class_->FromFeature(feature, *current_);
    if (class_->Layer().SetFeature(current_.get()) != OGRERR_NONE) {
      ThrowGdalError(kSource, "Cannot update feature " + std::to_string(current_->GetFID()) + " of '" + class_->Name() + "'");
    }
    ++written_;
  }
  void Flush() override { internal::Flush(transaction_, *class_, written_); }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  CursorTransaction transaction_;
  OGRFeatureUniquePtr current_;
  std::string where_;
  int written_ = 0;
};

}  // namespace

void CheckFeatureRead(const OgrFeatureClass& featureClass, const OGRFeature& feature) {
  if (CPLGetLastErrorType() < CE_Failure) return;
  std::string reason = CPLGetLastErrorMsg();
  CPLErrorReset();
  // The messages that follow add their own full stop.
  while (!reason.empty() && (reason.back() == '.' || reason.back() == ' ')) reason.pop_back();
  ThrowDamaged("Feature " + std::to_string(feature.GetFID()) + " of '" + featureClass.FullPath() +
               "' cannot be read: " + reason);
}

std::unique_ptr<FeatureCursor> OgrFeatureClass::Search(const std::string& where) {
  return std::make_unique<OgrSearchCursor>(shared_from_this(), where);
}

std::unique_ptr<FeatureCursor> OgrFeatureClass::SearchOids(const std::vector<std::int64_t>& oids) {
  return std::make_unique<OgrOidCursor>(shared_from_this(), oids);
}

std::unique_ptr<InsertCursor> OgrFeatureClass::Insert() { return std::make_unique<OgrInsertCursor>(shared_from_this()); }

std::unique_ptr<UpdateCursor> OgrFeatureClass::Update(const std::string& where) {
  return std::make_unique<OgrUpdateCursor>(shared_from_this(), where);
}

}  // namespace tarnwick::platform::internal
