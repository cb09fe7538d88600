#include "support/path_operations.h"

#include <filesystem>
#include <system_error>

#include "errors/error_road.h"
#include "platform/errors.h"
#include "platform/host/map_document.h"
#include "platform/workspace.h"
#include "support/file_operations.h"
#include "support/text_operations.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "aml_func_mod";
constexpr std::string_view kSeparators = "/\\";

bool EndsInSeparator(std::string_view s) {
  return !s.empty() && kSeparators.find(s.back()) != std::string_view::npos;
}
}  // namespace

std::string ReturnDir(std::string_view path) {
  return Guarded("ReturnDir", kModule, [&] {
    const auto at = path.find_last_of(kSeparators);
    if (at == std::string_view::npos) return std::string();
    if (at == 0) return std::string(path.substr(0, 1));
    return std::string(path.substr(0, at));
  });
}

std::string ReturnDir2(std::string_view path, bool withSeparator) {
  return Guarded("ReturnDir2", kModule, [&] {
    const auto at = path.find_last_of(kSeparators);
    std::string dir(at == std::string_view::npos ? path : path.substr(0, at + 1));
    if (withSeparator) {
      if (!EndsInSeparator(dir)) dir += '/';
    } else if (EndsInSeparator(dir)) {
      dir.pop_back();
    }
    return dir;
  });
}

std::string ReturnFilename(std::string_view path) {
  return Guarded("ReturnFilename", kModule, [&] { return ReturnFilename2(path); });
}

std::string ReturnFilename2(std::string_view path) {
  return Guarded("ReturnFilename2", kModule, [&] {
    const auto at = path.find_last_of(kSeparators);
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
  });
}

std::string ClipExtension(std::string_view name) {
  return Guarded("ClipExtension", kModule, [&] {
    if (name.find('.') == std::string_view::npos) return std::string(name);
    const auto pieces = ParseString(name, ".");
    std::string joined;
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i) {
      if (i > 0) joined += '.';
      joined += pieces[i];
    }
    return joined;
  });
}

std::string SetExtension(std::string_view name, std::string_view extension) {
  return Guarded("SetExtension", kModule, [&] {
    if (!extension.empty() && extension.front() == '.') extension.remove_prefix(1);
    const auto sep = name.find_last_of(kSeparators);
    const auto dot = name.find_last_of('.');
    std::string base(name);
    if (dot != std::string_view::npos && (sep == std::string_view::npos || dot > sep)) base.resize(dot);
    return extension.empty() ? base : base + "." + std::string(extension);
  });
}

std::string GetFullFileString(std::string_view path) {
  return Guarded("GetFullFileString", kModule, [&] {
    return std::filesystem::absolute(std::filesystem::path(path)).lexically_normal().string();
  });
}

bool ExistFileDir(std::string_view path) {
  if (path.empty()) return false;
  std::error_code ec;
  const auto status = std::filesystem::status(std::filesystem::path(path), ec);
  return !ec && std::filesystem::exists(status);
}

std::string GetMxDocPath(const platform::host::MapDocument& document) { return document.Path(); }

FClassPathData ConvertFClassPathToWSData(std::string_view path) {
  FClassPathData data;
  try {
    data.directory = ReturnDir2(path, false);
    data.directoryExists = ExistFileDir(data.directory);
    if (!data.directoryExists) return data;
    data.name = ReturnFilename2(path);

    const std::string lower = ToLowerAscii(data.directory);
    auto endsWith = [&](std::string_view tail) { return lower.ends_with(tail); };
    if (endsWith(".mdb") || endsWith(".gdb") || endsWith(".gpkg")) {
      // Opening an .mdb raises the platform's own error: it cannot be
      // written here.
      data.workspace = platform::Workspace::Open(data.directory);
      data.datasetExists = data.workspace->NameExists(data.name);
    } else if (std::filesystem::is_directory(std::filesystem::path(data.directory))) {
      std::vector<std::string> files;
      ReturnFilesFromNestedFolders2(data.directory, files);
      for (const auto& file : files) {
        if (EqualsIgnoreCase(ReturnFilename2(file), data.name)) {
          data.datasetExists = true;
          break;
        }
      }
      data.workspace = platform::Workspace::Open(data.directory);
    } else {
      data.workspaceFound = false;
    }
  } catch (const platform::PlatformError& e) {
    data.errorText = "Error #" + std::to_string(e.Number()) + "\nError Source = " + e.Source() +
                     "\nDescription: " + e.what();
  } catch (const RoutineError& e) {
    data.errorText = "Error #" + std::to_string(e.Number()) + "\nError Source = " + e.Source() +
                     "\nDescription: " + e.Description();
  } catch (const std::exception& e) {
    data.errorText = "Error #" + std::to_string(platform::kErrInvalidProcedureCall) +
                     "\nError Source = MyGeneralOperations\nDescription: " + e.what();
  }
  return data;
}

}  // namespace tarnwick
