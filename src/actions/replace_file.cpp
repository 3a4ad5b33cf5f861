#include "actions/replace_file.h"

#include <string>

#include "archive/unpacking.h"
#include "base/paths.h"
#include "base/runtime_error.h"

namespace tarvo {
namespace {

constexpr std::size_t kPiece = std::size_t{256} * 1024;

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
  for (std::uint64_t offset = 0;;) {
    const std::string bytes = from.ReadAt(offset, kPiece);
    if (bytes.empty()) return offset;
    to.WriteAt(offset, bytes);
    offset += bytes.size();
  }
}

}  // namespace tarvo
