#include "testkit/temp_dir.h"

#include <fstream>
#include <random>
#include <sstream>

namespace tarnwick::testkit {

TempDir::TempDir() {
  std::random_device rd;
  auto base = std::filesystem::temp_directory_path();
  do {
    path_ = base / ("tarnwick-test-" + std::to_string(rd()));
  } while (std::filesystem::exists(path_));
  std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace tarnwick::testkit
