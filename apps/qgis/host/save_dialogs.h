#pragma once
// The desktop's save dialogs: a file dialog for a text file, and one for a new
// dataset that also takes the name of a class inside a .gpkg or .gdb. The tools
// ask about overwriting themselves, so the dialogs never do.
#include <optional>
#include <string>

#include "platform/host/application.h"

class QWidget;

namespace tarnwick::desktop {

// The three kinds of output the dataset dialog offers, by its file filter.
enum class SaveKind { Shapefile, GeoPackage, FileGeodatabase };

// What a path chosen in the file dialog names: a complete choice, or a store
// whose new class still needs its name (classNeeded).
struct SaveTarget {
  platform::host::DatasetSaveChoice choice;
  bool classNeeded = false;
};

// "dir/Plots" with the shapefile filter is shapefile "Plots.shp" in folder
// "dir" ("Folder"); "x.gdb/Plots" is class Plots in a file geodatabase and
// "x.gdb/Trees/Plots" one in its feature dataset Trees; "x.gpkg" (or "x" with
// the GeoPackage filter) is a GeoPackage, this platform's personal
// geodatabase, whose class is yet to be named. A name ending in ".shp" is a
// shapefile whatever the filter.
SaveTarget ClassifySavePath(const std::string& path, SaveKind kind);

// "Trimble Waypoint Files (*.way)|*.way" as a Qt file dialog filter.
std::string QtFileFilter(const std::string& pipedFilter);

std::optional<platform::host::DatasetSaveChoice> BrowseForNewDataset(QWidget* parent, const std::string& title,
                                                                    const std::string& suggestedName);
std::optional<std::string> BrowseForSaveFile(QWidget* parent, const platform::host::FileSaveRequest& request);

}  // namespace tarnwick::desktop
