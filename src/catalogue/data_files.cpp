#include "catalogue/data_files.h"

#include "base/paths.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::size_t kMostSubfolders = 101;

// The hourglass while one folder is counted; the default pointer when it is done, whatever came of
// it.
class HourglassForFolder {
 public:
  explicit HourglassForFolder(FrontEnd& frontEnd) : frontEnd_(frontEnd) {
    frontEnd_.SetMousePointer(kHourglassPointer);
  }
  ~HourglassForFolder() { frontEnd_.SetMousePointer(kDefaultPointer); }
  HourglassForFolder(const HourglassForFolder&) = delete;
  HourglassForFolder& operator=(const HourglassForFolder&) = delete;

 private:
  FrontEnd& frontEnd_;
};

// Whether an entry counts as a file: a link does when it leads to one.
bool IsFile(Platform& platform, const std::string& folder, const FolderEntry& entry) {
  if (entry.isFolder) return false;
  if (!entry.isLink) return true;
  const auto attributes = platform.Attributes(JoinPath(folder, entry.name));
  return attributes && (*attributes & kDirectory) == 0;
}

std::optional<std::size_t> PatternOf(std::string_view name) {
  for (std::size_t i = 0; i < kDataFilePatterns.size(); ++i) {
    if (MatchesPattern(name, kDataFilePatterns[i])) return i;
  }
  return std::nullopt;
}

}  // namespace

DataFileTree::DataFileTree(Platform& platform, std::string_view driver) {
  Read(platform, JoinPath(platform.CurrentFolder(), driver), root_);
}

// Stops at the first failure and returns false: no count gets further than that folder.
bool DataFileTree::Read(Platform& platform, const std::string& path, Folder& folder) {
  std::vector<std::string> subfolders;
  try {
    for (FolderEntry& entry : platform.Entries(path)) {
      if (entry.isHidden) continue;
      if (entry.isFolder) {
        subfolders.push_back(std::move(entry.name));
      } else if (const auto pattern = PatternOf(entry.name);
                 pattern && IsFile(platform, path, entry)) {
        ++folder.files[*pattern];
      }
    }
    if (subfolders.size() > kMostSubfolders) throw RuntimeError(kSubscriptOutOfRange);
  } catch (const RuntimeError& error) {
    folder.error = error;
    return false;
  }
  folder.subfolders.reserve(subfolders.size());
  for (const std::string& name : subfolders) {
    if (!Read(platform, JoinPath(path, name), folder.subfolders.emplace_back())) return false;
  }
  return true;
}

int DataFileTree::Count(FrontEnd& frontEnd, std::size_t pattern) const {
  return CountFolder(frontEnd, root_, pattern);
}

int DataFileTree::CountFolder(FrontEnd& frontEnd, const Folder& folder, std::size_t pattern) {
  const HourglassForFolder hourglass(frontEnd);
  if (folder.error) throw RuntimeError(*folder.error);
  int total = 0;
  for (const Folder& subfolder : folder.subfolders) {
    total += CountFolder(frontEnd, subfolder, pattern);
  }
  return total + folder.files[pattern];
}

int CSVCount(Platform& platform, FrontEnd& frontEnd, std::string_view driver,
             std::string_view extension) {
  std::size_t pattern = 0;
  while (!extension.empty() && !EqualIgnoringCase(kDataFilePatterns[pattern], extension)) {
    if (++pattern == kDataFilePatterns.size()) throw RuntimeError(kInvalidProcedureCall);
  }
  return DataFileTree(platform, driver).Count(frontEnd, pattern);
}

}  // namespace tarvo
