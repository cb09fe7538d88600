#include "support/dataset_creation.h"

#include <array>
#include <filesystem>

#include "errors/error_road.h"
#include "platform/edit_session.h"
#include "platform/host/application.h"
#include "platform/workspace.h"
#include "support/feature_class_rules.h"
#include "support/path_operations.h"
#include "support/text_operations.h"
#include "support/unique_names.h"

namespace tarnwick {

namespace {

using platform::host::MessageButtons;
using platform::host::MessageIcon;
using platform::host::MessageResult;

constexpr char kModule[] = "MyGeneralOperations";

enum class Store { Shapefile, FileGeodatabase, PersonalGeodatabase };

constexpr std::array<const char*, 4> kFileGdbCategories = {"File Geodatabase Feature Class",
                                                           "File Geodatabase Raster Catalog", "File Geodatabase",
                                                           "File Geodatabase Feature Dataset"};
constexpr std::array<const char*, 4> kPersonalGdbCategories = {
    "Personal Geodatabase Feature Class", "Personal Geodatabase Raster Catalog", "Personal Geodatabase",
    "Personal Geodatabase Feature Dataset"};

template <std::size_t N>
bool OneOf(const std::string& text, const std::array<const char*, N>& values) {
  for (const char* v : values) {
    if (EqualsIgnoreCase(text, v)) return true;
  }
  return false;
}

std::optional<Store> StoreOfCategory(const std::string& category) {
  if (EqualsIgnoreCase(category, "Shapefile") || EqualsIgnoreCase(category, "Folder")) return Store::Shapefile;
  if (OneOf(category, kFileGdbCategories)) return Store::FileGeodatabase;
  if (OneOf(category, kPersonalGdbCategories)) return Store::PersonalGeodatabase;
  return std::nullopt;
}

bool EndsWithIgnoreCase(const std::string& text, std::string_view tail) {
  return text.size() >= tail.size() && EqualsIgnoreCase(std::string_view(text).substr(text.size() - tail.size()), tail);
}

bool EndsWithSeparator(const std::string& text) {
  return !text.empty() && (text.back() == '/' || text.back() == '\\');
}

// Cuts a final separator, twice if need be ("dir//" and "dir\/" alike).
std::string CutFinalSeparators(std::string path) {
  for (int i = 0; i < 2 && path.size() > 1 && EndsWithSeparator(path); ++i) path.pop_back();
  return path;
}

bool IsFolder(const std::string& path) {
  std::error_code ec;
  return !path.empty() && std::filesystem::is_directory(path, ec);
}

void ShowNotAWorkspace(platform::host::Application& application, const std::string& path) {
  application.MessageBox("Unable to create Feature Class:\n" + path + " is not a valid workspace...",
                         "Failed to Create Feature Class:", MessageButtons::OK, MessageIcon::Exclamation);
}

}  // namespace

std::shared_ptr<platform::FeatureClass> CreateGDBFeatureClass(const std::shared_ptr<platform::Workspace>& workspace,
                                                              const GDBFeatureClassArgs& args) {
  return Guarded("CreateGDBFeatureClass", kModule, [&]() -> std::shared_ptr<platform::FeatureClass> {
    if (!workspace || TrimBlanks(args.name).empty()) return nullptr;
    platform::GeometryType geometryType = args.geometryType;
    if (args.classIdentifier.empty()) {
      const auto featureClass = ClassForFeatureType(args.featureType, geometryType);
      if (!featureClass) return nullptr;
      geometryType = featureClass->geometryType;
    }
    platform::Workspace::NewFeatureClass newClass;
    newClass.name = args.name;
    newClass.geometryType = geometryType;
    newClass.spatialReference = args.spatialReference;
    newClass.fields = args.extraFields;
    newClass.oidFieldName = NumberedFieldName("Object_ID", 11, args.extraFields);
    newClass.shapeFieldName = "Shape";
    newClass.hasZ = false;
    newClass.hasM = false;
    return workspace->CreateFeatureClass(newClass);
  });
}

std::shared_ptr<platform::FeatureClass> CreateDatasetFeatureClass(platform::host::Application& application,
                                                                  const std::string& datasetName,
                                                                  const GDBFeatureClassArgs& args) {
  return Guarded("CreateDatasetFeatureClass", kModule, [&]() -> std::shared_ptr<platform::FeatureClass> {
    if (TrimBlanks(datasetName).empty()) return nullptr;
    application.MessageBox("Unable to create Feature Class:\n" + datasetName + ":" + args.name +
                               " cannot be made inside a feature dataset: the geodatabases and GeoPackages "
                               "of this platform have no feature datasets.  Please choose the geodatabase "
                               "itself...",
                           "Failed to Create Feature Class:", MessageButtons::OK, MessageIcon::Exclamation);
    return nullptr;
  });
}

std::shared_ptr<platform::FeatureClass> CreateShapefileFeatureClass(
    platform::host::Application& application, const std::string& folder, const std::string& name,
    const platform::SpatialReference& spatialReference, platform::GeometryType geometryType,
    const std::vector<platform::Field>& extraFields, bool addUniqueID, platform::EditSession* session) {
  return Guarded("CreateShapefileFeatureClass", kModule, [&]() -> std::shared_ptr<platform::FeatureClass> {
    std::string directory = EndsWithIgnoreCase(folder, ".shp") ? ReturnDir(folder) : folder;
    const std::string stem = EndsWithIgnoreCase(name, ".shp") ? name.substr(0, name.size() - 4) : name;
    if (!IsFolder(directory)) {
      ShowNotAWorkspace(application, directory);
      return nullptr;
    }
    directory = CutFinalSeparators(directory);

    std::vector<platform::Field> fields;
    if (addUniqueID) {
      platform::Field uniqueID;
      uniqueID.name = NumberedFieldName("Unique_ID", 10, extraFields);
      uniqueID.type = platform::FieldType::Integer;
      uniqueID.length = 8;
      uniqueID.precision = 8;
      fields.push_back(uniqueID);
    }
    fields.insert(fields.end(), extraFields.begin(), extraFields.end());

    const std::string shapefilePath = (EndsWithSeparator(directory) ? directory : directory + "/") + stem + ".shp";
    const auto workspace = session ? session->OpenWorkspace(directory) : platform::Workspace::Open(directory);
    // A session still holds a replaced class's files until it commits.
    if (session ? workspace->NameExists(stem) : ExistFileDir(shapefilePath)) {
      application.MessageBox("The following file already exists:\n" + shapefilePath +
                                 "\n\nPlease select a new filename...",
                             "Duplicate Filename:", MessageButtons::OK, MessageIcon::Exclamation);
      return nullptr;
    }

    platform::Workspace::NewFeatureClass newClass;
    newClass.name = stem;
    newClass.geometryType = geometryType;
    newClass.spatialReference = spatialReference;
    newClass.fields = std::move(fields);
    return workspace->CreateFeatureClass(newClass);
  });
}

std::shared_ptr<platform::FeatureClass> CreateGeneralFeatureClass(platform::host::Application& application,
                                                                  GeneralFeatureClassArgs& args,
                                                                  const SaveDialog& saveDialog) {
  return Guarded("CreateGeneralFeatureClass", kModule, [&]() -> std::shared_ptr<platform::FeatureClass> {
    // Loops until the target is free: an existing class is deleted (Yes) or
    // the name is blanked so that the dialog asks for another (No).
    for (;;) {
      if (TrimBlanks(args.path).empty() || TrimBlanks(args.name).empty()) {
        if (!saveDialog) return nullptr;
        const auto choice = saveDialog(SaveDialogRequest{"Enter", args.startingLocation, args.outputType});
        if (!choice || TrimBlanks(choice->path).empty() || TrimBlanks(choice->name).empty()) return nullptr;
        args.path = choice->path;
        args.name = choice->name;
        args.category = choice->category;
        args.inDataset = choice->inDataset;
        args.datasetName = choice->datasetName;
      } else if (args.outputType == kOutputShapefile) {
        args.category = "Shapefile";
        args.name = SetExtension(args.name, "shp");
        if (!EndsWithSeparator(args.path)) args.path += "/";
      } else if (args.outputType == kOutputFileGeodatabase) {
        args.category = "File Geodatabase Feature Class";
      } else if (args.outputType == kOutputPersonalGeodatabase) {
        args.category = "Personal Geodatabase Feature Class";
      } else {
        application.MessageBox(
            "PROBLEM:  This function can only create shapefiles, file geodatabase feature classes, or \n"
            "personal geodatabase feature classes.  Bailing out...",
            "Invalid Output Type:", MessageButtons::OK, MessageIcon::Exclamation);
        return nullptr;
      }

      const std::optional<Store> store = StoreOfCategory(args.category);
      if (!store) {
        application.MessageBox("Unexpected Feature Class Type (" + args.category +
                                   ")!  Need to write new code for this...",
                               "Unexpected Feature Class Type:", MessageButtons::OK, MessageIcon::Exclamation);
        return nullptr;
      }
      const bool geodatabase = *store != Store::Shapefile;
      const std::string messageName =
          geodatabase && args.inDataset ? args.datasetName + ":" + args.name : args.name;
      args.path = CutFinalSeparators(args.path);

      GDBFeatureClassArgs gdbArgs;
      gdbArgs.name = args.name;
      gdbArgs.featureType = 1;
      gdbArgs.spatialReference = args.spatialReference;
      gdbArgs.geometryType = args.geometryType;
      gdbArgs.extraFields = args.extraFields;
      if (geodatabase && args.inDataset) return CreateDatasetFeatureClass(application, args.datasetName, gdbArgs);

      std::shared_ptr<platform::Workspace> workspace;
      auto open = [&args](const std::string& path) {
        return args.session ? args.session->OpenWorkspace(path) : platform::Workspace::OpenOrCreate(path);
      };
      if (!geodatabase) {
        // A missing folder is left to the shapefile creator, which says so.
        if (IsFolder(args.path)) workspace = open(args.path);
      } else if (EndsWithIgnoreCase(args.path, ".mdb")) {
        application.MessageBox("Unable to create Feature Class:\n" + args.path +
                                   " is a personal geodatabase (.mdb), which cannot be written on this "
                                   "platform.  Please use a GeoPackage (.gpkg) or a file geodatabase (.gdb) "
                                   "instead...",
                               "Failed to Create Feature Class:", MessageButtons::OK, MessageIcon::Exclamation);
        return nullptr;
      } else if (platform::Workspace::KindOfPath(args.path) == platform::WorkspaceKind::ShapefileFolder) {
        ShowNotAWorkspace(application, args.path);
        return nullptr;
      } else {
        workspace = open(args.path);
      }

      if (workspace && CheckIfFeatureClassExists(workspace, args.name)) {
        const MessageResult answer = application.MessageBox(
            "The Feature Class '" + messageName + "' already exists!  Do you wish to overwrite it?",
            "Feature Class Already Exists:", MessageButtons::YesNo, MessageIcon::Question);
        if (answer == MessageResult::Yes) {
          workspace->DeleteFeatureClass(args.name);
        } else {
          args.name.clear();
        }
        continue;
      }

      if (geodatabase) return CreateGDBFeatureClass(workspace, gdbArgs);
      workspace.reset();  // the creator opens the folder afresh (or takes the session's)
      return CreateShapefileFeatureClass(application, args.path, args.name, args.spatialReference,
                                         args.geometryType, args.extraFields, args.addUniqueID, args.session);
    }
  });
}

}  // namespace tarnwick
