#pragma once
// Reading and writing whole text files, listing a folder tree, and opening a
// document in the desktop's default viewer.
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::platform::host {
class Application;
}

namespace tarnwick {

// The whole file as text; an empty text when it does not exist.
std::string ReadTextFile(const std::string& path);

// Writes text followed by one CR LF. When the file exists and overwrite is
// false, the user is asked ("File Exists:") whether to replace it. True when
// the text was written.
bool WriteTextFile(platform::host::Application& application, const std::string& path,
                   std::string_view text, bool overwrite);
bool WriteTextFileOverwrite(platform::host::Application& application, const std::string& path,
                            std::string_view text, bool overwrite);
// The same with the file replaced without a question (no host needed).
bool WriteTextFileOverwrite(const std::string& path, std::string_view text);

// Appends the full path of every file in folder and below it to files, then
// sorts the whole list ascending.
void ReturnFilesFromNestedFolders2(const std::string& folder, std::vector<std::string>& files);

// Opens the document with the desktop's default viewer (xdg-open) and
// returns at once. False when the viewer could not be started.
bool OpenDoc(const std::string& path);

}  // namespace tarnwick
