#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// Everything in a folder; see Platform::Entries.
std::vector<FolderEntry> ListWindowsFolder(std::string_view path);

// Hands over what the system's listing says of each name in a folder, in its order, except "." and
// "..". Throws 76 when the folder is missing.
void ForEachIn(std::string_view folder, const std::function<void(const WIN32_FIND_DATAW&)>& take);

}  // namespace tarvo
