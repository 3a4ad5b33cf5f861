#pragma once

#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Copies a driver's sample files ("*.hvd") beside the device installer, over older copies, and
// starts the installer "DeviceInstaller/DeviceInstaller.exe" of the data folder. Every failure is
// passed over: a file that cannot be copied is skipped.
void InstallMobileDriver(Platform& platform, std::string_view dataPath, std::string_view driver);

// Opens the hand-held program "Win32Device/PDATarvo.exe" of the data folder with its own folder as
// working folder. Failures are passed over.
void OpenMobileDevice(Platform& platform, std::string_view dataPath);

}  // namespace tarvo
