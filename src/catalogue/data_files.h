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
// names do not count, and no symbolic link to a folder is followed inside the driver.
class DataFileTree {
 public:
  // Reads the tree of a driver whose folder lies in the current folder. Never fails: what cannot be
  // read fails when it is counted.
  DataFileTree(Platform& platform, std::string_view driver);

  // The number of files that match kDataFilePatterns[pattern] in the folder and everything below
  // it. Shows the hourglass while counting. Error 9 when a folder has more than 101 subfolders, or
  // the error of the folder that could not be read.
  int Count(FrontEnd& frontEnd, std::size_t pattern) const;

 private:
  struct Folder {
    std::array<int, kDataFilePatterns.size()> files{};
    std::vector<Folder> subfolders;
    std::optional<RuntimeError> error;  // instead of subfolders and files
  };

  static bool Read(Platform& platform, const std::string& path, Folder& folder);
  static int CountFolder(FrontEnd& frontEnd, const Folder& folder, std::size_t pattern);

  Folder root_;
};

// One count by itself: the files of a driver in the current folder that match a pattern of
// kDataFilePatterns (letter case ignored; the first one when "").
int CSVCount(Platform& platform, FrontEnd& frontEnd, std::string_view driver,
             std::string_view extension = {});

}  // namespace tarvo
