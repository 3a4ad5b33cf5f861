#include "actions/replace_file.h"

#include <algorithm>
#include <string>
#include <vector>

#include "archive/unpacking.h"
#include "base/paths.h"
#include "base/runtime_error.h"

namespace tarvo {
namespace {

constexpr std::uint64_t kMostAtOnce = std::uint64_t{256} * 1024;

void RemoveIfThere(Platform& platform, const std::string& path) {
  try {
    platform.RemoveFile(path);
  } catch (const RuntimeError&) {
    // As a rule there is none; whoever makes the file will tell of anything else.
  }
}

}  // namespace

void ReplaceFile(Platform& platform, std::string_view path,
                 const std::function<void(File&)>& write) {
  const std::string unfinished = JoinPath(FolderOf(path), UnfinishedName(0));
  RemoveIfThere(platform, unfinished);
  try {
    write(*platform.MakeFile(unfinished, FileUse::kData));
    platform.RenameFile(unfinished, path);
  } catch (...) {
    RemoveIfThere(platform, unfinished);
    throw;
  }
}

std::uint64_t CopyBytes(File& from, File& to) {
  std::vector<char> room(std::clamp<std::uint64_t>(from.Size(), 1, kMostAtOnce));
  for (std::uint64_t offset = 0;;) {
    const std::size_t count = from.ReadInto(offset, room);
    if (count == 0) return offset;
    to.WriteAt(offset, {room.data(), count});
    offset += count;
  }
}

}  // namespace tarvo
