#pragma once

#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Installs the hand-held components that lie as packages (".pkg") in the data folder: one goes into
// the driver's folder, the others into the folders "DeviceInstaller", "DeviceInstaller/Palm
// Kestrel" and "Win32Device" of the data folder, which are made also when there is nothing to put
// into them. The driver's sample file is copied into "Win32Device". Members lie directly in their
// folder under their bare names. Every failure is passed over: a package that is missing or damaged
// is skipped.
void InstallHandHeldPackages(Platform& platform, std::string_view dataPath,
                             std::string_view driverFolder);

}  // namespace tarvo
