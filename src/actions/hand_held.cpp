#include "actions/hand_held.h"

#include <string>

#include "actions/copy_file.h"
#include "actions/field_definitions.h"
#include "archive/package.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/names.h"

namespace tarvo {
namespace {

template <typename Step>
void Absorb(Step&& step) {
  try {
    step();
  } catch (const RuntimeError&) {
    // Hand-held components are an extra: a driver is installed without them.
  }
}

class Installer {
 public:
  Installer(Platform& platform, std::string_view dataPath)
      : platform_(platform), dataPath_(dataPath) {}

  std::string Folder(std::string_view name) {
    const std::string path = ResolveName(platform_, JoinPath(dataPath_, name));
    Absorb([&] { platform_.MakeFolder(path); });
    return path;
  }

  void Extract(std::string_view package, std::string_view folder) {
    Package archive(platform_, ResolveName(platform_, JoinPath(dataPath_, package)),
                    PackageKind::kHandHeld);
    if (archive.Check()) return;
    Absorb([&] { archive.UnpackFlat(folder); });
  }

 private:
  Platform& platform_;
  std::string dataPath_;
};

}  // namespace

void InstallHandHeldPackages(Platform& platform, std::string_view dataPath,
                             std::string_view driverFolder) {
  std::unique_ptr<HeldFolder> held;
  Absorb([&] { held = platform.HoldFolder(dataPath); });
  if (!held) return;
  Installer installer(platform, dataPath);
  installer.Extract("Tarvoexe.pkg", driverFolder);
  const std::string deviceInstaller = installer.Folder("DeviceInstaller");
  for (const char* package : {"DeviceInstaller.pkg", "Kestrel.pkg", "MobileInstallers.pkg"}) {
    installer.Extract(package, deviceInstaller);
  }
  const std::string palm = installer.Folder(JoinPath("DeviceInstaller", "Palm Kestrel"));
  installer.Extract("PalmKestrel.pkg", palm);
  const std::string device = installer.Folder("Win32Device");
  installer.Extract("Win32Installer.pkg", device);
  Absorb([&] {
    const std::string sample = SampleFile(platform, driverFolder);
    if (!sample.empty()) CopyIntoFolder(platform, JoinPath(driverFolder, sample), device);
  });
}

}  // namespace tarvo
