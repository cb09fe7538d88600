// Search, insert and update cursors on an OGR layer.
//
// Writes go inside a transaction where the store has one (GeoPackage). The
// tools flush often (every hundred features and after every stand), and a
// commit, or a file geodatabase's write of its index and header, costs far
// more than a feature, so Flush commits once enough features have gathered
// and the cursor commits the rest when it ends. Readers in this process see
// the edits at once either way: a GeoPackage's workspaces share one
// connection, and a file geodatabase writes each feature to its files. A
// shapefile's header and index are cheap to write, so every Flush writes them.
#include "platform/errors.h"
#include "platform/internal/ogr_errors.h"
#include "platform/internal/ogr_workspace.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "FeatureCursor";
constexpr int kFeaturesPerCommit = 10000;

// A transaction on the workspace's dataset, opened on first use.
class LazyTransaction {
 public:
  explicit LazyTransaction(GDALDataset& dataset)
      : dataset_(dataset), supported_(dataset.TestCapability(ODsCTransactions) != FALSE) {}
  ~LazyTransaction() {
    if (open_) dataset_.CommitTransaction();
  }
  LazyTransaction(const LazyTransaction&) = delete;
  LazyTransaction& operator=(const LazyTransaction&) = delete;

  void Begin() {
    if (supported_ && !open_) open_ = dataset_.StartTransaction() == OGRERR_NONE;
  }
  void Commit(const std::string& className) {
    if (!open_) return;
    open_ = false;
    if (dataset_.CommitTransaction() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot save the edits to '" + className + "'");
  }

 private:
  GDALDataset& dataset_;
  bool supported_;
  bool open_ = false;
};

int FeaturesPerCommit(const OgrFeatureClass& featureClass) {
  return featureClass.Store().Kind() == WorkspaceKind::ShapefileFolder ? 1 : kFeaturesPerCommit;
}

// Commits and writes what the layer still holds in memory (a shapefile's or
// file geodatabase's header and index), so that other programs see the edits.
void Commit(LazyTransaction& transaction, OgrFeatureClass& featureClass) {
  QuietGdalErrors quiet;
  transaction.Commit(featureClass.Name());
  if (featureClass.Layer().SyncToDisk() != OGRERR_NONE) ThrowGdalError(kSource, "Cannot write '" + featureClass.Name() + "'");
}

class OgrSearchCursor final : public FeatureCursor {
 public:
  OgrSearchCursor(std::shared_ptr<OgrFeatureClass> featureClass, const std::string& where)
      : class_(std::move(featureClass)) {
    class_->ApplyFilter(where);
    where_ = where;
  }
  ~OgrSearchCursor() override {
    if (!where_.empty()) class_->Layer().SetAttributeFilter(nullptr);
  }
  std::optional<Feature> NextFeature() override {
    QuietGdalErrors quiet;
    OGRFeatureUniquePtr feature(class_->Layer().GetNextFeature());
    if (!feature) {
      class_->ThrowIfReadFailed(where_);
      return std::nullopt;
    }
    return class_->ToFeature(*feature);
  }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  std::string where_;
};

class OgrOidCursor final : public FeatureCursor {
 public:
  OgrOidCursor(std::shared_ptr<OgrFeatureClass> featureClass, std::vector<std::int64_t> oids)
      : class_(std::move(featureClass)), oids_(std::move(oids)) {}
  std::optional<Feature> NextFeature() override {
    QuietGdalErrors quiet;
    while (next_ < oids_.size()) {
      OGRFeatureUniquePtr feature(class_->Layer().GetFeature(oids_[next_++]));
      if (feature) return class_->ToFeature(*feature);
    }
    return std::nullopt;
  }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  std::vector<std::int64_t> oids_;
  std::size_t next_ = 0;
};

class OgrInsertCursor final : public InsertCursor {
 public:
  explicit OgrInsertCursor(std::shared_ptr<OgrFeatureClass> featureClass)
      : class_(std::move(featureClass)), transaction_(class_->Store().Dataset()) {
    class_->Store().RequireWritable("write to '" + class_->Name() + "'");
  }
  ~OgrInsertCursor() override {
    try {
      if (written_ > 0) Commit(transaction_, *class_);
    } catch (...) {
      // A destructor cannot report; callers who need to know call Flush.
    }
  }
  Feature CreateFeatureBuffer() override {
    Feature buffer;
    buffer.values.resize(class_->Fields().size());
    return buffer;
  }
  std::int64_t InsertFeature(const Feature& buffer) override {
    QuietGdalErrors quiet;
    transaction_.Begin();
    OGRFeature feature(class_->Layer().GetLayerDefn());
    class_->FromFeature(buffer, feature);
    if (class_->Layer().CreateFeature(&feature) != OGRERR_NONE) {
      ThrowGdalError(kSource, "Cannot insert a feature into '" + class_->Name() + "'");
    }
    ++written_;
    return feature.GetFID();
  }
  void Flush() override {
    if (written_ < FeaturesPerCommit(*class_)) return;
    written_ = 0;
    Commit(transaction_, *class_);
  }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  LazyTransaction transaction_;
  int written_ = 0;  // since the last commit
};

class OgrUpdateCursor final : public UpdateCursor {
 public:
  OgrUpdateCursor(std::shared_ptr<OgrFeatureClass> featureClass, const std::string& where)
      : class_(std::move(featureClass)), transaction_(class_->Store().Dataset()) {
    class_->Store().RequireWritable("update '" + class_->Name() + "'");
    class_->ApplyFilter(where);
    where_ = where;
  }
  ~OgrUpdateCursor() override {
    try {
      if (written_ > 0) Commit(transaction_, *class_);
    } catch (...) {
      // A destructor cannot report; callers who need to know call Flush.
    }
    if (!where_.empty()) class_->Layer().SetAttributeFilter(nullptr);
  }
  std::optional<Feature> NextFeature() override {
    QuietGdalErrors quiet;
    current_.reset(class_->Layer().GetNextFeature());
    if (!current_) {
      class_->ThrowIfReadFailed(where_);
      return std::nullopt;
    }
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
  void Flush() override {
    if (written_ < FeaturesPerCommit(*class_)) return;
    written_ = 0;
    Commit(transaction_, *class_);
  }

 private:
  std::shared_ptr<OgrFeatureClass> class_;
  LazyTransaction transaction_;
  OGRFeatureUniquePtr current_;
  std::string where_;
  int written_ = 0;  // since the last commit
};

}  // namespace

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
