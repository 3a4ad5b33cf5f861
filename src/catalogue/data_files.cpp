#include "catalogue/data_files.h"

#include "base/paths.h"
#include "base/text.h"
#include "catalogue/folder_walk.h"

namespace tarvo {
namespace {

std::optional<std::size_t> PatternOf(std::string_view name) {
  for (std::size_t i = 0; i < kDataFilePatterns.size(); ++i) {
    if (MatchesPattern(name, kDataFilePatterns[i])) return i;
  }
  return std::nullopt;
}

}  // namespace

int DataFileTree::Count(std::size_t pattern) {
  if (!isRead_) {
    frontEnd_.SetMousePointer(kHourglassPointer);
    ReadAll();
    isRead_ = true;
  }
  return CountFolder(root_, pattern);
}

void DataFileTree::ReadAll() {
  try {
    // By its name in the current folder: the system has a shorter way to it than by the whole path.
    if (platform_.IsLink(driver_)) throw RuntimeError(kPathNotFound);
    Read(driver_, 0, root_);
  } catch (const RuntimeError& error) {
    root_.error = error;
  }
}

// Stops at the first failure and returns false: no count gets further than that folder.
bool DataFileTree::Read(const std::string& path, int level, Folder& folder) {
  std::vector<std::string> subfolders;
  try {
    if (level > kDeepestLevel) throw RuntimeError(kPathFileAccessError);
    subfolders = ReadEntries(path, folder);
    if (subfolders.size() > kMostSubfolders) throw RuntimeError(kSubscriptOutOfRange);
  } catch (const RuntimeError& error) {
    folder.error = error;
    return false;
  }
  folder.subfolders.reserve(subfolders.size());
  for (const std::string& name : subfolders) {
    if (!Read(JoinPath(path, name), level + 1, folder.subfolders.emplace_back())) return false;
  }
  return true;
}

// Counts the folder's own files and gives the names of its subfolders.
std::vector<std::string> DataFileTree::ReadEntries(const std::string& path, Folder& folder) {
  std::vector<std::string> subfolders;
  for (FolderEntry& entry : platform_.Entries(path)) {
    if (entry.isHidden) continue;
    if (entry.isFolder) {
      subfolders.push_back(std::move(entry.name));
    } else if (const auto pattern = PatternOf(entry.name); pattern && IsFile(path, entry)) {
      ++folder.files[*pattern];
    }
  }
  return subfolders;
}

// A link counts as a file when it leads to one.
bool DataFileTree::IsFile(const std::string& path, const FolderEntry& entry) {
  if (!entry.isLink) return true;
  const auto attributes = platform_.Attributes(JoinPath(path, entry.name));
  return attributes && (*attributes & kDirectory) == 0;
}

int DataFileTree::CountFolder(const Folder& folder, std::size_t pattern) {
  const HourglassForFolder hourglass(frontEnd_);
  if (folder.error) throw RuntimeError(*folder.error);
  int total = 0;
  for (const Folder& subfolder : folder.subfolders) total += CountFolder(subfolder, pattern);
  return total + folder.files[pattern];
}

int CSVCount(Platform& platform, FrontEnd& frontEnd, std::string_view driver,
             std::string_view extension) {
  std::size_t pattern = 0;
  while (!extension.empty() && !EqualIgnoringCase(kDataFilePatterns[pattern], extension)) {
    if (++pattern == kDataFilePatterns.size()) throw RuntimeError(kInvalidProcedureCall);
  }
  return DataFileTree(platform, frontEnd, driver).Count(pattern);
}

}  // namespace tarvo
