#include "catalogue/drivers_folder.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::string_view kDrivers = "Drivers";

// The current folder; "" when it has been removed.
std::string PresentFolder(Platform& platform) {
  try {
    return platform.CurrentFolder();
  } catch (const RuntimeError&) {
    return {};
  }
}

// Goes up from the current folder until one holds `Drivers`, or to the root. Gives the folder
// reached.
std::string ClimbToDrivers(Platform& platform) {
  std::string here = PresentFolder(platform);
  while (!here.empty() && !FolderExists(platform, kDrivers)) {
    platform.ChangeCurrentFolder("..");
    std::string above = PresentFolder(platform);
    if (above == here) break;
    here = std::move(above);
  }
  return here;
}

}  // namespace

std::string EnterDriversFolder(Platform& platform, std::string_view baseDirectory) {
  std::string holder = ClimbToDrivers(platform);
  const bool found = !holder.empty() && FolderExists(platform, kDrivers);
  if (!found || platform.IsDriveRoot(holder)) {
    platform.ChangeCurrentFolder(ResolveName(platform, baseDirectory));
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
