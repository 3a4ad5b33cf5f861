#pragma once

#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// Lists a folder; see Platform::Entries. Paths longer than the system takes in one call are entered
// in pieces.
std::vector<FolderEntry> ListLinuxFolder(std::string_view folder);

}  // namespace tarvo
