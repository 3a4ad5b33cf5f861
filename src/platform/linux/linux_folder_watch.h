#pragma once

#include <memory>
#include <string_view>

#include "platform/folder_watch.h"

namespace tarvo {

// Begins to watch a folder; see Platform::WatchFolder. The system's notices tell what is written
// meanwhile, and a listing before and after tells what they missed.
std::unique_ptr<FolderWatch> WatchLinuxFolder(std::string_view folder);

}  // namespace tarvo
