#pragma once
// New feature classes for the tools' output: a shapefile in a folder, a class
// in a file geodatabase (.gdb) or in the single-file personal database, which
// on this platform is a GeoPackage (.gpkg). One entry point picks the store,
// settles an existing target with the user, and calls the creator.
//
// "Nothing" is an empty pointer; every caller must test for it.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/field.h"
#include "platform/geometry.h"
#include "platform/spatial_reference.h"

namespace tarnwick::platform {
class EditSession;
class FeatureClass;
class Workspace;
namespace host {
class Application;
}
}  // namespace tarnwick::platform

namespace tarnwick {

// Output types.
inline constexpr long kOutputShapefile = 1;
inline constexpr long kOutputFileGeodatabase = 2;
inline constexpr long kOutputPersonalGeodatabase = 3;

// What the save dialog is asked for, and what the user picked there.
struct SaveDialogRequest {
  std::string title;              // "Enter"
  std::string startingLocation;
  long outputType = kOutputShapefile;  // the one filter offered
};
struct SaveDialogChoice {
  std::string path;      // folder or geodatabase
  std::string name;
  std::string category;  // e.g. "Shapefile", "File Geodatabase Feature Class"
  bool inDataset = false;
  std::string datasetName;
};
// Returns the choice, or nullopt for Cancel. An empty function counts as
// Cancel (the command line has no dialog).
using SaveDialog = std::function<std::optional<SaveDialogChoice>(const SaveDialogRequest&)>;

struct GeneralFeatureClassArgs {
  platform::GeometryType geometryType = platform::GeometryType::Point;
  platform::SpatialReference spatialReference;
  std::string path;  // in/out: folder, .gdb or .gpkg
  std::string name;  // in/out: a shapefile's name comes back with ".shp"
  long outputType = kOutputShapefile;
  std::vector<platform::Field> extraFields;
  std::string startingLocation;  // for the save dialog
  bool inDataset = false;
  std::string datasetName;
  std::string category;  // out
  bool addUniqueID = false;
  // What the grid rule (SpatialGridSize) reads. OGR stores build their own
  // spatial index and take no grid size, so these go no further.
  std::optional<platform::Envelope> envelope;
  long expectedCount = 0;
  // When set, the class is made (and an existing one replaced) inside this
  // edit session: the old class goes only when the session commits.
  platform::EditSession* session = nullptr;
};

// Makes the class, asking through the application whether to overwrite an
// existing one (No, or a blank path or name, goes to the save dialog).
// Nothing after a message box, or when the dialog is cancelled.
std::shared_ptr<platform::FeatureClass> CreateGeneralFeatureClass(platform::host::Application& application,
                                                                  GeneralFeatureClassArgs& args,
                                                                  const SaveDialog& saveDialog = {});

struct GDBFeatureClassArgs {
  std::string name;
  int featureType = 1;
  platform::SpatialReference spatialReference;
  platform::GeometryType geometryType = platform::GeometryType::Point;
  std::vector<platform::Field> extraFields;
  std::string classIdentifier;  // derived from the feature type when empty
};

// A class in a geodatabase or GeoPackage: the geometry field "Shape", the
// object ID "Object_ID" (numbered when an extra field has that name), then
// the extra fields. Nothing for a missing workspace, a blank name or a
// feature type that cannot be created (annotation, or outside 1..11).
std::shared_ptr<platform::FeatureClass> CreateGDBFeatureClass(const std::shared_ptr<platform::Workspace>& workspace,
                                                              const GDBFeatureClassArgs& args);

// A shapefile folder/name.shp, with a "Unique_ID" integer field first when
// addUniqueID. Nothing after a message box when the folder does not exist or
// the file is there already (in the session's view of the folder, when made
// inside one).
std::shared_ptr<platform::FeatureClass> CreateShapefileFeatureClass(
    platform::host::Application& application, const std::string& folder, const std::string& name,
    const platform::SpatialReference& spatialReference, platform::GeometryType geometryType,
    const std::vector<platform::Field>& extraFields, bool addUniqueID, platform::EditSession* session = nullptr);

// Feature datasets do not exist in the stores of this platform: a message
// box says so and Nothing comes back (at once for a blank dataset name).
std::shared_ptr<platform::FeatureClass> CreateDatasetFeatureClass(platform::host::Application& application,
                                                                  const std::string& datasetName,
                                                                  const GDBFeatureClassArgs& args);

}  // namespace tarnwick
