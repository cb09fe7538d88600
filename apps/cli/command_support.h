#pragma once
// Checks and outputs the subcommands share.
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/dataset_lock.h"
#include "platform/workspace.h"
#include "presentation/dialog_checks.h"

namespace tarnwick::cli {

struct CommandContext;

// Opens "PATH" or "PATH|layername=NAME"; a layer that cannot be opened, or
// whose files are damaged or not what their names say, is a usage error
// naming the file and the reason.
platform::FeatureLayer OpenLayer(const std::string& layerSource);

// A check of the library that refused: the dialog's title and text as a
// usage error (exit 2). A question the user declined (the terminal answers
// No unless --overwrite is given) has been printed already; whenDeclined
// then says in one line what to do instead.
[[noreturn]] void Refuse(const CheckMessage& refusal, const std::string& whenDeclined = "");

inline void Require(const std::optional<CheckMessage>& refusal, const std::string& whenDeclined = "") {
  if (refusal) Refuse(*refusal, whenDeclined);
}

template <class T>
T Require(Checked<T> checked, const std::string& whenDeclined = "") {
  if (const auto* refusal = Refusal(checked)) Refuse(*refusal, whenDeclined);
  return std::get<T>(std::move(checked));
}

// Refuses a layer whose coordinate system is unknown or cannot be used, with
// the dialogs' text.
void RequireSpatialReference(const platform::FeatureLayer& layer);

// Refuses (usage error) a path the run would write (role: "--report") when
// it is one of the run's datasets or lies inside one.
void RefuseWritingOver(const std::string& role, const std::string& path,
                       const std::vector<std::string>& datasetFiles);

// The report's path: the one given, refused when it exists without
// --overwrite or when it would write over one of the run's datasets; else
// the default beside the output, numbered to a free name when taken.
std::string SettleReportPath(const std::string& given, const std::string& defaultPath, bool overwrite,
                             const std::vector<std::string>& datasetFiles);

// Takes the lock of the dataset the run changes; another run holding it is
// a usage error saying that the dataset is in use.
platform::DatasetLock LockForRun(const std::string& datasetPath);

// Writes the RTF report, in place only once complete. A report that cannot
// be written fails the command (exit 1), saying what the run did save.
void WriteReport(const std::string& path, const std::string& rtf, const std::string& savedWhat);

// What RunFailed adds when the run's failure report went to stdout.
inline constexpr const char* kFailureReportOnStdout = " The failure report is on standard output.";

// Tells a failed run on stderr: what went wrong first, in one line, then
// that nothing was changed and where the error log is (the log's whole text
// when it could not be written). Returns kExitRunFailed.
int RunFailed(const std::string& what, const std::string& reason, const std::string& logPath,
              const std::string& logText, const std::string& more = "");

}  // namespace tarnwick::cli
