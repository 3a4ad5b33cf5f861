#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tarvo {

// What tells a folder from all others on its drive while it exists, whatever it is called; 0 when
// the system does not say.
using FolderIdentity = std::uint64_t;

// A folder that a walk has come to.
struct WalkedFolder {
  std::string path;  // from the folder that the walk began in; "" for that folder
  FolderIdentity identity = 0;
};

// What a listing says of a file.
struct WalkedFile {
  std::string name;
  std::uint64_t size = 0;
  std::uint64_t written = 0;  // the system's ticks of 100 nanoseconds, universal time
  std::uint64_t made = 0;
};

// Walks a folder and everything below it. Hidden names are left out, links are neither followed nor
// reported. Each folder is reported before anything in it. Folders below that cannot be read are
// left out; throws when the first one cannot (76 when it is missing).
void WalkVisibleTree(std::string_view root,
                     const std::function<void(const WalkedFolder&)>& onFolder,
                     const std::function<void(const WalkedFolder&, const WalkedFile&)>& onFile);

// Ticks of a time.
std::uint64_t TicksOf(const FILETIME& time);

}  // namespace tarvo
