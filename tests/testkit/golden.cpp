#include "testkit/golden.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "testkit/temp_dir.h"

namespace tarnwick::testkit {

void ExpectGolden(std::string actual, const std::string& name,
                  const std::vector<std::pair<std::string, std::string>>& masks) {
  for (const auto& [text, mask] : masks) {
    for (std::size_t at; !text.empty() && (at = actual.find(text)) != std::string::npos;) {
      actual.replace(at, text.size(), mask);
    }
  }
  const std::filesystem::path path = std::filesystem::path(TARNWICK_GOLDEN_DIR) / name;
  const char* update = std::getenv("TARNWICK_UPDATE_GOLDEN");
  if (update && std::string(update) == "1") {
    std::ofstream(path, std::ios::binary) << actual;
    return;
  }
  ASSERT_TRUE(std::filesystem::exists(path)) << path << " is missing; run with TARNWICK_UPDATE_GOLDEN=1";
  EXPECT_EQ(actual, ReadFile(path)) << "differs from " << path;
}

}  // namespace tarnwick::testkit
