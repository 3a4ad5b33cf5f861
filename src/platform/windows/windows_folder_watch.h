#pragma once

#include <memory>
#include <string_view>

#include "platform/folder_watch.h"

namespace tarvo {

// See Platform::WatchFolder. The system's notices tell in which order files were written; a listing
// before and one after find what it has no notice of, for which the files' times stand.
std::unique_ptr<FolderWatch> WatchWindowsFolder(std::string_view folder);

}  // namespace tarvo
