#pragma once
// The six lists of field names the tools' dialogs have learnt, kept in
// the extension as comma-separated texts: a field whose name (or alias) is
// in a list is the dialog's first guess for that role. An empty list is
// filled with its built-in names the first time it is looked at.
#include <string_view>

namespace tarnwick {

class clsExtension;

enum class FieldHistory { StandID, XSpacing, YSpacing, PlotCount, Orientation, ExistingID };

// True when the list holds the name, ignoring case.
bool NameInHistory(clsExtension& extension, FieldHistory history, std::string_view name);
// Appends the name unless it is blank or already there.
void AddFieldNameToHistory(clsExtension& extension, FieldHistory history, std::string_view name);

}  // namespace tarnwick
