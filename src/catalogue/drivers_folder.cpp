#include "catalogue/drivers_folder.h"

#include "base/paths.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::string_view kDrivers = "Drivers";

// Goes up from the current folder until one holds `Drivers`, or to the root.
void ClimbToDrivers(Platform& platform) {
  while (!FolderExists(platform, kDrivers)) {
    const std::string before = platform.CurrentFolder();
    platform.ChangeCurrentFolder("..");
    if (platform.CurrentFolder() == before) return;
  }
}

}  // namespace

void EnterDriversFolder(Platform& platform, std::string_view baseDirectory) {
  ClimbToDrivers(platform);
  const bool found = FolderExists(platform, kDrivers);
  if (!found || platform.IsDriveRoot(platform.CurrentFolder())) {
    platform.ChangeCurrentFolder(baseDirectory);
    platform.MakeFolder(kDrivers);
  }
  platform.ChangeCurrentFolder(ResolveName(platform, kDrivers));
}

std::string DriverFolderPath(Platform& platform, std::string_view driver) {
  const std::string drivers = ResolveName(platform, JoinPath(platform.CurrentFolder(), kDrivers));
  return JoinPath(drivers, driver);
}

}  // namespace tarvo
