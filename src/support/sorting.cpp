#include "support/sorting.h"

namespace tarnwick {

void StringsAscending(std::vector<std::string>& texts, long low, long high) {
  Guarded("StringsAscending", "QuickSort", [&] {
    if (low >= high) return;
    if (low < 0 || high >= static_cast<long>(texts.size()))
      RaiseError(kErrSubscriptOutOfRange, "QuickSort", "Subscript out of range");
    detail::QuickSortRange(texts, low, high, [&](long a, long b) { std::swap(texts.at(a), texts.at(b)); });
  });
}

}  // namespace tarnwick
