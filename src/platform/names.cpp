#include "platform/names.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace tarvo {
namespace {

bool IsFolder(Platform& platform, std::string_view path) {
  const auto attributes = platform.Attributes(path);
  return attributes && (*attributes & kDirectory) != 0;
}

// The entries of a folder, none when it cannot be listed: a name in it then simply is not found.
std::vector<FolderEntry> EntriesOrNone(Platform& platform, std::string_view folder) {
  try {
    return platform.Entries(folder);
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace

std::string ResolveName(Platform& platform, std::string_view path) {
  if (path.empty() || platform.Attributes(path)) return std::string(path);
  const std::string_view name = FileNameOf(path);
  const std::string_view parent = FolderOf(path);
  if (name.empty()) {
    return parent.size() == path.size() ? std::string(path)
                                        : WithSeparator(ResolveName(platform, parent));
  }
  const std::string folder = ResolveName(platform, parent);
  for (const FolderEntry& entry : EntriesOrNone(platform, folder.empty() ? "." : folder)) {
    if (EqualIgnoringCase(entry.name, name)) return JoinPath(folder, entry.name);
  }
  return JoinPath(folder, name);
}

bool FolderExists(Platform& platform, std::string_view path) {
  return IsFolder(platform, ResolveName(platform, path));
}

bool FileExists(Platform& platform, std::string_view path) {
  const auto attributes = platform.Attributes(ResolveName(platform, path));
  return attributes && (*attributes & kDirectory) == 0;
}

std::vector<FolderEntry> ListFolder(Platform& platform, std::string_view folder,
                                    std::string_view pattern, unsigned attributes) {
  std::vector<FolderEntry> result;
  for (FolderEntry& entry : platform.Entries(folder)) {
    if (entry.isHidden && (attributes & kHidden) == 0) continue;
    if (!MatchesPattern(entry.name, pattern)) continue;
    const bool actsAsFolder =
        entry.isFolder || (entry.isLink && IsFolder(platform, JoinPath(folder, entry.name)));
    if (actsAsFolder && (attributes & kDirectory) == 0) continue;
    result.push_back(std::move(entry));
  }
  return result;
}

std::string ReadWholeFile(Platform& platform, std::string_view path) {
  const auto file = platform.OpenFile(ResolveName(platform, path), OpenFor::kReading);
  return file->ReadAt(0, file->Size());
}

}  // namespace tarvo
