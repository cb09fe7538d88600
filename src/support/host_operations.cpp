#include "support/host_operations.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "errors/error_road.h"
#include "platform/host/map_document.h"
#include "support/text_operations.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "MyGeneralOperations";

std::string LoginName() {
  // The name the session logged in with; the account of the effective user
  // when there is no controlling terminal (services, CI); then $USER.
  std::array<char, 256> buffer{};
  if (getlogin_r(buffer.data(), buffer.size() - 1) == 0 && buffer[0] != '\0') return buffer.data();
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 4096> scratch{};
  if (getpwuid_r(geteuid(), &entry, scratch.data(), scratch.size(), &found) == 0 && found &&
      found->pw_name)
    return found->pw_name;
  if (const char* user = std::getenv("USER")) return user;
  return {};
}
}  // namespace

std::string ReturnUserName() {
  return Guarded("ReturnUserName", kModule, [&] {
    std::string name = TrimBlanks(LoginName());
    return name.empty() ? std::string("Unknown User") : name;
  });
}

std::string ReturnArcGISVersion(int versionNumber) {
  switch (versionNumber) {
    case 0: return "8.3";
    case 1: return "9.0";
    case 2: return "9.2";
    case 3: return "9.3";
    case 4: return "10.0";
    case 5: return "10.1";
    case 6: return "10.2";
    default: return "Unable to determine ArcGIS Version!";
  }
}

void DeleteGraphicsByName(platform::host::Map& map, std::string_view name) {
  Guarded("DeleteGraphicsByName", kModule, [&] {
    map.DeleteGraphicsByName(name);
  });
}

}  // namespace tarnwick
