#include "testkit/temp_dir.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tarnwick::testkit {

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tarnwick-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a folder like " + pattern);
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace tarnwick::testkit
