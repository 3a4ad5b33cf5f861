#include "platform/linux/visible_tree.h"

#include <fcntl.h>

#include <cerrno>
#include <memory>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/linux/errno_error.h"
#include "platform/linux/folder_listing.h"
#include "platform/linux/long_path.h"

namespace tarvo {
namespace {

// A folder kept open for those in it that are still to come; counted, because a process may have
// only so many open.
class OpenFolder {
 public:
  OpenFolder(Descriptor descriptor, int& count)
      : descriptor_(std::move(descriptor)), count_(count) {
    ++count_;
  }
  ~OpenFolder() { --count_; }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;
  const Descriptor& Get() const { return descriptor_; }

 private:
  Descriptor descriptor_;
  int& count_;
};

struct FolderToCome {
  std::string path;
  FileIdentity parent;
  std::shared_ptr<const OpenFolder> openParent;  // none when too many are open already
};

// From its parent, which is as fast at any depth and finds no link put in its place; else by its
// path.
Descriptor Open(std::string_view root, const FolderToCome& folder) {
  if (!folder.openParent) {
    return OpenLinuxFolder(folder.path.empty() ? std::string(root) : JoinPath(root, folder.path));
  }
  const std::string name(FileNameOf(folder.path));
  Descriptor descriptor(::openat(folder.openParent->Get().Get(), name.c_str(),
                                 O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (descriptor.Get() < 0) throw FolderError(errno, folder.path);
  return descriptor;
}

FileIdentity IdentityOfOpen(const Descriptor& folder) {
  struct stat status;
  if (::fstat(folder.Get(), &status) != 0) throw ErrorFromErrno(errno);
  return IdentityOf(status);
}

}  // namespace

FileIdentity IdentityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

void WalkVisibleTree(std::string_view root,
                     const std::function<void(const WalkedFolder&)>& onFolder,
                     const std::function<void(const WalkedFolder&, const std::string& name,
                                              const struct stat&)>& onFile) {
  constexpr int kMostKeptOpen = 32;
  int open = 0;
  std::vector<FolderToCome> toCome;
  const auto walkOne = [&](const FolderToCome& next) {
    const auto kept = std::make_shared<const OpenFolder>(Open(root, next), open);
    const WalkedFolder folder{next.path, IdentityOfOpen(kept->Get()), next.parent, kept->Get()};
    onFolder(folder);
    for (const FolderEntry& entry : ListOpenFolder(folder.descriptor, folder.path)) {
      if (entry.isHidden || entry.isLink) continue;
      if (entry.isFolder) {
        toCome.push_back({JoinPath(folder.path, entry.name), folder.identity,
                          open <= kMostKeptOpen ? kept : nullptr});
        continue;
      }
      struct stat status;
      const int code =
          ::fstatat(folder.descriptor.Get(), entry.name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
      if (code == 0 && S_ISREG(status.st_mode)) onFile(folder, entry.name, status);
    }
  };

  walkOne({});
  while (!toCome.empty()) {
    const FolderToCome next = std::move(toCome.back());
    toCome.pop_back();
    try {
      walkOne(next);
    } catch (const RuntimeError&) {
      // Not readable, or gone since its parent was listed.
    }
  }
}

}  // namespace tarvo
