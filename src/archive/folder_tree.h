#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "archive/directory.h"

namespace tarvo {

// A folder of the package; the first is the folder that everything is unpacked into.
struct TreeFolder {
  std::uint32_t parent;  // its number, always a lower one; the first is its own parent
  NamePlace name;
};

struct TreeFile {
  std::uint32_t folder;
  std::uint32_t member;
  NamePlace name;  // without the folder
};

// The folders and files that a package makes. Names are those of the directory.
struct FolderTree {
  std::vector<TreeFolder> folders;  // a folder stands behind the one that holds it
  std::vector<TreeFile> files;      // sorted by folder
};

// The tree of a package. Throws InvalidPackage when names clash without regard to letter case, so
// that one file would overwrite another or stand where a folder must be, and when there are too
// many folders.
FolderTree BuildTree(const Directory& directory);

// The tree with every file directly in the first folder. Of files that share a name, in any letter
// case, only the last one of the directory is there.
FolderTree BuildFlatTree(const Directory& directory);

}  // namespace tarvo
