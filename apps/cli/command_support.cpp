#include "command_support.h"

#include <cstdio>
#include <filesystem>

#include "commands.h"
#include "platform/dataset_files.h"
#include "platform/errors.h"
#include "platform/file_replace.h"
#include "support/protected_paths.h"
#include "support/unique_names.h"
#include "transforms/transform_checks.h"

namespace tarnwick::cli {

namespace {

// One line: line breaks and tabs of a multi-line reason become blanks.
std::string OneLine(std::string text) {
  for (char& c : text) {
    if (c == '\n' || c == '\r' || c == '\t') c = ' ';
  }
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace

platform::FeatureLayer OpenLayer(const std::string& layerSource) {
  try {
    platform::FeatureLayer layer = platform::OpenFeatureLayer(layerSource);
    if (const std::string damage = platform::FindDatasetDamage(*layer.featureClass); !damage.empty()) {
      throw UsageError("Cannot use the layer '" + layerSource + "': " + damage + ". Nothing was changed.");
    }
    return layer;
  } catch (const platform::PlatformError& e) {
    throw UsageError(e.what());
  }
}

void Refuse(const CheckMessage& refusal, const std::string& whenDeclined) {
  if (refusal.display == CheckMessage::Display::Answered && !whenDeclined.empty()) throw UsageError(whenDeclined);
  throw UsageError(CheckMessageText(refusal));
}

void RequireSpatialReference(const platform::FeatureLayer& layer) { Require(CheckSpatialReference(layer)); }

void RefuseWritingOver(const std::string& role, const std::string& path,
                       const std::vector<std::string>& datasetFiles) {
  if (const std::string dataset = DatasetDestroyedBy(path, datasetFiles); !dataset.empty()) {
    throw UsageError(role + " '" + path + "' would write over '" + dataset +
                     "', which this run reads or writes; choose another path. Nothing was changed.");
  }
}

std::string SettleReportPath(const std::string& given, const std::string& defaultPath, bool overwrite,
                             const std::vector<std::string>& datasetFiles) {
  if (given.empty()) {
    const std::string path = MakeUniquedBASEName(defaultPath);
    RefuseWritingOver("The report", path, datasetFiles);
    return path;
  }
  RefuseWritingOver("--report", given, datasetFiles);
  std::error_code ec;
  if (std::filesystem::exists(given, ec) && !overwrite) {
    throw UsageError("--report '" + given + "': the file already exists; pass --overwrite to replace it.");
  }
  return given;
}

platform::DatasetLock LockForRun(const std::string& datasetPath) {
  try {
    return platform::DatasetLock::Acquire(datasetPath);
  } catch (const platform::PlatformError& e) {
    throw UsageError(std::string(e.what()) + ". Nothing was changed.");
  }
}

void WriteReport(const std::string& path, const std::string& rtf, const std::string& savedWhat) {
  try {
    platform::ReplaceFile(path, {rtf});
  } catch (const platform::PlatformError& e) {
    throw std::runtime_error(savedWhat + ", but the report could not be written: " + e.what());
  }
}

int RunFailed(const std::string& what, const std::string& reason, const std::string& logPath,
              const std::string& logText, const std::string& more) {
  std::fprintf(stderr, "tarnwick: %s: %s\n", what.c_str(), OneLine(reason).c_str());
  std::fprintf(stderr, "Nothing was changed.%s%s\n", more.c_str(),
               logPath.empty() ? "" : (" Error log: " + logPath).c_str());
  if (logPath.empty() && !logText.empty()) std::fprintf(stderr, "%s\n", logText.c_str());
  return kExitRunFailed;
}

}  // namespace tarnwick::cli
