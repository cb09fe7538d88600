#pragma once
// Whole outputs compared against expected files under tests/golden/.
#include <string>
#include <utility>
#include <vector>

namespace tarnwick::testkit {

// Expects `actual`, with each mask's first text replaced by its second (a
// temp folder, a date), to equal the golden file `name`. With
// TARNWICK_UPDATE_GOLDEN=1 in the environment the file is written instead.
void ExpectGolden(std::string actual, const std::string& name,
                  const std::vector<std::pair<std::string, std::string>>& masks = {});

}  // namespace tarnwick::testkit
