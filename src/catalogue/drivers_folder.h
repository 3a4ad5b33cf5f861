#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// A driver is nothing but a folder in the `Drivers` directory; the folder's name is its only
// identity.

// Makes the `Drivers` directory current: the nearest folder "drivers", in any letter case, in the
// current folder or above it, except in a drive's root; else "Drivers" in the base directory, which
// is made. A failure leaves the current folder where the search had come to.
void EnterDriversFolder(Platform& platform, std::string_view baseDirectory);

// The path of a driver's folder below the current folder, which is that of the program's data as a
// rule.
std::string DriverFolderPath(Platform& platform, std::string_view driver);

}  // namespace tarvo
