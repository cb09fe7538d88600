#pragma once
// What every benchmark program shares: its arguments (sizes, then a work
// folder), a stopwatch and the printed table of figures.
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick::bench {

// Reads positional argument index as a count ("10000", "10k", "1m"), or
// returns fallback when it is absent. Throws std::invalid_argument on junk.
std::int64_t CountArgument(int argc, char** argv, int index, std::int64_t fallback);
// The work folder: argument index when given (created if missing), else a
// fresh folder under /tmp named after the program.
std::string WorkFolder(int argc, char** argv, int index, const std::string& program);

class Stopwatch {
 public:
  Stopwatch() : start_(Clock::now()) {}
  double Seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_;
};

// A two-column table: a label and a figure, printed to stdout.
class FigureTable {
 public:
  explicit FigureTable(std::string title) : title_(std::move(title)) {}
  void Add(const std::string& label, const std::string& figure) { rows_.emplace_back(label, figure); }
  void Add(const std::string& label, double figure, int decimals, const std::string& unit = "");
  void Print() const;

 private:
  std::string title_;
  std::vector<std::pair<std::string, std::string>> rows_;
};

// "1.23x (target <= 1.5x: met)" for tool seconds against floor seconds.
std::string RatioText(double toolSeconds, double floorSeconds, double target);
std::int64_t FileSize(const std::string& path);

// Runs a benchmark's main, printing "program: what went wrong" and returning
// 1 when it throws.
int RunBenchmark(const char* program, int (*benchmarkMain)(int, char**), int argc, char** argv);

}  // namespace tarnwick::bench
