#include "platform/linux/linux_folder_watch.h"

#include "base/runtime_error.h"

namespace tarvo {

std::unique_ptr<FolderWatch> WatchLinuxFolder(std::string_view) {
  throw RuntimeError(kPathNotFound);
}

}  // namespace tarvo
