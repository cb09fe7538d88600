#include "support/sorting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tarnwick {
namespace {

TEST(Sorting, KeysAndObjectsStayPaired) {
  // Equal keys may come out in any order, but each object stays with its key.
  std::vector<double> keys{3.5, 1.0, 3.5, -2.0, 1.0, 3.5, 0.0, 7.25};
  std::vector<std::string> objects;
  for (double k : keys) objects.push_back("obj" + std::to_string(k));
  DoubleAscendingWithObjects(keys, objects, 0, static_cast<long>(keys.size()) - 1);
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
  for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(objects[i], "obj" + std::to_string(keys[i]));

  std::mt19937 rng(7);
  std::uniform_int_distribution<int> pick(0, 9);
  std::vector<double> many;
  std::vector<int> ids;
  for (int i = 0; i < 500; ++i) {
    many.push_back(pick(rng));
    ids.push_back(static_cast<int>(many.back()) * 1000 + i);
  }
  DoubleAscendingWithObjects(many, ids, 0, 499);
  EXPECT_TRUE(std::is_sorted(many.begin(), many.end()));
  for (std::size_t i = 0; i < many.size(); ++i) EXPECT_EQ(ids[i] / 1000, static_cast<int>(many[i]));
}

TEST(Sorting, SubrangesAndTexts) {
  std::vector<double> keys{9, 8, 3, 1, 2, 0};
  std::vector<int> objects{0, 1, 2, 3, 4, 5};
  DoubleAscendingWithObjects(keys, objects, 2, 4);
  EXPECT_EQ(keys, (std::vector<double>{9, 8, 1, 2, 3, 0}));
  EXPECT_EQ(objects, (std::vector<int>{0, 1, 3, 4, 2, 5}));
  EXPECT_THROW(DoubleAscendingWithObjects(keys, objects, 0, 6), RoutineError);

  std::vector<std::string> texts{"b", "B", "a", "ab", "", "a"};
  StringsAscending(texts, 0, 5);
  EXPECT_EQ(texts, (std::vector<std::string>{"", "B", "a", "a", "ab", "b"}));
}

}  // namespace
}  // namespace tarnwick
