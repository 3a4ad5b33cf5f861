#include "catalogue/folder_deletion.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/absorb.h"
#include "base/paths.h"
#include "catalogue/folder_walk.h"

namespace tarvo {
namespace {

bool IsReadOnly(Platform& platform, const std::string& path) {
  const auto attributes = platform.Attributes(path);
  return attributes && (*attributes & kReadOnly) != 0;
}

void RemoveFileIfPossible(Platform& platform, const std::string& path, const FolderEntry& entry) {
  // A link's attributes would be those of what it leads to.
  if (!entry.isLink && IsReadOnly(platform, path)) return;
  // What stays makes the removal of its folder fail.
  Absorb([&] { platform.RemoveFile(path); });
}

// The folder is held meanwhile, which makes the way to each of many files short.
void RemoveFiles(Platform& platform, const std::string& path,
                 const std::vector<FolderEntry>& entries) {
  const auto held = platform.HoldFolder(path);
  for (const FolderEntry& entry : entries) {
    if (!entry.isFolder) RemoveFileIfPossible(platform, JoinPath(path, entry.name), entry);
  }
}

void DeleteFolder(Platform& platform, FrontEnd& frontEnd, const std::string& path, int level) {
  const HourglassForFolder hourglass(frontEnd);
  if (level > kDeepestLevel) throw RuntimeError(kPathFileAccessError);
  const std::vector<FolderEntry> entries = platform.Entries(path);
  const auto subfolders = std::count_if(entries.begin(), entries.end(),
                                        [](const FolderEntry& entry) { return entry.isFolder; });
  if (static_cast<std::size_t>(subfolders) > kMostSubfolders) {
    throw RuntimeError(kSubscriptOutOfRange);
  }
  for (const FolderEntry& entry : entries) {
    if (entry.isFolder) DeleteFolder(platform, frontEnd, JoinPath(path, entry.name), level + 1);
  }
  RemoveFiles(platform, path, entries);
  platform.RemoveFolder(path);
}

}  // namespace

void DeleteFolderTree(Platform& platform, FrontEnd& frontEnd, std::string_view pth) {
  const std::string_view holder = FolderOf(pth);
  std::unique_ptr<HeldFolder> held;
  if (!holder.empty()) held = platform.HoldFolder(holder);
  if (platform.IsLink(pth)) {
    const HourglassForFolder hourglass(frontEnd);
    platform.RemoveFile(pth);
    return;
  }
  DeleteFolder(platform, frontEnd, std::string(pth), 0);
}

}  // namespace tarvo
