#pragma once

#include <string_view>
#include <vector>

#include "platform/linux/descriptor.h"
#include "platform/platform.h"

namespace tarvo {

// Lists a folder; see Platform::Entries. Paths longer than the system takes in one call are entered
// in pieces.
std::vector<FolderEntry> ListLinuxFolder(std::string_view folder);

// The two steps of it, for those who ask more about the folder in between. The folder stays open;
// `path` is for the error.
Descriptor OpenLinuxFolder(std::string_view path);
std::vector<FolderEntry> ListOpenFolder(const Descriptor& folder, std::string_view path);

}  // namespace tarvo
