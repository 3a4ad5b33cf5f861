#include "platform/linux/held_folder.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/long_path.h"

namespace tarvo {
namespace {

constexpr int kToPassThrough = O_PATH | O_DIRECTORY | O_CLOEXEC;

std::string_view WithoutSeparatorsAtTheEnd(std::string_view path) {
  return path.substr(0, path.find_last_not_of('/') + 1);
}

class LinuxHeldFolder;

// Those that live. The program reaches the system from one thread only.
std::vector<const LinuxHeldFolder*>& HeldFolders() {
  static std::vector<const LinuxHeldFolder*> folders;
  return folders;
}

class LinuxHeldFolder final : public HeldFolder {
 public:
  LinuxHeldFolder(std::string_view path, Descriptor folder)
      : path_(WithoutSeparatorsAtTheEnd(path)), folder_(std::move(folder)) {
    HeldFolders().push_back(this);
  }
  ~LinuxHeldFolder() override { std::erase(HeldFolders(), this); }
  LinuxHeldFolder(const LinuxHeldFolder&) = delete;
  LinuxHeldFolder& operator=(const LinuxHeldFolder&) = delete;

  const std::string& Path() const { return path_; }
  int Folder() const { return folder_.Get(); }

  bool Holds(std::string_view path) const {
    return path.starts_with(path_) && (path.size() == path_.size() || path[path_.size()] == '/');
  }

 private:
  std::string path_;
  Descriptor folder_;
};

// In one step, at most PATH_MAX - 1 bytes of names.
Descriptor EnterAtOnce(int folder, const std::string& names) {
  open_how how{};
  how.flags = static_cast<std::uint64_t>(kToPassThrough);
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
  const long entered = ::syscall(SYS_openat2, folder, names.c_str(), &how, sizeof how);
  return Descriptor(static_cast<int>(entered));
}

bool LeadsUpward(std::string_view names) {
  return names == ".." || names.starts_with("../") || names.ends_with("/..") ||
         names.find("/../") != std::string_view::npos;
}

}  // namespace

std::unique_ptr<HeldFolder> HoldLinuxFolder(std::string_view path) {
  return std::make_unique<LinuxHeldFolder>(path, ReachFolder(path));
}

std::optional<HeldPlace> HeldPlaceOf(std::string_view path) {
  if (HeldFolders().empty()) return std::nullopt;
  const LinuxHeldFolder* holder = nullptr;
  for (const LinuxHeldFolder* folder : HeldFolders()) {
    if (!folder->Holds(path)) continue;
    if (!holder || folder->Path().size() >= holder->Path().size()) holder = folder;
  }
  if (!holder) return std::nullopt;
  std::string_view rest = path.substr(holder->Path().size());
  rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
  return HeldPlace{holder->Folder(), WithoutSeparatorsAtTheEnd(rest)};
}

Descriptor EnterBelow(int folder, std::string_view names) {
  constexpr std::size_t kMost = PATH_MAX - 1;
  if (LeadsUpward(names)) {
    errno = ENOENT;
    return Descriptor();
  }
  Descriptor entered;
  for (std::string_view rest = names; !rest.empty();) {
    const std::size_t cut = rest.size() > kMost ? rest.rfind('/', kMost) : rest.size();
    if (cut == std::string_view::npos || cut == 0) {
      errno = ENAMETOOLONG;
      return Descriptor();
    }
    const int from = entered.Get() < 0 ? folder : entered.Get();
    const std::string_view part = rest.substr(0, cut);
    Descriptor next = EnterAtOnce(from, std::string(part));
    // Kernels before 5.6 lack the call, and some sandboxes refuse it.
    if (next.Get() < 0 && (errno == ENOSYS || errno == EPERM)) next = EnterNameByName(from, part);
    if (next.Get() < 0) return next;
    entered = std::move(next);
    rest.remove_prefix(cut);
    rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
  }
  return entered;
}

Descriptor EnterNameByName(int folder, std::string_view names) {
  Descriptor entered;
  while (!names.empty()) {
    const std::size_t end = std::min(names.find('/'), names.size());
    const std::string name(names.substr(0, end));
    names.remove_prefix(std::min(names.find_first_not_of('/', end), names.size()));
    if (name.empty()) continue;
    const int from = entered.Get() < 0 ? folder : entered.Get();
    if (name == "..") {
      errno = ENOENT;
      return Descriptor();
    }
    Descriptor next(::openat(from, name.c_str(), kToPassThrough | O_NOFOLLOW));
    if (next.Get() < 0) return next;
    entered = std::move(next);
  }
  return entered;
}

}  // namespace tarvo
