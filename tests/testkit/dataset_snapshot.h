#pragma once
// What a dataset holds and what lies in a folder, as comparable values: a
// run that changed nothing leaves both as they were.
#include <filesystem>
#include <set>
#include <string>

namespace tarnwick::testkit {

// The layer's fields, then each feature's ID, values and shape as text.
std::string Snapshot(const std::string& layerSource);

// Every file and folder below folder, by relative path, leaving out what
// the test harness and the error road write (stdout.txt, stderr.txt, error
// logs, reports).
std::set<std::string> FolderEntries(const std::filesystem::path& folder);

}  // namespace tarnwick::testkit
