#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// The path of a special folder (kCommonDocuments, kPersonalDocuments) with a separator at its end;
// the separator alone when the system has no such folder.
std::string GetSpecialFolder(Platform& platform, int identifier);

// Makes a folder, and first the one that holds it when that is missing, as far as it is possible: a
// new account has no documents folder yet. Letter case does not matter for what exists. Gives the
// path with its names as they stand on the disk. Failures are for those who use the folder to
// notice.
std::string MadeFolder(Platform& platform, std::string_view path);

}  // namespace tarvo
