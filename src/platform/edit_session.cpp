#include "platform/edit_session.h"

#include <algorithm>
#include <filesystem>

namespace tarnwick::platform {

EditSession::~EditSession() {
  for (const auto& workspace : workspaces_) workspace->StopEditing(false);
  workspaces_.clear();
  for (const auto& store : madeStores_) {
    std::error_code ec;
    std::filesystem::remove_all(store, ec);
  }
}

void EditSession::Join(const std::shared_ptr<Workspace>& workspace) {
  if (std::find(workspaces_.begin(), workspaces_.end(), workspace) != workspaces_.end()) return;
  workspace->StartEditing();
  workspaces_.push_back(workspace);
}

const std::shared_ptr<FeatureClass>& EditSession::Edit(const std::shared_ptr<FeatureClass>& featureClass) {
  Join(featureClass->GetWorkspace());
  return featureClass;
}

std::shared_ptr<Workspace> EditSession::OpenWorkspace(const std::string& path) {
  // A workspace already joined is used again: a second opening could not
  // see the session's changes, and a file geodatabase being edited refuses
  // a second opening for update.
  auto canonical = [](const std::string& p) {
    std::error_code ec;
    const auto c = std::filesystem::weakly_canonical(p, ec);
    return ec ? p : c.string();
  };
  const std::string wanted = canonical(path);
  const auto same = std::find_if(workspaces_.begin(), workspaces_.end(),
                                 [&](const auto& joined) { return canonical(joined->PathName()) == wanted; });
  if (same != workspaces_.end()) return *same;
  std::error_code ec;
  const bool existed = std::filesystem::exists(path, ec);
  auto workspace = Workspace::OpenOrCreate(path);
  if (!existed) madeStores_.push_back(workspace->PathName());
  Join(workspace);
  return workspace;
}

void EditSession::Commit() {
  while (!workspaces_.empty()) {
    const std::shared_ptr<Workspace> workspace = workspaces_.front();
    workspaces_.erase(workspaces_.begin());
    workspace->StopEditing(true);
  }
  madeStores_.clear();
}

}  // namespace tarnwick::platform
