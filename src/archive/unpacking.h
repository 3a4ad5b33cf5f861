#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "archive/folder_tree.h"
#include "platform/platform.h"

namespace tarvo {

// The name of a file in a folder while it is not complete: hidden, and removed by the next
// unpacking into that folder, or into one above it, if a killed run has left it there. `number`
// tells the files of one folder apart.
std::string UnfinishedName(std::uint32_t number);

// Whether a name is one of these, in any letter case. No package may have such a member: it would
// take the place of another that is not complete.
bool IsUnfinishedName(std::string_view name);

// Puts the files of a tree into a folder, as Package::Unpack promises: nothing is touched before it
// is known that every name is free or a file's, then all files are written under other names, then
// all are renamed. What has not come that far is removed at the end of the object's life.
class Unpacking {
 public:
  // Writes the content of a member into a new file.
  using WriteMember = std::function<void(std::uint32_t member, File& file)>;

  Unpacking(Platform& platform, const Directory& directory, const FolderTree& tree);
  ~Unpacking();
  Unpacking(const Unpacking&) = delete;
  Unpacking& operator=(const Unpacking&) = delete;

  void Run(std::string_view target, const WriteMember& write);

 private:
  struct Place {
    std::string spelling;  // the name of what has the name already; "" for none
    bool exists = false;
  };
  class Listing;

  std::string PathOf(std::uint32_t folder) const;
  std::string UnfinishedPath(std::uint32_t file) const;
  void FindTarget(std::string_view target);
  void FindPlaces();
  void FindPlacesIn(std::uint32_t folder, std::vector<std::uint32_t>& children);
  void MakeFolders();
  void HoldFolderOf(const TreeFile& file);
  void WriteFiles(const WriteMember& write);
  void RenameFiles();

  Platform& platform_;
  const Directory& directory_;
  const FolderTree& tree_;
  std::string target_;
  std::unique_ptr<HeldFolder> held_;  // the target, or the folder that its first parent is made in
  std::unique_ptr<HeldFolder> heldBelow_;  // the one of the tree whose files are at hand
  std::uint32_t heldNumber_ = 0;
  std::vector<std::string> missingParents_;
  std::vector<Place> folders_;            // for each folder of the tree
  std::vector<std::string> spellings_;    // for each file: the existing name, "" for none
  std::uint32_t written_ = 0;             // how many files have been begun
  std::uint32_t renamed_ = 0;             // how many of them are in their places
  std::vector<std::string> madeParents_;  // made above the tree, the highest first
  std::vector<std::uint32_t> made_;       // folders of the tree that were made
  bool isDone_ = false;
};

// Removes what a killed run has left behind in a folder and below it, as far as that is possible.
// No symbolic link is followed.
void RemoveUnfinishedFiles(Platform& platform, const std::string& folder);

}  // namespace tarvo
