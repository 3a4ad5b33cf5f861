#pragma once

#include <string>
#include <unordered_map>

#include "platform/windows/visible_tree.h"

namespace tarvo {

// The files of a folder tree as they were at some moment, to be held against what they are later.
class FolderMemory {
 public:
  void Remember(const WalkedFolder& folder);
  void Remember(const WalkedFolder& folder, const WalkedFile& file);

  // Whether a file has been made or written since. Moving the folder that it lies in does not
  // count; a file that has come under this name does.
  bool IsNews(const WalkedFolder& folder, const WalkedFile& file) const;

 private:
  struct File {
    std::uint64_t size;
    std::uint64_t written;
  };
  using Files = std::unordered_map<std::string, File>;

  const Files* FilesOf(const WalkedFolder& folder) const;

  std::unordered_map<std::string, Files> folders_;                  // by path
  std::unordered_map<FolderIdentity, std::string> pathsOfFolders_;  // as they were
};

}  // namespace tarvo
