#include "platform/linux/linux_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/runtime_error.h"
#include "platform/linux/errno_error.h"
#include "platform/linux/long_path.h"

namespace tarvo {
namespace {

class LinuxFile final : public File {
 public:
  LinuxFile(Descriptor descriptor, std::string path)
      : descriptor_(std::move(descriptor)), path_(std::move(path)) {}

  std::uint64_t Size() override {
    struct stat status;
    if (::fstat(descriptor_.Get(), &status) != 0) throw ErrorFromErrno(errno, path_);
    return static_cast<std::uint64_t>(status.st_size);
  }

  std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
    std::size_t done = 0;
    while (done < room.size()) {
      const std::span<char> rest = room.subspan(done);
      const ssize_t got =
          ::pread(descriptor_.Get(), rest.data(), rest.size(), static_cast<off_t>(offset + done));
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) throw ErrorFromErrno(errno, path_);
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    return done;
  }

  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t put = ::pwrite(descriptor_.Get(), bytes.data() + done, bytes.size() - done,
                                   static_cast<off_t>(offset + done));
      if (put < 0 && errno == EINTR) continue;
      if (put < 0) throw ErrorFromErrno(errno, path_);
      if (put == 0) throw ErrorFromErrno(ENOSPC, path_);
      done += static_cast<std::size_t>(put);
    }
  }

  std::uint64_t Append(std::string_view bytes) override {
    if (bytes.empty()) return Size();
    constexpr off_t kMovePosition = -1;
    const iovec part{const_cast<char*>(bytes.data()), bytes.size()};
    ssize_t put = 0;
    do {
      put = ::pwritev2(descriptor_.Get(), &part, 1, kMovePosition, RWF_APPEND);
    } while (put < 0 && errno == EINTR);
    if (put < 0 && (errno == EOPNOTSUPP || errno == ENOSYS)) return File::Append(bytes);
    const off_t end = put < 0 ? -1 : ::lseek(descriptor_.Get(), 0, SEEK_CUR);
    if (end < 0) throw ErrorFromErrno(errno, path_);
    WriteAt(static_cast<std::uint64_t>(end), bytes.substr(static_cast<std::size_t>(put)));
    return static_cast<std::uint64_t>(end - put);
  }

 private:
  Descriptor descriptor_;
  std::string path_;
};

}  // namespace

std::unique_ptr<File> OpenLinuxFile(std::string_view path, OpenFor use) {
  const ReachedPath reached = ReachPath(path);
  // O_NONBLOCK: a pipe or device under a file's name must not hang the program. It is refused
  // below.
  const int flags = (use == OpenFor::kReading ? O_RDONLY : O_RDWR | O_CREAT | reached.NoLink()) |
                    O_CLOEXEC | O_NONBLOCK;
  const std::string name(path);
  Descriptor descriptor;
  do {
    descriptor = Descriptor(::openat(reached.Base(), reached.rest.c_str(), flags, 0666));
  } while (descriptor.Get() < 0 && errno == EINTR);
  if (descriptor.Get() < 0) throw FileError(errno, reached, path);
  struct stat status;
  if (::fstat(descriptor.Get(), &status) != 0) throw ErrorFromErrno(errno, name);
  if (!S_ISREG(status.st_mode)) {
    throw RuntimeError(kPathFileAccessError,
                       StandardDescription(kPathFileAccessError) + ": " + name);
  }
  return std::make_unique<LinuxFile>(std::move(descriptor), name);
}

std::unique_ptr<File> MakeLinuxFile(std::string_view path, FileUse use) {
  // O_EXCL: nothing that has the name is opened, and a link is not followed.
  constexpr int kFlags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
  const mode_t mode = use == FileUse::kProgram ? 0777 : 0666;
  const ReachedPath reached = ReachPath(path);
  Descriptor descriptor;
  do {
    descriptor = Descriptor(::openat(reached.Base(), reached.rest.c_str(), kFlags, mode));
  } while (descriptor.Get() < 0 && errno == EINTR);
  if (descriptor.Get() < 0) throw FileError(errno, reached, path);
  return std::make_unique<LinuxFile>(std::move(descriptor), std::string(path));
}

}  // namespace tarvo
