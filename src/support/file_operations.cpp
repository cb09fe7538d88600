#include "support/file_operations.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "errors/error_road.h"
#include "platform/errors.h"
#include "platform/file_replace.h"
#include "platform/host/application.h"
#include "support/sorting.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "MyGeneralOperations";
namespace fs = std::filesystem;
using platform::host::MessageButtons;
using platform::host::MessageIcon;
using platform::host::MessageResult;

// Replaces the file's content with text and one CR LF. The text goes to a
// file beside it first, is forced to the disk and takes the name only once
// all of it is written, so a failure (a full disk, say) leaves the old file
// or none, never half a file.
void WriteWithLineEnd(const std::string& path, std::string_view text) {
  std::error_code ec;
  if (fs::exists(path, ec) && ::access(path.c_str(), W_OK) != 0) {
    RaiseError(platform::kErrPathNotFound, std::string(kModule), "Unable to open file for writing: " + path);
  }
  try {
    platform::ReplaceFile(path, {text, "\r\n"});
  } catch (const platform::PlatformError& e) {
    // The system's reason follows the path in the platform's message.
    const std::string message = e.what();
    const auto reason = message.rfind("': ");
    const std::string because = reason == std::string::npos ? message : message.substr(reason + 3);
    if (e.Number() == platform::kErrPathNotFound) {
      RaiseError(platform::kErrPathNotFound, std::string(kModule),
                 "Unable to open file for writing: " + path + " (" + because + ")");
    }
    RaiseError(platform::kErrPermissionDenied, std::string(kModule),
               "Unable to write file: " + path + " (" + because + ")");
  }
}

bool WriteAsking(platform::host::Application& application, const std::string& path, std::string_view text,
                 bool overwrite) {
  std::error_code ec;
  if (!overwrite && fs::exists(path, ec)) {
    const auto answer = application.MessageBox(
        "File Already Exists!\n  --> " + path + "\nClick 'OK' to overwrite the file, or 'CANCEL' to quit...",
        "File Exists:", MessageButtons::OKCancel, MessageIcon::Exclamation);
    if (answer != MessageResult::OK) return false;
    if (!fs::remove(path, ec) || ec) {
      application.MessageBox("Unable to delete " + path +
                                 "\nIt may be open in another application.  Please delete this file manually "
                                 "or save the text to a new filename.",
                             "Unable to Delete File:", MessageButtons::OK, MessageIcon::Exclamation);
      return false;
    }
  }
  WriteWithLineEnd(path, text);
  return true;
}

void CollectFiles(const fs::path& folder, std::vector<std::string>& files) {
  // directory_iterator never yields "." or "..". Linked folders are not
  // followed, so a link back up the tree cannot loop.
  for (const auto& entry : fs::directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
    if (entry.is_directory()) {
      if (!entry.is_symlink()) CollectFiles(entry.path(), files);
    } else {
      files.push_back(entry.path().string());
    }
  }
}
}  // namespace

std::string ReadTextFile(const std::string& path) {
  return Guarded("ReadTextFile", kModule, [&] {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::string();
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  });
}

bool WriteTextFile(platform::host::Application& application, const std::string& path, std::string_view text,
                   bool overwrite) {
  return Guarded("WriteTextFile", kModule, [&] { return WriteAsking(application, path, text, overwrite); });
}

bool WriteTextFileOverwrite(platform::host::Application& application, const std::string& path,
                            std::string_view text, bool overwrite) {
  return Guarded("WriteTextFileOverwrite", kModule,
                 [&] { return WriteAsking(application, path, text, overwrite); });
}

bool WriteTextFileOverwrite(const std::string& path, std::string_view text) {
  return Guarded("WriteTextFileOverwrite", kModule, [&] {
    WriteWithLineEnd(path, text);
    return true;
  });
}

void ReturnFilesFromNestedFolders2(const std::string& folder, std::vector<std::string>& files) {
  Guarded("ReturnFilesFromNestedFolders2", kModule, [&] {
    CollectFiles(fs::path(folder), files);
    if (!files.empty()) StringsAscending(files, 0, static_cast<long>(files.size()) - 1);
  });
}

bool OpenDoc(const std::string& path) {
  return Guarded("OpenDoc", kModule, [&] {
    // The shell starts the viewer in the background and ends at once, so the
    // viewer is adopted by init: nothing waits for it and no zombie is left.
    // The shell fails when no viewer is installed.
    static constexpr const char* kScript =
        "command -v xdg-open >/dev/null 2>&1 || exit 1; xdg-open \"$1\" >/dev/null 2>&1 </dev/null &";
    const char* argv[] = {"sh", "-c", kScript, "sh", path.c_str(), nullptr};
    pid_t shell = 0;
    if (posix_spawnp(&shell, "sh", nullptr, nullptr, const_cast<char* const*>(argv), environ) != 0) return false;
    int status = 0;
    if (waitpid(shell, &status, 0) != shell) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  });
}

}  // namespace tarnwick
