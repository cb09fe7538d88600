#include "shell/field_histories.h"

#include <string>

#include "shell/extension.h"
#include "support/text_operations.h"

namespace tarnwick {

namespace {

struct HistoryPlace {
  std::string& list;
  const char* builtIn;
};

HistoryPlace PlaceOf(clsExtension& extension, FieldHistory history) {
  switch (history) {
    case FieldHistory::StandID: return {extension.StandIDHistory, "StandID,Stand_ID,ID"};
    case FieldHistory::XSpacing: return {extension.XSpacingHistory, "X,Width,X_Space,X_Spacing"};
    case FieldHistory::YSpacing: return {extension.YSpacingHistory, "Y,Height,Y_Space,Y_Spacing"};
    case FieldHistory::PlotCount: return {extension.PlotCountHistory, "PlotCount,Number,Plots,Count,Plot_Count"};
    case FieldHistory::Orientation:
      return {extension.OrientationHistory, "Orientation,Direction,Bearing,Orient,Dir,Bear"};
    case FieldHistory::ExistingID: break;
  }
  return {extension.ExistingIDHistory, "ExistingID,Stand_ID,ID"};
}

}  // namespace

bool NameInHistory(clsExtension& extension, FieldHistory history, std::string_view name) {
  HistoryPlace place = PlaceOf(extension, history);
  if (place.list.empty()) place.list = place.builtIn;
  for (const std::string& item : ParseString(place.list, ",")) {
    if (EqualsIgnoreCase(item, name)) return true;
  }
  return false;
}

void AddFieldNameToHistory(clsExtension& extension, FieldHistory history, std::string_view name) {
  if (TrimBlanks(name).empty() || NameInHistory(extension, history, name)) return;
  PlaceOf(extension, history).list += "," + std::string(name);
}

}  // namespace tarnwick
