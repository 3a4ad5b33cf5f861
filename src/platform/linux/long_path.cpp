#include "platform/linux/long_path.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "base/paths.h"
#include "platform/linux/errno_error.h"

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

ReachedPath ReachPath(std::string_view path) {
  constexpr std::size_t kMost = PATH_MAX - 1;
  if (path.find('\0') != std::string_view::npos) throw RuntimeError(kBadFileName);
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

}  // namespace tarvo
