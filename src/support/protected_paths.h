#pragma once
// A run must never write over its own data: an output class or a report
// file that is one of the run's datasets, or lies inside one, is refused.
#include <string>
#include <vector>

namespace tarnwick {

// The first of datasetFiles (files or folders that hold a run's data) that
// writing a file at path would destroy: path is that file or folder, or
// lies inside the folder. "" when none.
std::string DatasetDestroyedBy(const std::string& path, const std::vector<std::string>& datasetFiles);

// True when the two name one class: the same workspace on disk and the same
// class name, ignoring case.
bool IsSameClass(const std::string& workspaceA, const std::string& nameA, const std::string& workspaceB,
                 const std::string& nameB);

}  // namespace tarnwick
