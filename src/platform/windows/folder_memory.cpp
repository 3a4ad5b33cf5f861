#include "platform/windows/folder_memory.h"

namespace tarvo {

void FolderMemory::Remember(const WalkedFolder& folder) {
  folders_[folder.path];
  if (folder.identity != 0) pathsOfFolders_[folder.identity] = folder.path;
}

void FolderMemory::Remember(const WalkedFolder& folder, const WalkedFile& file) {
  folders_[folder.path][file.name] = {file.size, file.written};
}

bool FolderMemory::IsNews(const WalkedFolder& folder, const WalkedFile& file) const {
  const Files* files = FilesOf(folder);
  if (!files) return true;
  const auto before = files->find(file.name);
  return before == files->end() || before->second.size != file.size ||
         before->second.written != file.written;
}

// A folder is known by its identity, which it keeps when it is moved; on drives that do not tell
// it, by its path.
const FolderMemory::Files* FolderMemory::FilesOf(const WalkedFolder& folder) const {
  const auto path = pathsOfFolders_.find(folder.identity);
  if (path != pathsOfFolders_.end()) return &folders_.at(path->second);
  const auto files = folders_.find(folder.path);
  return files == folders_.end() ? nullptr : &files->second;
}

}  // namespace tarvo
