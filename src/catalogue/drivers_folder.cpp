#include "catalogue/drivers_folder.h"

#include "base/absorb.h"
#include "base/paths.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::string_view kDrivers = "Drivers";

bool CurrentFolderIsThere(Platform& platform) {
  return Absorb([&] { platform.CurrentFolder(); });
}

void EnterBase(Platform& platform, std::string_view baseDirectory) {
  platform.ChangeCurrentFolder(ResolveName(platform, baseDirectory));
}

// Goes up from the current folder until one holds `Drivers`, or to the root. Gives the folder
// reached.
std::string ClimbToDrivers(Platform& platform) {
  std::string here = platform.CurrentFolder();
  while (!FolderExists(platform, kDrivers)) {
    platform.ChangeCurrentFolder("..");
    std::string above = platform.CurrentFolder();
    if (above == here) break;
    here = std::move(above);
  }
  return here;
}

}  // namespace

std::string EnterDriversFolder(Platform& platform, std::string_view baseDirectory) {
  if (!CurrentFolderIsThere(platform)) EnterBase(platform, baseDirectory);
  std::string holder = ClimbToDrivers(platform);
  if (!FolderExists(platform, kDrivers) || platform.IsDriveRoot(holder)) {
    EnterBase(platform, baseDirectory);
    holder = platform.CurrentFolder();
    platform.MakeFolder(ResolveName(platform, JoinPath(holder, kDrivers)));
  }
  platform.ChangeCurrentFolder(ResolveName(platform, JoinPath(holder, kDrivers)));
  return holder;
}

std::string DriverFolderPath(Platform& platform, std::string_view driver) {
  const std::string drivers = JoinPath(platform.CurrentFolder(), kDrivers);
  return ResolveName(platform, JoinPath(drivers, driver));
}

}  // namespace tarvo
