#pragma once
// Taking paths apart and putting them together. Paths on this platform use
// "/", but names typed by users or stored by older documents may use "\",
// so every routine here splits on either separator.
#include <memory>
#include <string>
#include <string_view>

namespace tarnwick::platform {
class Workspace;
namespace host {
class MapDocument;
}
}  // namespace tarnwick::platform

namespace tarnwick {

// The directory part without a closing separator ("/" for a file in the
// root); an empty text when the path has no separator.
std::string ReturnDir(std::string_view path);

// The path up to and including its last separator (the whole path when it
// has none). withSeparator then makes sure it ends in a separator, adding
// "/" (this platform's separator) when missing; false takes a closing
// separator away.
std::string ReturnDir2(std::string_view path, bool withSeparator);

// The part behind the last separator (the whole path when it has none).
std::string ReturnFilename(std::string_view path);
std::string ReturnFilename2(std::string_view path);

// The name without its last ".extension"; a name with no "." stays whole.
std::string ClipExtension(std::string_view name);

// Replaces or adds the file name's extension ("way" or ".way").
std::string SetExtension(std::string_view name, std::string_view extension);

// The absolute, normalised form of a path.
std::string GetFullFileString(std::string_view path);

// True when the operating system can read the attributes of the path (a
// file or a directory); false on any error.
bool ExistFileDir(std::string_view path);

// The path of the map document file (empty for an unsaved run).
std::string GetMxDocPath(const platform::host::MapDocument& document);

// A feature-class path taken apart: its directory (a folder, .gdb or .gpkg),
// whether that exists, the class name, whether the class exists, and the
// opened workspace.
struct FClassPathData {
  std::shared_ptr<platform::Workspace> workspace;
  bool directoryExists = false;
  std::string directory;
  std::string name;
  bool datasetExists = false;
  bool workspaceFound = true;
  // Empty on success; otherwise "Error #n", "Error Source = ...",
  // "Description: ..." on three lines.
  std::string errorText;
};
FClassPathData ConvertFClassPathToWSData(std::string_view path);

}  // namespace tarnwick
