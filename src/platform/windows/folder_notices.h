#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/windows/handle.h"

namespace tarvo {

// The system's notices of what is made, written or renamed in a folder and everywhere below it. The
// notices have an order, which no clock could tell as finely. There may be less than happened: some
// drives give none, and the system keeps a limited number between two readings.
class FolderNotices {
 public:
  using Order = std::uint64_t;  // counted from 1; 0 for no notice

  // Begins at once, if notices can be had.
  explicit FolderNotices(std::string_view folder);
  ~FolderNotices();
  FolderNotices(const FolderNotices&) = delete;
  FolderNotices& operator=(const FolderNotices&) = delete;

  // Takes the notices that have come since the last call. Does not wait.
  void Read();

  // Takes the next notices; waits for them, but not long. Whether some have come.
  bool Await();

  // The last notice read of a path from the folder; paths are followed through renamings.
  Order LastOf(const std::string& path) const;

  // The last notice read of a path or of any folder on the way to it.
  Order LastOnTheWayTo(std::string_view path) const;

  // Whether notices have been lost, so that the order of the others tells nothing.
  bool AreIncomplete() const { return areIncomplete_; }

 private:
  void Ask();
  void Take(std::size_t size);
  void Keep(DWORD action, const std::string& path);
  void Rename(const std::string& path, const std::string& newPath);

  KernelHandle folder_;
  KernelHandle event_;
  // Written by the system while a request is under way.
  OVERLAPPED request_{};
  std::vector<DWORD> buffer_;
  bool isUnderWay_ = false;

  std::unordered_map<std::string, Order> last_;
  std::string renamed_;  // the name that a notice to come gives another one
  Order count_ = 0;
  bool areIncomplete_ = false;
};

}  // namespace tarvo
