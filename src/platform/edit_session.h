#pragma once
// One run's changes to the user's data, all or nothing. A tool starts a
// session, makes every change through the workspaces it joined (new and
// replaced classes, added fields, inserts, updates, metadata documents) and
// commits once, before it declares success. Whatever ends the run otherwise
// (an error, Ctrl-C, an exception from anywhere) discards the changes when
// the session goes out of scope: a GeoPackage's or file geodatabase's
// transaction rolls back, a shapefile's new files are thrown away, and an
// output being replaced is still there.
//
// Writers that bypass the cursors run inside the session too, as long as
// they write through the workspace's own connection (SQL on a GeoPackage's
// dataset shares its transaction) or, for a shapefile, into the files of the
// class's session copy (the class's storage path once it is being written).
#include <memory>
#include <string>
#include <vector>

#include "platform/workspace.h"

namespace tarnwick::platform {

class EditSession {
 public:
  EditSession() = default;
  // Discards the changes of every workspace not committed.
  ~EditSession();
  EditSession(const EditSession&) = delete;
  EditSession& operator=(const EditSession&) = delete;

  // Starts editing the workspace, once. Throws PlatformError when it cannot
  // be edited (read-only, or left unclean by an earlier run).
  void Join(const std::shared_ptr<Workspace>& workspace);
  // Joins the class's workspace and returns the class, to be written.
  const std::shared_ptr<FeatureClass>& Edit(const std::shared_ptr<FeatureClass>& featureClass);
  // The workspace at path, joined. A store that did not exist is made, and
  // removed again when the session does not commit.
  std::shared_ptr<Workspace> OpenWorkspace(const std::string& path);

  // Saves the changes of every workspace, in the order they joined. Throws
  // PlatformError when one cannot be saved; the ones not saved by then are
  // discarded.
  void Commit();

 private:
  std::vector<std::shared_ptr<Workspace>> workspaces_;
  std::vector<std::string> madeStores_;  // stores this session made
};

}  // namespace tarnwick::platform
