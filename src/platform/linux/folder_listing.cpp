#include "platform/linux/folder_listing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <memory>
#include <string>
#include <utility>

#include "base/runtime_error.h"

namespace tarvo {
namespace {

class Descriptor {
 public:
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor() {
    if (value_ >= 0) ::close(value_);
  }
  Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  int Get() const { return value_; }
  int Release() { return std::exchange(value_, -1); }

 private:
  int value_;
};

Descriptor OpenFolderAt(int base, const std::string& path, std::string_view whole) {
  const int descriptor = ::openat(base, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) {
    const int code = errno;
    if (code == ENOENT)
      throw RuntimeError(kPathNotFound,
                         StandardDescription(kPathNotFound) + ": " + std::string(whole));
    throw RuntimeError::FromErrno(code, std::string(whole));
  }
  return Descriptor(descriptor);
}

// Opens a folder by a path of any length, at most PATH_MAX bytes at a time.
Descriptor OpenFolder(std::string_view path) {
  constexpr std::size_t kMost = PATH_MAX - 1;
  std::string_view rest = path;
  Descriptor folder(-1);
  int base = AT_FDCWD;
  while (rest.size() > kMost) {
    const std::size_t cut = rest.rfind('/', kMost);
    if (cut == std::string_view::npos || cut == 0) throw RuntimeError(kBadFileName);
    folder = OpenFolderAt(base, std::string(rest.substr(0, cut)), path);
    base = folder.Get();
    rest.remove_prefix(cut);
    rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
  }
  return OpenFolderAt(base, rest.empty() ? "." : std::string(rest), path);
}

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
  if (path.find('\0') != std::string_view::npos) throw RuntimeError(kBadFileName);
  Descriptor folder = OpenFolder(path);
  std::unique_ptr<DIR, CloseListing> listing(::fdopendir(folder.Get()));
  if (!listing) throw RuntimeError::FromErrno(errno, std::string(path));
  const int descriptor = folder.Release();
  std::vector<FolderEntry> entries;
  for (;;) {
    errno = 0;
    const dirent* found = ::readdir(listing.get());
    if (!found) break;
    const std::string_view name = found->d_name;
    if (name != "." && name != "..") entries.push_back(EntryOf(descriptor, *found));
  }
  if (errno != 0) throw RuntimeError::FromErrno(errno, std::string(path));
  return entries;
}

}  // namespace tarvo
