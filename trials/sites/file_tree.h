#pragma once

#include <map>
#include <string>

namespace tarvo::test {

// One thing in a folder.
struct TreeEntry {
  enum class Kind { kFolder, kFile, kLink };

  Kind kind = Kind::kFile;
  unsigned modes = 0;   // of a link none
  std::string content;  // of a file its bytes, of a link where it leads

  bool operator==(const TreeEntry&) const = default;
};

// Everything below a folder, by its path from there with "/". No link is followed.
using FileTree = std::map<std::string, TreeEntry>;

FileTree ReadTree(const std::string& folder);

// Makes a folder hold exactly this again. What is there as it should be is not touched, so that a
// folder in it may be current.
void RestoreTree(const std::string& folder, const FileTree& tree);

}  // namespace tarvo::test
