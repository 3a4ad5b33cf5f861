#include "platform/linux/long_path.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "base/paths.h"
#include "platform/linux/errno_error.h"
#include "platform/linux/held_folder.h"

namespace tarvo {

RuntimeError FolderError(int code, std::string_view path) {
  if (code != ENOENT) return ErrorFromErrno(code, std::string(path));
  return RuntimeError(kPathNotFound, StandardDescription(kPathNotFound) + ": " + std::string(path));
}

RuntimeError FileError(int code, const ReachedPath& reached, std::string_view path) {
  const std::string folder(FolderOf(reached.rest));
  struct stat status;
  const bool folderIsMissing =
      !folder.empty() && ::fstatat(reached.Base(), folder.c_str(), &status, 0) != 0;
  if (code == ENOENT && folderIsMissing) return FolderError(code, path);
  return ErrorFromErrno(code, std::string(path));
}

namespace {

// Below a held folder.
ReachedPath ReachBelow(const HeldPlace& place, std::string_view path) {
  const std::size_t end = place.rest.rfind('/');
  const bool isInFolder = end != std::string_view::npos;
  const std::string_view name = isInFolder ? place.rest.substr(end + 1) : place.rest;
  if (name == "..") throw FolderError(ENOENT, path);
  ReachedPath reached;
  reached.held = place.folder;
  reached.isHeld = true;
  reached.rest = name.empty() ? "." : name;
  if (isInFolder) reached.folder = EnterBelow(place.folder, place.rest.substr(0, end));
  if (isInFolder && reached.folder.Get() < 0) throw FolderError(errno, path);
  return reached;
}

}  // namespace

ReachedPath ReachPath(std::string_view path) {
  constexpr std::size_t kMost = PATH_MAX - 1;
  if (path.find('\0') != std::string_view::npos) throw RuntimeError(kBadFileName);
  if (const auto place = HeldPlaceOf(path)) return ReachBelow(*place, path);
  ReachedPath reached;
  std::string_view rest = path;
  while (rest.size() > kMost) {
    const std::size_t cut = rest.rfind('/', kMost);
    if (cut == std::string_view::npos || cut == 0) throw RuntimeError(kBadFileName);
    const std::string front(rest.substr(0, cut));
    Descriptor next(::openat(reached.Base(), front.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (next.Get() < 0) throw FolderError(errno, path);
    reached.folder = std::move(next);
    rest.remove_prefix(cut);
    rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
    if (rest.empty()) rest = ".";
  }
  reached.rest = rest;
  return reached;
}

Descriptor ReachFolder(std::string_view path) {
  const ReachedPath reached = ReachPath(path);
  const int flags = O_PATH | O_DIRECTORY | O_CLOEXEC | reached.NoLink();
  Descriptor folder(::openat(reached.Base(), reached.rest.c_str(), flags));
  if (folder.Get() < 0) throw FolderError(errno, path);
  return folder;
}

}  // namespace tarvo
