#include "common/bench_frame.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fmt/format.h>

namespace tarnwick::bench {

std::int64_t CountArgument(int argc, char** argv, int index, std::int64_t fallback) {
  if (index >= argc) return fallback;
  const std::string text = argv[index];
  std::size_t used = 0;
  const double value = std::stod(text, &used);
  double scale = 1;
  const std::string suffix = text.substr(used);
  if (suffix == "k" || suffix == "K") {
    scale = 1e3;
  } else if (suffix == "m" || suffix == "M") {
    scale = 1e6;
  } else if (!suffix.empty()) {
    throw std::invalid_argument("not a count: '" + text + "'");
  }
  if (value * scale < 1) throw std::invalid_argument("a count must be at least 1: '" + text + "'");
  return static_cast<std::int64_t>(value * scale);
}

std::string WorkFolder(int argc, char** argv, int index, const std::string& program) {
  if (index < argc) {
    std::filesystem::create_directories(argv[index]);
    return argv[index];
  }
  std::string pattern = "/tmp/" + program + "-XXXXXX";
  if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot create a work folder under /tmp");
  return pattern;
}

void FigureTable::Add(const std::string& label, double figure, int decimals, const std::string& unit) {
  Add(label, fmt::format("{:.{}f}{}{}", figure, decimals, unit.empty() ? "" : " ", unit));
}

void FigureTable::Print() const {
  std::size_t width = 0;
  for (const auto& row : rows_) width = std::max(width, row.first.size());
  fmt::print("\n{}\n{}\n", title_, std::string(title_.size(), '-'));
  for (const auto& [label, figure] : rows_) fmt::print("  {:<{}}  {}\n", label, width, figure);
  std::fflush(stdout);
}

std::string RatioText(double toolSeconds, double floorSeconds, double target) {
  if (floorSeconds <= 0) return "n/a";
  const double ratio = toolSeconds / floorSeconds;
  return fmt::format("{:.2f}x (target <= {:.1f}x: {})", ratio, target, ratio <= target ? "met" : "MISSED");
}

std::int64_t FileSize(const std::string& path) {
  std::error_code ec;
  const auto size = std::filesystem::file_size(path, ec);
  return ec ? -1 : static_cast<std::int64_t>(size);
}

int RunBenchmark(const char* program, int (*benchmarkMain)(int, char**), int argc, char** argv) {
  try {
    return benchmarkMain(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s: %s\n", program, e.what());
    return 1;
  }
}

}  // namespace tarnwick::bench
