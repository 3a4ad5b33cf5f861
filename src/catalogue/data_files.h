#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/runtime_error.h"
#include "forms/front_end.h"
#include "platform/platform.h"

namespace tarvo {

// The patterns of data files that the list counts; the first is the default.
inline constexpr std::array<std::string_view, 3> kDataFilePatterns{"*.csv", "*.asc", "*.txt"};

// A driver's folder tree with the number of its data files, read in one walk and then counted
// pattern by pattern with the results, errors and pointer changes of as many separate walks. Hidden
// names do not count, and no symbolic link to a folder is followed.
class DataFileTree {
 public:
  // The tree of a driver whose folder lies in the current folder.
  DataFileTree(Platform& platform, FrontEnd& frontEnd, std::string_view driver)
      : platform_(platform), frontEnd_(frontEnd), driver_(driver) {}

  // The number of files that match kDataFilePatterns[pattern] in the folder and everything below
  // it; the first call reads the tree. Shows the hourglass while it works. Error 9 when a folder
  // has more than 101 subfolders, 75 when they lie more than 2,000 levels deep, 76 for a driver
  // that is a link, or the error of the folder that could not be read.
  int Count(std::size_t pattern);

 private:
  struct Folder {
    std::array<int, kDataFilePatterns.size()> files{};
    std::vector<Folder> subfolders;
    std::optional<RuntimeError> error;  // instead of subfolders and files
  };

  void ReadAll();
  bool Read(const std::string& path, int level, Folder& folder);
  std::vector<std::string> ReadEntries(const std::string& path, Folder& folder);
  bool IsFile(const std::string& path, const FolderEntry& entry);
  int CountFolder(const Folder& folder, std::size_t pattern);

  Platform& platform_;
  FrontEnd& frontEnd_;
  std::string driver_;
  bool isRead_ = false;
  Folder root_;
};

// One count by itself: the files of a driver in the current folder that match a pattern of
// kDataFilePatterns (letter case ignored; the first one when "").
int CSVCount(Platform& platform, FrontEnd& frontEnd, std::string_view driver,
             std::string_view extension = {});

}  // namespace tarvo
