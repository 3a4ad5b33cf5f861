#include "platform/linux/visible_tree.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/linux/folder_listing.h"
#include "platform/linux/long_path.h"

namespace tarvo {
namespace {

struct FolderToCome {
  std::string path;
  FileIdentity parent;
};

WalkedFolder Enter(std::string_view root, const FolderToCome& folder) {
  const std::string path = folder.path.empty() ? std::string(root) : JoinPath(root, folder.path);
  WalkedFolder entered{folder.path, {}, folder.parent, OpenLinuxFolder(path)};
  struct stat status;
  if (::fstat(entered.descriptor.Get(), &status) != 0) throw FolderError(errno, path);
  entered.identity = IdentityOf(status);
  return entered;
}

}  // namespace

FileIdentity IdentityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

void WalkVisibleTree(std::string_view root,
                     const std::function<void(const WalkedFolder&)>& onFolder,
                     const std::function<void(const WalkedFolder&, const std::string& name,
                                              const struct stat&)>& onFile) {
  std::vector<FolderToCome> toCome;
  const auto walkOne = [&](const FolderToCome& next) {
    const WalkedFolder folder = Enter(root, next);
    onFolder(folder);
    for (const FolderEntry& entry : ListOpenFolder(folder.descriptor, folder.path)) {
      if (entry.isHidden || entry.isLink) continue;
      if (entry.isFolder) {
        toCome.push_back({JoinPath(folder.path, entry.name), folder.identity});
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
