#include "platform/linux/small_file.h"

#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/folder_listing.h"
#include "platform/linux/linux_file.h"

namespace tarvo {
namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{16} * 1024 * 1024;
constexpr int kMostLinks = 40;

Replacing ResultOf(int code) {
  const bool denied = code == EACCES || code == EPERM || code == EROFS;
  return denied ? Replacing::kDenied : Replacing::kFailed;
}

// Makes a folder with its parents, for the user alone.
bool MakeFolders(const std::string& folder) {
  if (folder.empty() || ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return true;
  if (errno != ENOENT || !MakeFolders(std::string(FolderOf(folder)))) return false;
  return ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST;
}

// Unfinished files are called after the process that writes them, so that what a killed one has
// left can be told from what is being written.
std::string UnfinishedStart(std::string_view path) {
  return "." + std::string(FileNameOf(path)) + ".tarvo-";
}

void RemoveLeftovers(const std::string& path) {
  const std::string start = UnfinishedStart(path);
  try {
    for (const FolderEntry& entry : ListLinuxFolder(FolderOf(path))) {
      if (!entry.name.starts_with(start)) continue;
      const int writer = std::atoi(entry.name.c_str() + start.size());
      const bool isWritten =
          writer != ::getpid() && (writer <= 0 || ::kill(writer, 0) == 0 || errno != ESRCH);
      if (!isWritten) ::unlink(JoinPath(FolderOf(path), entry.name).c_str());
    }
  } catch (const RuntimeError&) {
    // A folder that cannot be listed keeps what is in it.
  }
}

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = ::write(file, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

// The new file takes over modes, and owner as far as this user may give files away.
bool TakeModes(int file, const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return errno == ENOENT;
  const bool isGiven = ::fchown(file, status.st_uid, status.st_gid) == 0;
  const mode_t mode = status.st_mode & (isGiven ? 07777 : 0777);
  return ::fchmod(file, mode) == 0;
}

// A file beside the one that it is to replace, removed unless it has taken that one's name.
class Unfinished {
 public:
  explicit Unfinished(const std::string& path)
      : path_(path),
        name_(JoinPath(FolderOf(path), UnfinishedStart(path) + std::to_string(::getpid()))),
        file_(::open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)),
        isThere_(file_.Get() >= 0) {}
  ~Unfinished() {
    if (isThere_) ::unlink(name_.c_str());
  }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;

  // The bytes are on the disk before the name is: a crash must not leave an empty file. errno tells
  // what went wrong.
  bool Fill(std::string_view bytes) {
    return isThere_ && TakeModes(file_.Get(), path_) && WriteAll(file_.Get(), bytes) &&
           ::fsync(file_.Get()) == 0;
  }

  bool TakeName() {
    if (::rename(name_.c_str(), path_.c_str()) != 0) return false;
    isThere_ = false;
    return true;
  }

 private:
  std::string path_;
  std::string name_;
  Descriptor file_;
  bool isThere_;
};

Replacing ReplaceFollowed(const std::string& path,
                          const std::function<std::string(const std::string&)>& edit) {
  constexpr int kMostAttempts = 8;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    const SmallFile old = ReadSmallFile(path);
    if (!old.content && !old.isMissing) return Replacing::kFailed;
    const std::string bytes = edit(old.content.value_or(""));
    if (old.content == bytes) return Replacing::kDone;
    RemoveLeftovers(path);
    Unfinished file(path);
    if (!file.Fill(bytes)) return ResultOf(errno);
    if (ReadSmallFile(path).content != old.content) continue;
    return file.TakeName() ? Replacing::kDone : ResultOf(errno);
  }
  return Replacing::kFailed;
}

}  // namespace

SmallFile ReadSmallFile(const std::string& path) {
  SmallFile result;
  try {
    const std::unique_ptr<File> file = OpenLinuxFile(path, OpenFor::kReading);
    const std::uint64_t size = file->Size();
    if (size <= kMostBytes) result.content = file->ReadAt(0, static_cast<std::size_t>(size));
  } catch (const RuntimeError& error) {
    result.isMissing = error.Number() == kFileNotFound || error.Number() == kPathNotFound;
  }
  return result;
}

std::string FollowLinks(std::string path) {
  for (int links = 0; links < kMostLinks; ++links) {
    char target[PATH_MAX];
    const ssize_t size = ::readlink(path.c_str(), target, sizeof target);
    if (size < 0) return path;
    const std::string_view next(target, static_cast<std::size_t>(size));
    path = next.starts_with('/') ? std::string(next) : JoinPath(FolderOf(path), next);
  }
  return {};
}

Replacing MayReplaceSmallFile(const std::string& path) {
  const std::string target = FollowLinks(path);
  if (target.empty()) return Replacing::kFailed;
  struct stat status;
  if (::stat(target.c_str(), &status) == 0) {
    if (!S_ISREG(status.st_mode)) return Replacing::kFailed;
    if (::faccessat(AT_FDCWD, target.c_str(), R_OK | W_OK, AT_EACCESS) != 0) return ResultOf(errno);
  }
  std::string folder(FolderOf(target));
  while (::stat(folder.c_str(), &status) != 0 && errno == ENOENT && folder.size() > 1) {
    folder = FolderOf(folder);
  }
  const int code = ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0 ? 0 : errno;
  if (code != 0) return ResultOf(code);
  return S_ISDIR(status.st_mode) ? Replacing::kDone : Replacing::kFailed;
}

Replacing ReplaceSmallFile(const std::string& path,
                           const std::function<std::string(const std::string&)>& edit) {
  const Replacing may = MayReplaceSmallFile(path);
  if (may != Replacing::kDone) return may;
  const std::string target = FollowLinks(path);
  if (!MakeFolders(std::string(FolderOf(target)))) return ResultOf(errno);
  return ReplaceFollowed(target, edit);
}

}  // namespace tarvo
