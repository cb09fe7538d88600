#pragma once
// Turning a wished name into one that is not taken yet, for the dialogs'
// default output names, and the test whether a class name is taken.
#include <memory>
#include <string>

namespace tarnwick::platform {
class Workspace;
}

namespace tarnwick {

// True when the workspace holds a feature class or a table of that name (a
// table blocks a feature class too). Errors count as "not there". A
// shapefile name may carry its ".shp".
bool CheckIfFeatureClassExists(const std::shared_ptr<platform::Workspace>& workspace, const std::string& name);

// name when free, else the first free of name_1, name_2, ...
std::string MakeUniqueGDBFeatureClassName(const std::shared_ptr<platform::Workspace>& workspace,
                                          const std::string& name);

// The path when nothing exists there, else the first free of base_1.ext,
// base_2.ext, ... The extension is split off only when its "." stands among
// the last five characters ("roads.shp" has one, "x.shapes" has none).
std::string MakeUniquedBASEName(const std::string& fullPath);

// The same, but a candidate is also taken when its path without the
// extension exists, so that a folder of the same stem blocks the name.
std::string MakeUniqueShapeFilename(const std::string& fullPath);

// The split both makers use: base and extension (with its "."; empty when
// there is none).
struct BaseAndExtension {
  std::string base;
  std::string extension;
};
BaseAndExtension SplitShortExtension(const std::string& fullPath);

}  // namespace tarnwick
