#pragma once
// Where a feature class's data lies on disk, and whether it is whole.
#include <string>
#include <vector>

#include "platform/workspace.h"

namespace tarnwick::platform {

// The dataset that holds class name of the workspace at workspacePath, as
// one path: a shapefile's .shp, a GeoPackage file or a geodatabase folder.
// The class need not exist yet. A run locks this path.
std::string DatasetPathOf(const std::string& workspacePath, const std::string& name);
std::string DatasetPath(const FeatureClass& featureClass);

// Every file or folder that holds the class's data: a shapefile's companion
// files (.shp, .shx, .dbf, .prj, ... and its metadata document), or the
// GeoPackage file or geodatabase folder. A path to be written must be none
// of these and lie inside none of them.
std::vector<std::string> DatasetFiles(const FeatureClass& featureClass);

// "" when the class's files agree with one another, otherwise what is
// damaged, naming the file (a shapefile cut short, or whose .shp, .shx and
// .dbf disagree on the number of features; a file that is not what its
// name says). Stores that check themselves as they are read say nothing here.
std::string FindDatasetDamage(const FeatureClass& featureClass);

}  // namespace tarnwick::platform
