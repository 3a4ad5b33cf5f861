#pragma once

#include <sys/stat.h>

#include <map>
#include <string>
#include <unordered_map>

#include "platform/linux/visible_tree.h"

namespace tarvo {

// The files of a folder tree as they were at some moment, to be held against what they are later.
class FolderMemory {
 public:
  void Remember(const WalkedFolder& folder);
  void Remember(const WalkedFolder& folder, const std::string& name, const struct stat& status);

  // Whether a file has been made or written since. Moving the folder that it lies in does not
  // count; a file that has come under this name does.
  bool IsNews(const WalkedFolder& folder, const std::string& name, const struct stat& status) const;

 private:
  struct File {
    FileIdentity identity;
    off_t size;
    timespec written;
    timespec changed;
  };
  using Files = std::unordered_map<std::string, File>;

  static File Describe(const struct stat& status);
  const Files* FilesOf(const WalkedFolder& folder) const;

  std::map<FileIdentity, Files> folders_;
  std::unordered_map<std::string, FileIdentity> identities_;  // by path
};

}  // namespace tarvo
