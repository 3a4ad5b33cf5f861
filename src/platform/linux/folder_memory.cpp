#include "platform/linux/folder_memory.h"

namespace tarvo {
namespace {

bool AreEqual(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

void FolderMemory::Remember(const WalkedFolder& folder) {
  folders_[folder.identity];
  identities_[folder.path] = folder.identity;
}

void FolderMemory::Remember(const WalkedFolder& folder, const std::string& name,
                            const struct stat& status) {
  folders_[folder.identity][name] = Describe(status);
}

bool FolderMemory::IsNews(const WalkedFolder& folder, const std::string& name,
                          const struct stat& status) const {
  const Files* files = FilesOf(folder);
  if (!files) return true;
  const auto before = files->find(name);
  if (before == files->end()) return true;
  const File then = before->second;
  const File now = Describe(status);
  if (now.size != then.size || !AreEqual(now.written, then.written)) return true;
  // A file put in its place with the same size and time. The identity alone proves nothing: some
  // file systems number their files anew at any time.
  return now.identity != then.identity && !AreEqual(now.changed, then.changed);
}

FolderMemory::File FolderMemory::Describe(const struct stat& status) {
  return {IdentityOf(status), status.st_size, status.st_mtim, status.st_ctim};
}

// A folder is known by its identity, which it keeps when it is moved; on file systems that number
// their folders anew, by its path.
const FolderMemory::Files* FolderMemory::FilesOf(const WalkedFolder& folder) const {
  auto files = folders_.find(folder.identity);
  if (files != folders_.end()) return &files->second;
  const auto identity = identities_.find(folder.path);
  if (identity == identities_.end()) return nullptr;
  return &folders_.at(identity->second);
}

}  // namespace tarvo
