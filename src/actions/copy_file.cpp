#include "actions/copy_file.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::size_t kPiece = 256 * 1024;

void CopyBytes(File& from, File& to) {
  for (std::uint64_t offset = 0;;) {
    const std::string bytes = from.ReadAt(offset, kPiece);
    if (bytes.empty()) return;
    to.WriteAt(offset, bytes);
    offset += bytes.size();
  }
}

// A hidden name beside the target, the same at every run: what a killed run has left is used up.
std::string UnfinishedName(std::string_view folder, std::string_view name) {
  return JoinPath(folder, "." + std::string(name) + ".unfinished");
}

void RemoveIfThere(Platform& platform, const std::string& path) {
  try {
    platform.RemoveFile(path);
  } catch (const RuntimeError&) {
    // As a rule there is none; whoever makes the file will tell of anything else.
  }
}

}  // namespace

void CopyIntoFolder(Platform& platform, std::string_view file, std::string_view folder) {
  const auto source = platform.OpenFile(ResolveName(platform, file), OpenFor::kReading);
  const std::string target = ResolveName(platform, JoinPath(folder, FileNameOf(file)));
  const std::string unfinished = UnfinishedName(folder, FileNameOf(file));
  RemoveIfThere(platform, unfinished);
  try {
    CopyBytes(*source, *platform.MakeFile(unfinished, FileUse::kData));
    platform.RenameFile(unfinished, target);
  } catch (...) {
    RemoveIfThere(platform, unfinished);
    throw;
  }
}

}  // namespace tarvo
