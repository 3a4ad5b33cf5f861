#include "platform/linux/folder_listing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <string>

#include "platform/linux/errno_error.h"
#include "platform/linux/long_path.h"

namespace tarvo {
namespace {

struct CloseListing {
  void operator()(DIR* listing) const { ::closedir(listing); }
};

FolderEntry EntryOf(int folder, const dirent& found) {
  FolderEntry entry;
  entry.name = found.d_name;
  entry.isHidden = found.d_name[0] == '.';
  unsigned char type = found.d_type;
  if (type == DT_UNKNOWN) {
    struct stat status;
    if (::fstatat(folder, found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
      type = S_ISDIR(status.st_mode) ? DT_DIR : S_ISLNK(status.st_mode) ? DT_LNK : DT_REG;
    }
  }
  entry.isFolder = type == DT_DIR;
  entry.isLink = type == DT_LNK;
  return entry;
}

}  // namespace

std::vector<FolderEntry> ListLinuxFolder(std::string_view path) {
  return ListOpenFolder(OpenLinuxFolder(path), path);
}

Descriptor OpenLinuxFolder(std::string_view path) {
  const ReachedPath reached = ReachPath(path);
  const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | reached.NoLink();
  Descriptor folder(::openat(reached.Base(), reached.rest.c_str(), flags));
  if (folder.Get() < 0) throw FolderError(errno, path);
  return folder;
}

std::vector<FolderEntry> ListOpenFolder(const Descriptor& folder, std::string_view path) {
  Descriptor own(::fcntl(folder.Get(), F_DUPFD_CLOEXEC, 0));
  std::unique_ptr<DIR, CloseListing> listing(own.Get() < 0 ? nullptr : ::fdopendir(own.Get()));
  if (!listing) throw ErrorFromErrno(errno, std::string(path));
  own.Release();
  std::vector<FolderEntry> entries;
  for (;;) {
    errno = 0;
    const dirent* found = ::readdir(listing.get());
    if (!found) break;
    const std::string_view name = found->d_name;
    if (name != "." && name != "..") entries.push_back(EntryOf(folder.Get(), *found));
  }
  if (errno != 0) throw ErrorFromErrno(errno, std::string(path));
  return entries;
}

}  // namespace tarvo
