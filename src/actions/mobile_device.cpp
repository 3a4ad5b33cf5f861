#include "actions/mobile_device.h"

#include <string>

#include "actions/copy_file.h"
#include "base/absorb.h"
#include "base/paths.h"
#include "catalogue/drivers_folder.h"
#include "platform/names.h"

namespace tarvo {
namespace {

// A hidden sample makes the command available, but only those that are not hidden are copied. A
// link in the place of either folder is not followed.
void CopySamples(Platform& platform, std::string_view driver, const std::string& to) {
  const std::string from = DriverFolderPath(platform, driver);
  const auto drivers = platform.HoldFolder(FolderOf(from));
  const auto data = platform.HoldFolder(FolderOf(to));
  for (const FolderEntry& file : ListFolder(platform, from, "*.hvd", kNormal)) {
    Absorb([&] { CopyIntoFolder(platform, JoinPath(from, file.name), to); });
  }
}

}  // namespace

void InstallMobileDriver(Platform& platform, std::string_view dataPath, std::string_view driver) {
  const std::string installer = ResolveName(platform, JoinPath(dataPath, "DeviceInstaller"));
  Absorb([&] { CopySamples(platform, driver, installer); });
  Absorb([&] {
    const std::string program = ResolveName(platform, JoinPath(installer, "DeviceInstaller.exe"));
    platform.StartProcess(program, {}, StartWindow::kNormal);
  });
}

void OpenMobileDevice(Platform& platform, std::string_view dataPath) {
  const std::string folder = ResolveName(platform, JoinPath(dataPath, "Win32Device"));
  Absorb([&] {
    platform.OpenByVerb(ResolveName(platform, JoinPath(folder, "PDATarvo.exe")), folder);
  });
}

}  // namespace tarvo
