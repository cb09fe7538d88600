#include "waypoints/duplicate_plot_ids.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "presentation/error_handling.h"

namespace tarnwick {

std::string FormatThousands(std::int64_t value) {
  std::string digits = std::to_string(value < 0 ? -value : value);
  for (int i = static_cast<int>(digits.size()) - 3; i > 0; i -= 3) digits.insert(static_cast<size_t>(i), ",");
  return value < 0 ? "-" + digits : digits;
}

namespace {

// What the progress text shows: the bar's length and the whole percent.
struct ProgressMarks {
  int filled = 0;
  int percent = 0;
  friend bool operator==(const ProgressMarks&, const ProgressMarks&) = default;
};

ProgressMarks MarksAt(std::int64_t count, std::int64_t total) {
  const double ratio = total > 0 ? std::min(static_cast<double>(count) / static_cast<double>(total), 1.0) : 1.0;
  return {static_cast<int>(ratio * 30), static_cast<int>(ratio * 100)};
}

std::string ProgressText(ProgressMarks marks) {
  const std::string percent = std::to_string(marks.percent) + "%";
  const std::string pad(percent.size() < 5 ? 5 - percent.size() : 0, ' ');
  return "Checking for Duplicate Plot ID values:\r\n[" + std::string(static_cast<size_t>(marks.filled), '=') +
         std::string(static_cast<size_t>(30 - marks.filled), '.') + "]" + pad + percent;
}

}  // namespace

std::string DuplicateCheckProgressText(std::int64_t count, std::int64_t total) {
  return ProgressText(MarksAt(count, total));
}

std::string CheckForDuplicatePlotIDs(platform::FeatureCursor& cursor, int plotIdIndex, std::int64_t total,
                                     const std::function<void(const std::string&)>& onProgress) {
  return Guarded("CheckForDuplicatePlotIDs", "...Form = frmLayerID", [&] {
    // Each distinct text once, in the order it first appears, with its count.
    std::vector<std::pair<std::string, std::int64_t>> seen;
    std::unordered_map<std::string, std::size_t> slotOf;
    std::int64_t count = 0;
    std::optional<ProgressMarks> shown;
    while (auto feature = cursor.NextFeature()) {
      ++count;
      if (onProgress) {
        // The text changes some hundred times in all: it is made only then.
        if (const ProgressMarks marks = MarksAt(count, total); marks != shown) {
          shown = marks;
          onProgress(ProgressText(marks));
        }
      }
      const auto& value = feature->values.at(static_cast<size_t>(plotIdIndex));
      std::string text = platform::IsNull(value) ? "<Null>" : platform::ValueToText(value);
      const auto [slot, added] = slotOf.try_emplace(std::move(text), seen.size());
      if (added) {
        seen.emplace_back(slot->first, 1);
      } else {
        ++seen[slot->second].second;
      }
    }
    if (count == 0) return std::string("No Features Found...");
    std::string result;
    for (const auto& [text, n] : seen) {
      if (n < 2) continue;
      if (result.empty()) result = "Duplicate Plot IDs Found:\r\n";
      result += "  --> " + text + ":  n = " + FormatThousands(n) + "\r\n";
    }
    return result;
  });
}

}  // namespace tarnwick
