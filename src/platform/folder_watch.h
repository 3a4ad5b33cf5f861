#pragma once

#include <string>

namespace tarvo {

// A folder being watched for files that are made or written; its end ends the watch.
class FolderWatch {
 public:
  virtual ~FolderWatch() = default;

  // The file, in the folder or anywhere below it, that was made or written last since the watch
  // began: its path, which begins with the folder's as it was given; "" when there was none.
  // Symbolic links are not followed, hidden files and folders do not count, and neither does a file
  // that is gone again. Never throws: what cannot be read any more counts as gone.
  virtual std::string NewestFile() = 0;
};

}  // namespace tarvo
