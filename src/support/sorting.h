#pragma once
// Recursive quicksorts used for ranking transformations and ordering file
// lists. Equal keys have no guaranteed order.
#include <string>
#include <utility>
#include <vector>

#include "errors/error_road.h"

namespace tarnwick {

inline constexpr long kErrSubscriptOutOfRange = 9;

// (low + high) / 2 rounded to the nearest whole number, a half going to the
// even one, as the pivot index.
inline long QuickSortPivotIndex(long low, long high) {
  const long sum = low + high;
  if (sum % 2 == 0) return sum / 2;
  const long below = (sum - 1) / 2;
  return below % 2 == 0 ? below : below + 1;
}

namespace detail {
template <class Keys, class Swap>
void QuickSortRange(Keys& keys, long low, long high, const Swap& swapAt) {
  long i = low;
  long j = high;
  const auto pivot = keys[QuickSortPivotIndex(low, high)];
  while (i <= j) {
    while (i < high && keys[i] < pivot) ++i;
    while (j > low && pivot < keys[j]) --j;
    if (i <= j) {
      swapAt(i, j);
      ++i;
      --j;
    }
  }
  if (low < j) QuickSortRange(keys, low, j, swapAt);
  if (i < high) QuickSortRange(keys, i, high, swapAt);
}
}  // namespace detail

// Sorts keys[low..high] ascending and moves objects along with them.
template <class Object>
void DoubleAscendingWithObjects(std::vector<double>& keys, std::vector<Object>& objects, long low, long high) {
  Guarded("DoubleAscendingWithObjects", "QuickSort", [&] {
    if (low >= high) return;
    if (low < 0 || high >= static_cast<long>(keys.size()) || high >= static_cast<long>(objects.size()))
      RaiseError(kErrSubscriptOutOfRange, "QuickSort", "Subscript out of range");
    detail::QuickSortRange(keys, low, high, [&](long a, long b) {
      std::swap(keys.at(a), keys.at(b));
      std::swap(objects.at(a), objects.at(b));
    });
  });
}

// Sorts texts[low..high] ascending by their bytes.
void StringsAscending(std::vector<std::string>& texts, long low, long high);

}  // namespace tarnwick
