#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// A driver is nothing but a folder in the `Drivers` directory; the folder's name is its only
// identity.

// Makes the `Drivers` directory current: the nearest folder "drivers", in any letter case, in the
// current folder or above it, except in a drive's root; else "Drivers" in the base directory, which
// is made. Gives the path of the folder that holds it. Where the current folder has vanished, as
// with a disk that was taken out and put back, the search begins in the base directory. A failure
// leaves the current folder where the search had come to.
std::string EnterDriversFolder(Platform& platform, std::string_view baseDirectory);

// The path of a driver's folder below the current folder, which holds the `Drivers` directory once
// the list has been built. Error 76 when the current folder has vanished.
std::string DriverFolderPath(Platform& platform, std::string_view driver);

}  // namespace tarvo
