#pragma once
// The check run before a waypoint conversion: every Plot ID of the features
// that will be converted must be unique.
#include <cstdint>
#include <functional>
#include <string>

#include "platform/workspace.h"

namespace tarnwick {

// "1,500": a count with thousands separators ("#,##0").
std::string FormatThousands(std::int64_t value);

// The two-line progress text shown while the check reads feature `count` of
// `total`: a 30-character bar and a right-aligned percentage.
std::string DuplicateCheckProgressText(std::int64_t count, std::int64_t total);

// Reads the Plot ID (field index plotIdIndex) of every feature of the cursor.
// Returns "" when all are unique, "No Features Found..." for no feature, else
// "Duplicate Plot IDs Found:" with one line per repeated ID, in the order of
// first appearance. Null IDs count as the text "<Null>". onProgress, when
// given, receives the progress text each time it changes (about a hundred
// times in all, so a view can repaint and yield there).
std::string CheckForDuplicatePlotIDs(platform::FeatureCursor& cursor, int plotIdIndex, std::int64_t total,
                                     const std::function<void(const std::string&)>& onProgress = {});

}  // namespace tarnwick
