#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tarvo::test {

// What can be told of one file, folder or link from outside.
struct FileRecord {
  std::uint32_t mode = 0;  // the kind of file, too
  std::uint32_t owner = 0;
  std::int64_t written = 0;  // the time of the last change of its content, in ns
  std::int64_t changed = 0;  // of that of anything else, in ns; 0 for a file with several names
  std::string content;       // where a link leads to, for one
  bool operator==(const FileRecord&) const = default;
};

// Path below the tree's folder ("" for the folder itself) and what stands there.
using TreeRecord = std::map<std::string, FileRecord>;

// Everything in a folder and below it. No symbolic link is followed.
TreeRecord RecordTree(const std::string& folder);

// What has been added, removed and changed from one record to the next, a line for each.
std::vector<std::string> Differences(const TreeRecord& before, const TreeRecord& after);

}  // namespace tarvo::test
