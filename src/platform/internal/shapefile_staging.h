#pragma once
// A shapefile folder's edit session (platform-internal). Shapefiles have no
// transactions, so every class the session changes or makes is written as a
// complete set of files in a hidden folder inside the workspace folder:
// a changed class starts as a copy of its files, a new one starts empty.
// Commit checks that each set is whole, forces it to the disk and swaps it
// in for the old files one file at a time (each rename replaces a file in
// one step, and the old files are kept as links until every new one is in
// place, so a failed swap puts them back). Whatever ends the session
// otherwise removes the hidden folder, and the old files were never touched.
//
// Each staged class lives in a subfolder of its own, opened by the
// shapefile driver as a folder of one class; its files keep the class's
// name, so the staged class is the same class to everything that reads it.
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <map>
#include <string>

namespace tarnwick::platform::internal {

class ShapefileStaging {
 public:
  // Makes the hidden folder in folder. Throws PlatformError when it cannot.
  explicit ShapefileStaging(std::string folder);
  // Closes the staged files and removes the hidden folder.
  ~ShapefileStaging();
  ShapefileStaging(const ShapefileStaging&) = delete;
  ShapefileStaging& operator=(const ShapefileStaging&) = delete;

  // The staged layer of the class, or nullptr when it is not staged.
  OGRLayer* Find(const std::string& name) const;
  // The folder that holds the class's staged files.
  std::string FolderOf(const std::string& name) const;
  // Copies the class's files (every companion file) from the workspace
  // folder and opens the copy. Throws when the copy cannot be made.
  OGRLayer* CopyIn(const std::string& name);
  // An empty folder for a new class, opened by the driver; the caller makes
  // the layer in it.
  GDALDataset& NewClassFolder(const std::string& name);
  // The class goes at commit: its old files are removed, unless a new class
  // of that name is staged.
  void Delete(const std::string& name);
  bool Deletes(const std::string& name) const;

  // Checks, forces to the disk and swaps in every staged class, and removes
  // the deleted ones. Throws PlatformError when a set is not whole or the
  // swap fails; the workspace folder is then as it was.
  void Commit();

 private:
  struct StagedClass {
    std::string name;
    std::string folder;
    GDALDatasetUniquePtr dataset;
  };
  StagedClass& Add(const std::string& name);
  void SwapIn(const std::string& name, const std::string& stagedFolder);

  std::string workspaceFolder_;
  std::string root_;
  std::map<std::string, StagedClass> classes_;  // by lower-case name
  std::map<std::string, std::string> deleted_;  // lower-case name -> name
  int folders_ = 0;                             // subfolders made so far, for their names
};

}  // namespace tarnwick::platform::internal
