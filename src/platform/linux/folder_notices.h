#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/linux/descriptor.h"
#include "platform/linux/visible_tree.h"

namespace tarvo {

// The system's notices (inotify) of what is made, written or moved in folders, each of them watched
// for itself. The notices have an order, which no clock could tell as finely. There may be less
// than happened: the system limits how many folders are watched and how many notices wait to be
// read, and some file systems give none.
class FolderNotices {
 public:
  using Order = std::uint64_t;  // counted from 1; 0 for no notice

  FolderNotices();

  // Begins to watch a folder, if that can be had.
  void Watch(const WalkedFolder& folder);

  // Reads the notices that have come since the last call. Does not wait.
  void Read();

  // Whether a folder is watched.
  bool IsWatched(FileIdentity folder) const { return last_.contains(folder); }

  // The last notice read of a name in a folder.
  Order LastOf(FileIdentity folder, const std::string& name) const;

  // Whether notices have been lost, so that the order of the others tells nothing.
  bool AreIncomplete() const { return areIncomplete_; }

 private:
  void Keep(int watch, std::uint32_t kind, std::string_view name);

  Descriptor source_;
  std::unordered_map<int, FileIdentity> watched_;
  std::map<FileIdentity, std::unordered_map<std::string, Order>> last_;
  Order count_ = 0;
  bool areIncomplete_ = false;
};

}  // namespace tarvo
